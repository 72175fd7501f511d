#include "printing/GuestReport.h"

#include "app/PendingFailure.h"
#include "app/Product.h"
#include "app/WeddingState.h"
#include "printing/ReportConnection.h"

#include <QAbstractItemModel>
#include <QDate>
#include <QFont>
#include <QLocale>

namespace velmora::printing {

extern const unsigned char GuestLogoGif[];
extern const unsigned int GuestLogoGifSize;

namespace {

constexpr int Columns = 10;

// One column of the list on paper, in the grid's order: family name first.
struct ReportColumn {
    const char* field; // the plain field; its twin carries a "B" before it
    int width;         // characters
    const char* caption;
    const char* captionLabel;
    const char* plainBox;
    const char* twinBox;
    int left;
    int boxWidth;
};

const std::array<ReportColumn, Columns>& reportColumns()
{
    static const std::array<ReportColumn, Columns> columns = {{
        {"FamilyName", 20, "שם משפחה", "lblFamilyName", "txtFamilyName", "Text2", 9638, 1125},
        {"FirstName", 20, "שם פרטי", "lblFirstName", "txtFirstName", "Text1", 7937, 1695},
        {"Phones", 30, "טלפונים", "lblPhones", "txtPhones", "Text3", 6237, 1695},
        {"InvNum", 3, "כמות", "lblInvNum", "txtInvNum", "Text4", 5670, 555},
        {"Remark", 40, "הערות", "lblRemark", "txtRemark", "Text5", 3969, 1695},
        {"Confirm", 10, "אישור", "lblConfirm", "txtConfirm", "Text6", 3402, 570},
        {"TableNo", 3, "שולחן", "lblTableNo", "txtTableNo", "Text7", 2835, 570},
        {"InvStatus", 5, "הזמנה", "lblInv", "txtInvStatus", "Text8", 2268, 570},
        {"Address", 50, "כתובת", "Label2", "txtAddress", "txtBAddress", 1134, 1140},
        {"Present", 20, "מתנה", "lblPres", "txtPresent", "txtBPresent", 0, 1140},
    }};
    return columns;
}

// The fields are created first name first, then family name, then in the grid's order
// but for the present before the address.
constexpr std::array<int, Columns> CreationOrder = {1, 0, 2, 3, 4, 5, 6, 7, 9, 8};

const QColor CaptionBack(0xE0, 0xE0, 0xE0);
const QColor TwinText(0x80, 0x80, 0x80);

struct Total {
    const char* caption;
    const char* control;
    int top;
    bool bold;
};

const std::array<Total, 5>& totals()
{
    static const std::array<Total, 5> lines = {{
        {"מס' ההזמנות", "lblTotalInvNum", 1367, true},
        {"מס' האנשים שאישרו הגעתם", "lblTotaCnfOkNum", 1767, true},
        {"מס' האנשים שממתינים לאישורם", "lblTotaCnfUnkownNum", 2167, false},
        {"מס' האנשים  שאישרו שאינם מגיעים", "lblTotaCnfNotOkNum", 2567, false},
        {"סך כול המתנות הכספיות", "lblSumOfPresents", 2967, true},
    }};
    return lines;
}

} // namespace

QImage guestListLogo()
{
    return QImage::fromData(GuestLogoGif, int(GuestLogoGifSize), "GIF");
}

Report guestListDesign()
{
    Report report;
    report.name = QStringLiteral("DataReport1");
    report.width = 10770;
    report.leftMargin = 440;
    report.rightMargin = 440;
    report.topMargin = 1440;
    report.bottomMargin = 1440;

    Section& header = report.section(SectionKind::ReportHeader);
    header.setName(QStringLiteral("rptHeader"));
    header.height = 1140;
    header.add(labelControl(QStringLiteral("lblReport"), QRect(2268, 567, 6225, 570), reportFont(14.25, true),
                            TextAlign::Centre));
    header.add(labelControl(QStringLiteral("lblDate"), QRect(567, 0, 1140, 240), reportFont(9.75)));

    Section& page = report.section(SectionKind::PageHeader);
    page.setName(QStringLiteral("rptPage"));
    page.height = 810;
    Control logo = imageControl(QStringLiteral("imgMyLogo"), QRect(8504, 0, 1995, 495));
    logo.picture = guestListLogo();
    logo.sizeMode = SizeMode::Zoom;
    page.add(logo);

    Section& details = report.section(SectionKind::Detail);
    details.setName(QStringLiteral("rptDetails"));
    details.height = 270;
    std::array<Control, Columns> twins;
    for (int i = 0; i < Columns; ++i) {
        const ReportColumn& column = reportColumns()[size_t(i)];
        FontSpec captionFont = reportFont(9.75, true);
        captionFont.underline = true;
        Control caption =
            labelControl(QString::fromUtf8(column.captionLabel), QRect(column.left, 567, column.boxWidth, 240),
                         captionFont, TextAlign::Right, QString::fromUtf8(column.caption));
        caption.backColor = CaptionBack;
        page.add(caption);

        const TextAlign align =
            QLatin1String(column.field) == QLatin1String("TableNo") ? TextAlign::Centre : TextAlign::Right;
        Control box = textBoxControl(QString::fromUtf8(column.plainBox), QRect(column.left, 0, column.boxWidth, 240),
                                     QString::fromUtf8(column.field), reportFont(9.75), align);
        details.add(box);
        box.name = QString::fromUtf8(column.twinBox);
        box.dataField = u'B' + box.dataField;
        box.foreColor = TwinText;
        box.font.strikeOut = true;
        twins[size_t(i)] = box;
    }
    for (const Control& twin : twins)
        details.add(twin);

    Section& footer = report.section(SectionKind::PageFooter);
    footer.setName(QStringLiteral("rptPageFooter"));
    footer.height = 1380;
    footer.add(labelControl(QStringLiteral("lblAppName"), QRect(0, 1134, 2265, 240), reportFont(9.75)));
    footer.add(
        labelControl(QStringLiteral("lblPageNum"), QRect(4535, 1134, 1701, 240), reportFont(9.75), TextAlign::Centre));
    footer.add(
        labelControl(QStringLiteral("lblAppWeb"), QRect(7937, 1134, 2832, 240), reportFont(9.75), TextAlign::Right));

    Section& summary = report.section(SectionKind::ReportFooter);
    summary.setName(QStringLiteral("rptReportFooter"));
    summary.height = 3774;
    summary.keepTogether = true;
    Control heading = labelControl(QStringLiteral("Label1"), QRect(6236, 1017, 3975, 240), reportFont(11.25, true),
                            TextAlign::Right, QStringLiteral(":סיכום כללי"));
    heading.backColor = CaptionBack;
    summary.add(heading);
    int n = 3;
    for (const Total& line : totals()) {
        summary.add(labelControl(QStringLiteral("Label%1").arg(n++), QRect(7370, line.top, 2835, 240),
                                 reportFont(9.75, line.bold), TextAlign::Right, QString::fromUtf8(line.caption)));
        // Centred: a caption that fills its box would otherwise run into its number.
        summary.add(labelControl(QString::fromUtf8(line.control), QRect(6236, line.top, 1140, 240),
                                 reportFont(9.75, line.bold), TextAlign::Centre));
    }
    return report;
}

void appendGuestFields(RecordSet& records)
{
    for (const char* prefix : {"", "B"}) {
        for (int i : CreationOrder) {
            const ReportColumn& column = reportColumns()[size_t(i)];
            // The grid shows a gift with the sheqel sign before its 20 characters.
            const int width = QLatin1String(column.field) == QLatin1String("Present") ? column.width + 1 : column.width;
            records.appendField(QLatin1String(prefix) + QString::fromUtf8(column.field), width);
        }
    }
}

GuestReport buildGuestReport(WeddingState& state, const QAbstractItemModel& grid, const QString& listTitle)
{
    GuestReport built{guestListDesign(), std::nullopt};
    Report& report = built.report;
    // The last failure is the one shown, as the engine left it.
    PendingFailure pending(PendingFailure::Keep::Last);
    const auto records =
        newReportRows(state, pending, [&](RecordSet& rows) { pending.attempt([&] { appendGuestFields(rows); }); });
    report.caption = product::Title + QStringLiteral(" - Report");

    auto setCaption = [&](const char* section, const char* control, const QString& text) {
        pending.attempt(
            [&] { report.section(QString::fromLatin1(section)).control(QString::fromLatin1(control)).caption = text; });
    };
    setCaption("rptHeader", "lblDate", QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat));
    setCaption("rptHeader", "lblReport", listTitle);
    setCaption("rptPageFooter", "lblAppName", product::Title);
    setCaption("rptPageFooter", "lblPageNum", QStringLiteral("Page %p of %P"));
    setCaption("rptPageFooter", "lblAppWeb", product::WebAddress);
    const std::array<QString, 5> values = {
        QString::number(state.InvCount),        QString::number(state.GuestsConfirmed),
        QString::number(state.GuestsUnknown),   QString::number(state.GuestsNotComing),
        QStringLiteral("₪") + QString::number(state.PresentTotal)};
    for (size_t i = 0; i < values.size(); ++i)
        setCaption("rptReportFooter", totals()[i].control, values[i]);

