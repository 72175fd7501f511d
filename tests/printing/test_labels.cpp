#include "PrintedPdf.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "guests/GuestListModel.h"
#include "printing/LabelReports.h"
#include "printing/ui/LabelPreviews.h"
#include "printing/ui/ReportPreview.h"

#include <QBuffer>
#include <QDir>
#include <QPrinter>

using namespace velmora;
using namespace velmora::printing;

namespace {

// Guest i is "פרטי<i> משפחה<i>" at table i + 1, but for the second, who has no table.
std::vector<guests::GuestRow> guestRows(int count)
{
    std::vector<guests::GuestRow> rows{size_t(count)};
    for (int i = 0; i < count; ++i) {
        auto& cells = rows[size_t(i)].cells;
        cells[0] = QStringLiteral("משפחה%1").arg(i);
        cells[1] = QStringLiteral("פרטי%1").arg(i);
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

    SheetReport build(bool notes, int rows)
    {
        m_model.setRows(guestRows(rows));
        return notes ? buildSittingNotes(m_wedding->state, m_model) : buildEnvelopeLabels(m_wedding->state, m_model);
    }

    QString design(const QString& name, const QByteArray& bytes)
    {
        QDir(m_wedding->folder()).mkpath(QStringLiteral("design"));
        const QString path = m_wedding->folder() + QStringLiteral("/design/") + name;
        QFile file(path);
        if (!bytes.isNull() && file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return path;
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        m_wedding->state.NoteStyle = NoDesign;
    }

    // Guest i stands on line i / 2, in box _1 or _2; the left edges tell which side is first.
    void twoAcrossInListOrder_data()
    {
        QTest::addColumn<bool>("notes");
        QTest::addColumn<int>("rows");
        QTest::addColumn<bool>("frame");
        QTest::addColumn<bool>("address");
        QTest::addColumn<int>("color");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("labels, odd, frame") << false << 5 << true << true << 0x0000FF << QColor(Qt::red);
        QTest::newRow("labels, no address") << false << 5 << true << false << 0xFF0000 << QColor(Qt::blue);
        QTest::newRow("labels, even, no frame") << false << 4 << false << true << 0x204080 << QColor(0x80, 0x40, 0x20);
        QTest::newRow("notes, odd, frame") << true << 5 << true << false << 0x00FF00 << QColor(Qt::green);
        QTest::newRow("notes, even, no frame") << true << 4 << false << false << 0 << QColor(Qt::black);
    }

    void twoAcrossInListOrder()
    {
        QFETCH(bool, notes);
        QFETCH(int, rows);
        QFETCH(bool, frame);
        QFETCH(bool, address);
        QFETCH(int, color);
        QFETCH(QColor, expected);
        WeddingState& s = m_wedding->state;
        std::tie(s.LabelFrame, s.LabelAddress, s.LabelColor) = std::tuple(frame, address, color);
        SheetReport built = build(notes, rows);
        QVERIFY(!built.pending);
        const LaidOutReport laidOut = layOut(built.report);
        const QString name = notes ? "txtNoteName_" : "txtEnvLabel_";
        const QString second = notes ? "txtNoteTableNo_" : "txtAddress_";
        // Paper left of each box: the first label stands right, the first card left.
        const int left[2] = {notes ? 1790 : 6803, notes ? 6357 : 1000};
        for (int i = 0; i < rows; ++i) {
            const QString box = name + QString::number(i % 2 + 1);
            const PlacedItem* item = find(laidOut, box, i / 2);
            QVERIFY2(item, qPrintable(box));
            QCOMPARE(item->text, QStringLiteral("פרטי%1 משפחה%1").arg(i));
            QCOMPARE(item->rect.left(), left[i % 2]);
            QCOMPARE(item->color, expected);
            const PlacedItem* below = find(laidOut, second + QString::number(i % 2 + 1), i / 2);
            QCOMPARE(below != nullptr, notes || address);
            if (below) {
                QCOMPARE(below->text, notes ? QStringLiteral("שולחן מס' ") + (i == 1 ? "" : QString::number(i + 1))
                                            : QStringLiteral("הרצל %1 חיפה").arg(i));
                QCOMPARE(below->rect.top() - item->rect.top(), notes ? 435 : 470);
            }
        }
        QCOMPARE(find(laidOut, name + "2", rows / 2) != nullptr, false); // an odd last line is half empty
        const int lines = (rows + 1) / 2;
        QCOMPARE(built.report.dataSource->recordCount(), lines);
        // Frames and folds on every line, the last too, in the label colour.
        for (int line = 0; line < lines; ++line) {
            for (const char* control : {"Shape1", "Shape2", "LineSpliter1", "LineSpliter2"}) {
                const PlacedItem* item = find(laidOut, control, line);
                QCOMPARE(item != nullptr, frame && (notes || control[0] == 'S'));
                if (item) {
                    QCOMPARE(item->color, expected);
                    QCOMPARE(item->borderStyle, notes ? BorderStyle::Dotted : BorderStyle::Solid);
                }
            }
        }
    }

    // Through the command: a modeless preview under its caption, the state's rows behind it;
    // a design that can't be read leaves the pictures out and is told once, after the notes.
    void thePreviewAndItsDesign_data()
    {
        QTest::addColumn<bool>("notes");
        QTest::addColumn<QString>("style");
        QTest::addColumn<QByteArray>("bytes"); // null: a folder of that name
        QTest::addColumn<bool>("noDatabase");
        QTest::addColumn<QString>("message");
        QByteArray png;
        QBuffer buffer(&png);
        QImage picture(60, 30, QImage::Format_RGB32);
        picture.fill(Qt::yellow);
        picture.save(&buffer, "PNG");
        const QString invalid = QStringLiteral("התמונה '%1' אינה תקינה.");
        QTest::newRow("labels") << false << QString(NoDesign) << QByteArray() << false << QString();
        QTest::newRow("no design") << true << QString(NoDesign) << QByteArray() << false << QString();
        QTest::newRow("a design") << true << "ורדים.gif" << png << false << QString();
        // One white dot, its last block's end and the trailer cut off: the reader takes it.
        const QByteArray gif = QByteArray::fromHex("47494638396101000100800000ffffff00000021f90401000000002c00000000"
                                                   "010001000002024401");
        QTest::newRow("cut short") << true << "a.gif" << gif << false << invalid;
        QTest::newRow("whole") << true << "a.gif" << gif + QByteArray::fromHex("003b") << false << QString();
        QTest::newRow("not a picture") << true << "b.GIF" << QByteArray("GIF89a, or so it says") << false << invalid;
        QTest::newRow("a folder") << true << "c.gif" << QByteArray() << false
                                  << QStringLiteral("לא ניתן לקרוא את הקובץ '%1'.");
        QTest::newRow("the last failure") << true << "d.gif" << QByteArray("x") << true << invalid;
    }

    void thePreviewAndItsDesign()
    {
        QFETCH(bool, notes);
        QFETCH(QString, style);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, noDatabase);
        QFETCH(QString, message);
        WeddingState& s = m_wedding->state;
        s.NoteStyle = style;
        const QString path = style == NoDesign ? QString() : design(style, bytes);
        if (bytes.isNull() && !path.isEmpty())
            QDir().mkpath(path);
        if (noDatabase)
            QFile::remove(s.databaseFile());
        test::ScriptedPrompts prompts;
        if (!message.isEmpty())
            prompts.expectMessage(PromptIcon::Warning, message.arg(path));
        m_model.setRows(guestRows(3));
        QWidget main;
        ui::ReportPreview* preview = (notes ? ui::PrintSittingNote : ui::PrintLabels)(s, prompts, m_model, &main);
        QVERIFY(prompts.verifyDone());
        QVERIFY(preview->isVisible() && !preview->isModal());
        QCOMPARE(preview->windowTitle(), notes ? QStringLiteral("Velmora - Sitting Note") : "Velmora - Envelop Labels");
        QCOMPARE(preview->report().dataSource, s.ReportRs);
        const LaidOutReport& laidOut = preview->pages();
        const bool pictures = message.isEmpty() && !path.isEmpty();
        for (const char* image : {"BgImg_1", "BgImg_2"}) // the odd last line too
            QCOMPARE(find(laidOut, image, 1) != nullptr, pictures);
        if (pictures)
            QVERIFY(find(laidOut, "BgImg_2", 1)->picture.pixelColor(0, 0) != Qt::black);
        QVERIFY(find(laidOut, notes ? "txtNoteName_1" : "txtEnvLabel_1", 1));
        // A second run replaces the preview and the rows; closed, they stay in the state.
        const auto first = s.ReportRs;
        if (!message.isEmpty())
            prompts.expectMessage(PromptIcon::Warning, message.arg(path));
        ui::ReportPreview* again = (notes ? ui::PrintSittingNote : ui::PrintLabels)(s, prompts, m_model, &main);
        QVERIFY(prompts.verifyDone());
        QVERIFY(!preview->isVisible() && first->isOpen() && s.ReportRs != first);
        again->close();
        QVERIFY(s.ReportRs && s.ReportRs->isOpen());
    }

    void aPdfReadsInLogicalOrder_data()
    {
        QTest::addColumn<bool>("notes");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("labels") << false << QStringList{"דנה כהן", "רחוב הרצל 5 חיפה", "Anna Smith"};
        QTest::newRow("notes") << true << QStringList{"דנה כהן", "שולחן מס' 12", "Anna Smith", "שולחן מס'"};
    }

    void aPdfReadsInLogicalOrder()
    {
        QFETCH(bool, notes);
        QFETCH(QStringList, expected);
        m_wedding->state.LabelAddress = m_wedding->state.LabelFrame = true;
        std::vector<guests::GuestRow> rows = guestRows(2);
        rows[0].cells = {"כהן", "דנה", {}, {}, {}, {}, "12", {}, "רחוב הרצל 5 חיפה", {}};
        rows[1].cells = {"Smith", "Anna", {}, {}, {}, {}, {}, {}, {}, {}};
        m_model.setRows(rows);
        SheetReport built = notes ? buildSittingNotes(m_wedding->state, m_model)
                                  : buildEnvelopeLabels(m_wedding->state, m_model);
        const QString path = m_wedding->folder() + QStringLiteral("/sheet.pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        QVERIFY(ui::printReport(built.report, printer));
        // pdftotext moves the blank beside a number inside a line into the number's run.
        const QString text = test::pdfText(path).remove(u' ');
        for (const QString& line : expected)
            QVERIFY2(text.contains(QString(line).remove(u' ')), qPrintable(text));
    }
};

VELMORA_TEST_MAIN(LabelsTest)
#include "test_labels.moc"
