#include "PrintedPdf.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "guests/GuestListModel.h"
#include "printing/LabelReports.h"
#include "printing/PagePainter.h"
#include "printing/ui/LabelPreviews.h"
#include "printing/ui/PrinterTarget.h"
#include "printing/ui/ReportPreview.h"

#include <QBuffer>
#include <QDir>
#include <QPainter>

using namespace velmora;
using namespace velmora::printing;

namespace {

const char* const Names[][2] = {{"דנה", "כהן"}, {"Anna", "Smith"}, {"רון", "לוי"}, {"מיכל", "פרץ"}, {"יוסי", "מזרחי"}};

// Guest i sits at table i + 1, but for the second, who has no table.
std::vector<guests::GuestRow> guestRows(int count)
{
    std::vector<guests::GuestRow> rows{size_t(count)};
    for (int i = 0; i < count; ++i) {
        auto& cells = rows[size_t(i)].cells;
        std::tie(cells[1], cells[0]) = std::pair(QString(Names[i][0]), QString(Names[i][1]));
        cells[6] = i == 1 ? QString() : QString::number(i + 1);
        cells[8] = QStringLiteral("הרצל %1 חיפה").arg(i);
    }
    return rows;
}

const PlacedItem* find(const LaidOutReport& laidOut, const QString& control, int record)
{
    for (const Page& page : laidOut.pages)
        for (const PlacedItem& item : page.items)
            if (item.control == control && item.record == record)
                return &item;
    return nullptr;
}

} // namespace

class LabelsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<test::TestWedding> m_wedding;
    guests::GuestListModel m_model;

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        m_wedding->state.NoteStyle = NoBackground;
    }

    // Guest i stands on line i / 2, in box _1 or _2; the left edges tell which side is first.
    void twoAcrossInListOrder()
    {
        const struct { bool notes; int rows; bool frame, address; int color; QColor expected; } cases[] = {
            {false, 5, true, true, 0x0000FF, Qt::red},  {false, 5, true, false, 0xFF0000, Qt::blue},
            {false, 4, false, true, 0x204080, QColor(0x80, 0x40, 0x20)},
            {true, 5, true, false, 0x00FF00, Qt::green}, {true, 4, false, false, 0, Qt::black}};
        for (const auto& [notes, rows, frame, address, color, expected] : cases) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning("notes %d, %d rows", notes, rows); });
            WeddingState& s = m_wedding->state;
            std::tie(s.LabelFrame, s.LabelAddress, s.LabelColor) = std::tuple(frame, address, color);
            m_model.setRows(guestRows(rows));
            SheetReport built = notes ? buildSittingNotes(s, m_model) : buildEnvelopeLabels(s, m_model);
            QVERIFY(!built.pending);
            const LaidOutReport laidOut = layOut(built.report);
            const QString name = notes ? "txtNoteName_" : "txtEnvLabel_";
            const QString second = notes ? "txtNoteTableNo_" : "txtAddress_";
            // Paper left of each box: the first label stands right, the first card left.
            const int left[2] = {notes ? 1790 : 6803, notes ? 6357 : 1000};
            for (int i = 0; i < rows; ++i) {
                const PlacedItem* item = find(laidOut, name + QString::number(i % 2 + 1), i / 2);
                QVERIFY(item);
                QCOMPARE(item->text, QString(Names[i][0]) + ' ' + Names[i][1]);
                QCOMPARE(item->rect.left(), left[i % 2]);
                // The name keeps its place on the line whether the address prints or not.
                QCOMPARE(item->rect.top(), notes ? 1440 + 2400 + i / 2 * 4470 : 750 + 330 + i / 2 * 2160);
                QCOMPARE(item->color, expected);
                const PlacedItem* below = find(laidOut, second + QString::number(i % 2 + 1), i / 2);
                QCOMPARE(below != nullptr, notes || address);
                if (below) {
                    QCOMPARE(below->text, notes ? QStringLiteral("שולחן מס' ") + (i == 1 ? "" : QString::number(i + 1))
                                                : QStringLiteral("הרצל %1 חיפה").arg(i));
                    QCOMPARE(below->rect.top() - item->rect.top(), notes ? 435 : 470);
                }
            }
            QVERIFY(!find(laidOut, name + "2", rows / 2)); // an odd last line is half empty
            const int lines = (rows + 1) / 2;
            QCOMPARE(built.report.dataSource->recordCount(), lines);
            // Frames and folds on every line, the last too, in the label colour.
            for (int line = 0; line < lines; ++line)
                for (const char* control : {"Shape1", "Shape2", "LineSpliter1", "LineSpliter2"}) {
                    const PlacedItem* item = find(laidOut, control, line);
                    QCOMPARE(item != nullptr, frame && (notes || control[0] == 'S'));
                    if (item)
                        QCOMPARE(std::pair(item->color, item->borderStyle),
                                 std::pair(expected, notes ? BorderStyle::Dotted : BorderStyle::Solid));
                }
        }
    }

    // A field that begins with a Latin letter (an address abroad) prints as the program's own text would.
    void anAddressAbroadKeepsItsOrder()
    {
        const auto paint = [](bool fromField) {
            PlacedItem item;
            std::tie(item.rect, item.text, item.font.points, item.alignment, item.color, item.fromField) =
                std::tuple(QRect(0, 0, 3800, 465), "12 Rue de la Paix, Paris", 12, TextAlign::Right, Qt::black, fromField);
            QImage image(380, 47, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            paintPage(painter, Page{{item}}, 144);
            return image;
        };
        QCOMPARE(paint(true), paint(false));
    }

    // Through the command: a modeless preview printed in reading order; an unreadable design is left out, told once.
    void thePreviewAndItsDesign()
    {
        QByteArray png;
        QBuffer buffer(&png);
        QImage(60, 30, QImage::Format_RGB32).save(&buffer, "PNG");
        // One white dot, its last block's end and the trailer cut off: Qt's reader takes it.
        const QByteArray gif = QByteArray::fromHex("47494638396101000100800000ffffff00000021f90401000000002c00000000"
                                                   "010001000002024401");
        const QString invalid = QStringLiteral("התמונה '%1' אינה תקינה.");
        const struct { bool notes; QString style; QByteArray bytes; bool noDatabase; QString message; } cases[] = {
            // bytes null: a folder of that name; the database goes last: the picture's is the last failure told
            {false, NoBackground, {}, false, {}}, {true, NoBackground, {}, false, {}}, {true, "ורדים.gif", png, false, {}},
            {true, "a.gif", gif + QByteArray::fromHex("003b"), false, {}}, {true, "a.gif", gif, false, invalid},
            {true, "b.GIF", "GIF89a, or so it says", false, invalid},
            {true, "c.gif", {}, false, QStringLiteral("לא ניתן לקרוא את הקובץ '%1'.")}, {true, "d.gif", "x", true, invalid}};
        for (const auto& [notes, style, bytes, noDatabase, message] : cases) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning() << "design" << style; });
            WeddingState& s = m_wedding->state;
            std::tie(s.NoteStyle, s.LabelAddress) = std::tuple(style, true);
            const QString path = s.AppPath + QStringLiteral("design/") + style;
            QDir().mkpath(bytes.isNull() ? path : s.AppPath + QStringLiteral("design"));
            if (!bytes.isNull())
                test::writeFile(path, bytes);
            if (noDatabase)
                QFile::remove(s.databaseFile());
            test::ScriptedPrompts prompts;
            auto print = notes ? ui::PrintSittingNote : ui::PrintLabels;
            for (int run = 0; run < 2 && !message.isEmpty(); ++run)
                prompts.expectMessage(PromptIcon::Warning, message.arg(path));
            m_model.setRows(guestRows(3));
            QWidget main;
            ui::ReportPreview* preview = print(s, prompts, m_model, &main);
            QVERIFY(preview->isVisible() && !preview->isModal());
            QCOMPARE(preview->report().dataSource, s.ReportRs);
            const LaidOutReport& laidOut = preview->pages();
            for (const char* image : {"BgImg_1", "BgImg_2"}) // the odd last line too
                QCOMPARE(find(laidOut, image, 1) != nullptr, message.isEmpty() && style != NoBackground);

            PrinterRequest pdf;
            pdf.outputFile = m_wedding->folder() + QStringLiteral("/sheet.pdf");
            QVERIFY(ui::printReport(preview->report(), *ui::printerFor(pdf)));
            // pdftotext moves the blank beside a number within a line into the number's run.
            const QString text = test::pdfText(pdf.outputFile).remove(u' ');
            for (const char* line : {"דנהכהן", "AnnaSmith", notes ? "שולחןמס'3" : "הרצל2חיפה"})
                QVERIFY2(text.contains(QString::fromUtf8(line)), qPrintable(text));

            // A second run replaces the preview and the rows; closed, they stay in the state.
            const auto first = s.ReportRs;
            print(s, prompts, m_model, &main)->close();
            QVERIFY(prompts.verifyDone());
            QVERIFY(!preview->isVisible() && first->isOpen() && s.ReportRs != first && s.ReportRs->isOpen());
        }
    }
};

VELMORA_TEST_MAIN(LabelsTest)
#include "test_labels.moc"