    for (int row = 0; row < grid.rowCount(); ++row) {
        std::array<QString, Columns> cells;
        for (int column = 0; column < Columns; ++column)
            cells[size_t(column)] = grid.index(row, column).data(Qt::DisplayRole).toString();
        const QVariant mark = grid.index(row, Columns - 1).data(Qt::FontRole);
        const bool struck = mark.isValid() && mark.value<QFont>().strikeOut();
        pending.attempt([&] { records->addNew(); });
        for (int column = 0; column < Columns; ++column) {
            const QString field =
                QLatin1String(struck ? "B" : "") + QString::fromUtf8(reportColumns()[size_t(column)].field);
            pending.attempt([&] { records->setValue(field, cells[size_t(column)]); });
        }
        pending.attempt([&] { records->update(); });
    }
    report.dataSource = records;
    if (pending)
        built.lastFailure = pending.failure();
    return built;
}

void releaseReport(WeddingState& state, const std::shared_ptr<RecordSet>& records)
{
    if (!records)
        return;
    if (records->isOpen())
        records->close();
    if (state.ReportRs != records)
        return; // a later report holds the state's set and connection now
    state.ReportRs.reset();
    if (state.ReportConn)
        state.ReportConn->close();
    state.ReportConn.reset();
}

} // namespace velmora::printing
