#include "printing/LabelReports.h"

#include "app/Product.h"
#include "app/WeddingState.h"
#include "printing/Picture.h"
#include "printing/ReportConnection.h"

#include <QAbstractItemModel>

#include <array>
#include <initializer_list>

namespace velmora::printing {

namespace {

// The grid's columns these sheets read.
constexpr int FamilyColumn = 0;
constexpr int FirstColumn = 1;
constexpr int TableColumn = 6;
constexpr int AddressColumn = 8;

void nameSections(Report& report, std::array<const char*, 5> names, std::array<int, 5> heights)
{
    for (size_t i = 0; i < names.size(); ++i) {
        Section& section = report.section(SectionKind(i));
        section.setName(QString::fromLatin1(names[i]));
        section.height = heights[i];
    }
    report.section(SectionKind::Detail).keepTogether = true;
}

using Fields = std::array<std::pair<const char*, int>, 4>;
using Cells = std::array<QString, 10>;

// The start both sheets share: a fresh connection and set in the state, the set given its
// fields and opened empty, the preview's caption.
std::shared_ptr<RecordSet> beginSheet(WeddingState& state, SheetReport& built, const Fields& fields,
                                      const QString& caption)
{
    PendingFailure& pending = built.pending;
    const auto records = newReportRows(state, pending, [&](RecordSet& rows) {
        for (const auto& [name, width] : fields)
            pending.attempt([&] { rows.appendField(QString::fromLatin1(name), width); });
    });
    built.report.caption = product::Title + caption;
    return records;
}

// Every row the list shows, whatever it holds, two to a record: `fill` writes one row's
// cells into the fields of position "1" or "2".
template <class Fill>
void fillPairs(SheetReport& built, const std::shared_ptr<RecordSet>& records, const QAbstractItemModel& grid, Fill fill)
{
    PendingFailure& pending = built.pending;
    int position = 2; // the line is full
    for (int row = 0; row < grid.rowCount(); ++row) {
        Cells cells;
        for (int column : {FamilyColumn, FirstColumn, TableColumn, AddressColumn})
            cells[size_t(column)] = grid.index(row, column).data(Qt::DisplayRole).toString();
        if (position == 2) {
            position = 0;
            pending.attempt([&] { records->addNew(); });
        }
        ++position;
        fill(*records, QString::number(position), cells);
        if (position == 2)
            pending.attempt([&] { records->update(); });
    }
    if (position < 2)
        pending.attempt([&] { records->update(); });
    built.report.dataSource = records;
}

Control& detail(Report& report, const char* name)
{
    return report.section(QStringLiteral("rptDetails")).control(QString::fromLatin1(name));
}

// The frame and colour the state holds for labels and notes: the frames shown or not and
// drawn in the colour, the texts written in it.
void frameAndColour(SheetReport& built, const WeddingState& state, std::initializer_list<const char*> frames,
                    std::initializer_list<const char*> texts)
{
    for (const char* name : frames)
        built.pending.attempt([&] { detail(built.report, name).visible = state.LabelFrame; });
    const QColor color = colourFromValue(state.LabelColor);
    for (const char* name : frames)
        built.pending.attempt([&] { detail(built.report, name).borderColor = color; });
    for (const char* name : texts)
        built.pending.attempt([&] { detail(built.report, name).foreColor = color; });
}

QString nameOf(const Cells& cells)
{
    return cells[FirstColumn] + u' ' + cells[FamilyColumn];
}

} // namespace

Report envelopeLabelsDesign()
{
    Report report;
    report.name = QStringLiteral("DataReport2");
    report.width = 11865;
    report.leftMargin = report.rightMargin = report.topMargin = report.bottomMargin = 0;
    // The page header is the sheet's top edge, with nothing on it.
    nameSections(report, {"Section4", "Section2", "rptDetails", "Section3", "Section5"}, {0, 750, 2160, 0, 0});

    Section& details = report.section(SectionKind::Detail);
    // Hebrew reads from the right: the first label of a line is the right-hand one.
    details.add(shapeControl(QStringLiteral("Shape1"), QRect(5669, 0, 5565, 2160), ShapeKind::RoundedRectangle,
                             BorderStyle::Solid));
    details.add(shapeControl(QStringLiteral("Shape2"), QRect(0, 0, 5565, 2160), ShapeKind::RoundedRectangle,
                             BorderStyle::Solid));
    const FontSpec name = reportFont(12, true);
    const FontSpec address = reportFont(12, false);
    details.add(textBoxControl(QStringLiteral("txtEnvLabel_1"), QRect(6803, 330, 3800, 465),
                               QStringLiteral("InvName_1"), name, TextAlign::Right));
    details.add(textBoxControl(QStringLiteral("txtAddress_1"), QRect(6803, 800, 3800, 1200),
                               QStringLiteral("Address_1"), address, TextAlign::Right));
    details.add(textBoxControl(QStringLiteral("txtEnvLabel_2"), QRect(1000, 330, 3795, 465),
                               QStringLiteral("InvName_2"), name, TextAlign::Right));
    details.add(textBoxControl(QStringLiteral("txtAddress_2"), QRect(1000, 800, 3795, 1200),
                               QStringLiteral("Address_2"), address, TextAlign::Right));
    return report;
}

Report sittingNotesDesign()
{
    Report report;
    report.name = QStringLiteral("DataReport3");
    report.width = 8510;
    report.leftMargin = report.rightMargin = report.topMargin = report.bottomMargin = 1440;
    nameSections(report, {"rptHeader", "rptPage", "rptDetails", "rptReportFooter", "Section5"}, {0, 0, 4470, 0, 105});

    // A card is a square folded at its middle: the lower half is its face, the picture under
    // the text. Pictures go first so that the frame and fold show over them.
    Section& details = report.section(SectionKind::Detail);
    details.add(imageControl(QStringLiteral("BgImg_1"), QRect(0, 1950, 3960, 2025)));
    details.add(imageControl(QStringLiteral("BgImg_2"), QRect(4536, 1950, 3960, 2025)));
    details.add(
        shapeControl(QStringLiteral("Shape1"), QRect(0, 0, 3975, 3975), ShapeKind::Rectangle, BorderStyle::Dotted));
    details.add(
        shapeControl(QStringLiteral("Shape2"), QRect(4535, 0, 3960, 3975), ShapeKind::Rectangle, BorderStyle::Dotted));
    Control fold;
    fold.kind = ControlKind::Line;
    fold.borderStyle = BorderStyle::Dotted;
    fold.name = QStringLiteral("LineSpliter1");
    fold.rect = QRect(0, 1950, 3975, 0);
    details.add(fold);
    fold.name = QStringLiteral("LineSpliter2");
    fold.rect = QRect(4536, 1950, 3960, 0);
    details.add(fold);
    // The first card of a line is the left-hand one.
    const FontSpec name = reportFont(14.25, true);
    const FontSpec table = reportFont(14.25, false, true);
    details.add(textBoxControl(QStringLiteral("txtNoteName_1"), QRect(350, 2400, 3250, 360),
                               QStringLiteral("NoteName_1"), name, TextAlign::Centre));
    details.add(textBoxControl(QStringLiteral("txtNoteTableNo_1"), QRect(350, 2835, 3250, 345),
                               QStringLiteral("NoteTableNo_1"), table, TextAlign::Centre));
    details.add(textBoxControl(QStringLiteral("txtNoteName_2"), QRect(4917, 2400, 3255, 360),
                               QStringLiteral("NoteName_2"), name, TextAlign::Centre));
    details.add(textBoxControl(QStringLiteral("txtNoteTableNo_2"), QRect(4917, 2835, 3255, 345),
                               QStringLiteral("NoteTableNo_2"), table, TextAlign::Centre));
    return report;
}

SheetReport buildEnvelopeLabels(WeddingState& state, const QAbstractItemModel& grid)
{
    SheetReport built{envelopeLabelsDesign()};
    PendingFailure& pending = built.pending;
    const auto records =
        beginSheet(state, built, {{{"InvName_1", 50}, {"Address_1", 100}, {"InvName_2", 50}, {"Address_2", 100}}},
                   QStringLiteral(" - Envelop Labels"));
    frameAndColour(built, state, {"Shape1", "Shape2"},
                   {"txtEnvLabel_1", "txtEnvLabel_2", "txtAddress_1", "txtAddress_2"});

    const bool address = state.LabelAddress;
    fillPairs(built, records, grid,
              [&pending, address](RecordSet& records, const QString& position, const Cells& cells) {
                  pending.attempt([&] { records.setValue(QStringLiteral("InvName_") + position, nameOf(cells)); });
                  if (address)
                      pending.attempt(
                          [&] { records.setValue(QStringLiteral("Address_") + position, cells[AddressColumn]); });
              });
    return built;
}

SheetReport buildSittingNotes(WeddingState& state, const QAbstractItemModel& grid)
{
    SheetReport built{sittingNotesDesign()};
    Report& report = built.report;
    PendingFailure& pending = built.pending;
    const auto records = beginSheet(
        state, built, {{{"NoteName_1", 50}, {"NoteTableNo_1", 20}, {"NoteName_2", 50}, {"NoteTableNo_2", 20}}},
        QStringLiteral(" - Sitting Note"));
    frameAndColour(built, state, {"Shape1", "Shape2", "LineSpliter1", "LineSpliter2"},
                   {"txtNoteName_1", "txtNoteName_2", "txtNoteTableNo_1", "txtNoteTableNo_2"});
    const std::array<const char*, 2> images = {"BgImg_1", "BgImg_2"};
    for (const char* name : images)
        pending.attempt([&] { detail(report, name).sizeMode = SizeMode::Stretch; });

    const bool withPicture = state.NoteStyle != NoBackground;
    if (withPicture) {
        // One picture serves every card, so a PDF holds it once.
        QImage picture;
        pending.attempt([&] { picture = loadPicture(DesignFolder(state.AppPath) + state.NoteStyle); });
        for (const char* name : images)
            pending.attempt([&] { detail(report, name).picture = picture; });
    }
    for (const char* name : images)
        pending.attempt([&] { detail(report, name).visible = withPicture; });

    fillPairs(built, records, grid,
              [&pending](RecordSet& records, const QString& position, const Cells& cells) {
                  pending.attempt([&] { records.setValue(QStringLiteral("NoteName_") + position, nameOf(cells)); });
                  pending.attempt([&] {
                      records.setValue(QStringLiteral("NoteTableNo_") + position,
                                       QStringLiteral("שולחן מס' ") + cells[TableColumn]);
                  });
              });
    return built;
}

} // namespace velmora::printing
