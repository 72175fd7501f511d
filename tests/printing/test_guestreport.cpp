#include "PrintedPdf.h"
#include "RunningProgram.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "printing/GuestReport.h"
#include "printing/PagePainter.h"
#include "printing/ui/PrinterTarget.h"
#include "printing/ui/ReportPreview.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QToolButton>
#include <QPainter>
#include <QPrinter>

using namespace velmora;
using namespace velmora::printing;
using velmora::test::pdfPages;
using velmora::test::pdfText;

namespace {

guests::GuestRow guest(const QString& family, const QString& first, bool notComing = false)
{
    guests::GuestRow row;
    row.cells = {family, first, QStringLiteral("050-1234567"), QStringLiteral("2"), QStringLiteral("צמחוני"),
                 notComing ? QStringLiteral("לא") : QStringLiteral("מגיע"), QStringLiteral("12"),
                 QStringLiteral("נשלחה"), QStringLiteral("הרצל 5, חיפה"), QStringLiteral("₪500")};
    row.notComing = notComing;
    return row;
}

std::vector<guests::GuestRow> manyGuests(int count)
{
    std::vector<guests::GuestRow> rows;
    for (int i = 0; i < count; ++i)
        rows.push_back(guest(QStringLiteral("משפחה %1").arg(i + 1), QStringLiteral("פרטי")));
    return rows;
}

const PlacedItem* find(const Page& page, const QString& control, int record = -1)
{
    for (const PlacedItem& item : page.items) {
        if (item.control == control && item.record == record)
            return &item;
    }
    return nullptr;
}

// The columns of the image with any dark pixel.
QList<int> inkColumns(const QImage& image)
{
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(x, y)) < 128) {
                columns << x;
                break;
            }
        }
    }
    return columns;
}

} // namespace

class GuestReportTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    guests::GuestListModel m_model;

    GuestReport build(std::vector<guests::GuestRow> rows, const QString& title = QStringLiteral("רשימה של כל האורחים"))
    {
        m_model.setRows(std::move(rows));
        return buildGuestReport(m_wedding->state, m_model, title);
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
    }

    void columnsStandWhereDesigned_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("twin");
        QTest::addColumn<int>("left"); // on the paper
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("text");
        QTest::newRow("family name") << "lblFamilyName" << "txtFamilyName" << "Text2" << 10078 << 1125 << "שם משפחה";
        QTest::newRow("first name") << "lblFirstName" << "txtFirstName" << "Text1" << 8377 << 1695 << "שם פרטי";
        QTest::newRow("phones") << "lblPhones" << "txtPhones" << "Text3" << 6677 << 1695 << "טלפונים";
        QTest::newRow("people") << "lblInvNum" << "txtInvNum" << "Text4" << 6110 << 555 << "כמות";
        QTest::newRow("remark") << "lblRemark" << "txtRemark" << "Text5" << 4409 << 1695 << "הערות";
        QTest::newRow("answer") << "lblConfirm" << "txtConfirm" << "Text6" << 3842 << 570 << "אישור";
        QTest::newRow("table") << "lblTableNo" << "txtTableNo" << "Text7" << 3275 << 570 << "שולחן";
        QTest::newRow("sent") << "lblInv" << "txtInvStatus" << "Text8" << 2708 << 570 << "הזמנה";
        QTest::newRow("address") << "Label2" << "txtAddress" << "txtBAddress" << 1574 << 1140 << "כתובת";
        QTest::newRow("present") << "lblPres" << "txtPresent" << "txtBPresent" << 440 << 1140 << "מתנה";
    }

    void columnsStandWhereDesigned()
    {
        QFETCH(QString, caption);
        QFETCH(QString, plain);
        QFETCH(QString, twin);
        QFETCH(int, left);
        QFETCH(int, width);
        QFETCH(QString, text);
        const LaidOutReport laidOut = layOut(build({guest("כהן", "דנה"), guest("לוי", "רון", true)}).report);
        const Page& page = laidOut.pages.at(0);
        const PlacedItem* head = find(page, caption);
        const PlacedItem* row = find(page, plain, 0);
        const PlacedItem* struck = find(page, twin, 1);
        QVERIFY(head && row && struck);
        QCOMPARE(head->text, text);
        QCOMPARE(head->alignment, TextAlign::Right);
        QCOMPARE(head->background, QColor(0xE0, 0xE0, 0xE0));
        QVERIFY(head->font.bold && head->font.underline && head->font.points == 9.75);
        QCOMPARE(find(page, QStringLiteral("imgMyLogo"))->picture.size(), QSize(276, 54));
        for (const PlacedItem* item : {head, row, struck}) {
            QCOMPARE(item->rect.left(), left);
            QCOMPARE(item->rect.width(), width);
            QCOMPARE(item->rect.height(), 240);
        }
        QCOMPARE(row->rect.top(), struck->rect.top() - 270); // the next line
        QCOMPARE(row->alignment, plain == QLatin1String("txtTableNo") ? TextAlign::Centre : TextAlign::Right);
    }

    void pagesFollowTheRows_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QList<int>>("pageOfRow"); // rows 1, 39, 40 and the last
        QTest::newRow("1 row") << 1 << 1 << QList<int>{1, 1, 1, 1};
        QTest::newRow("40 rows") << 40 << 2 << QList<int>{1, 1, 2, 2};
        QTest::newRow("100 rows") << 100 << 3 << QList<int>{1, 1, 2, 3};
        QTest::newRow("400 rows") << 400 << 10 << QList<int>{1, 1, 2, 10};
    }

    void pagesFollowTheRows()
    {
        QFETCH(int, rows);
        QFETCH(int, pages);
        QFETCH(QList<int>, pageOfRow);
        const LaidOutReport laidOut = layOut(build(manyGuests(rows)).report);
        QCOMPARE(int(laidOut.pages.size()), pages);
        std::vector<int> pageOf(size_t(rows), 0);
        QSet<int> summaryPages;
        for (int p = 0; p < pages; ++p) {
            const Page& page = laidOut.pages[size_t(p)];
            const PlacedItem* number = find(page, QStringLiteral("lblPageNum"));
            QVERIFY(number);
            QCOMPARE(number->text, QStringLiteral("Page %1 of %2").arg(p + 1).arg(pages));
            QVERIFY(find(page, QStringLiteral("imgMyLogo")) && find(page, QStringLiteral("lblFamilyName")));
            QCOMPARE(find(page, QStringLiteral("lblReport")) != nullptr, p == 0);
            for (const PlacedItem& item : page.items) {
                if (item.record >= 0)
                    pageOf[size_t(item.record)] = p + 1;
                if (item.record >= 0 || item.control.startsWith(QLatin1String("lblTota"))
                    || item.control == QLatin1String("lblSumOfPresents")) {
                    QVERIFY(item.rect.bottom() < number->rect.top());
                }
                if (item.control == QLatin1String("Label1") || item.control.startsWith(QLatin1String("lblTota"))
                    || item.control == QLatin1String("lblSumOfPresents"))
                    summaryPages << p + 1;
            }
        }
        QCOMPARE((QList<int>{pageOf[0], pageOf[size_t(std::min(rows, 39) - 1)], pageOf[size_t(std::min(rows, 40) - 1)],
                             pageOf.back()}),
                 pageOfRow);
        QCOMPARE(summaryPages, QSet<int>{pages}); // whole, after the last row
    }

    void notComingRowsPrintGreyAndStruckThrough()
    {
        std::vector<guests::GuestRow> rows = {guest("כהן", "דנה"), guest("לוי", "רון", true)};
        rows[0].cells[4].clear(); // no remark
        rows[1].cells[8].clear(); // no address
        const LaidOutReport laidOut = layOut(build(rows).report);
        QStringList plain;
        QStringList struck;
        for (const PlacedItem& item : laidOut.pages.at(0).items) {
            if (item.record == 0) {
                plain << item.control;
                QCOMPARE(item.color, QColor(Qt::black));
                QVERIFY(!item.font.strikeOut);
            } else if (item.record == 1) {
                struck << item.control;
                QCOMPARE(item.color, QColor(0x80, 0x80, 0x80));
                QVERIFY(item.font.strikeOut);
            }
            QVERIFY(!item.font.strikeOut || item.record == 1);
        }
        QCOMPARE(plain, (QStringList{"txtFamilyName", "txtFirstName", "txtPhones", "txtInvNum", "txtConfirm",
                                     "txtTableNo", "txtInvStatus", "txtAddress", "txtPresent"}));
        QCOMPARE(struck, (QStringList{"Text2", "Text1", "Text3", "Text4", "Text5", "Text6", "Text7", "Text8",
                                      "txtBPresent"}));
        QCOMPARE(find(laidOut.pages[0], QStringLiteral("Text1"), 1)->text, QStringLiteral("רון"));
    }

    void theSummaryAndTitleFollowTheListShown()
    {
        test::TestWedding& w = *m_wedding;
        WeddingState& s = w.state;
        s.NumOfGroups = 4;
        s.UserGroups = {s.CoupleName, s.HisFamily, s.HerFamily, QStringLiteral("חברים")};
        auto add = [&](const QString& family, int people, int confirm, const QString& group, const QString& present) {
            QVariantMap fields = test::invitation(family, QStringLiteral("א"), people, confirm, {}, QStringLiteral("050"), group);
            fields[QStringLiteral("PRESENT")] = present;
            fields[QStringLiteral("PRESENT_TYPE")] = 1;
            w.addInvitation(fields);
        };
        add(QStringLiteral("כהן"), 2, 1, QStringLiteral("4"), QStringLiteral("500"));
        add(QStringLiteral("לוי"), 3, 2, QStringLiteral("4"), QStringLiteral("250"));
        add(QStringLiteral("מזרחי"), 4, 0, QStringLiteral("4"), QString());
        add(QStringLiteral("פרץ"), 7, 1, QStringLiteral("1"), QStringLiteral("900"));
        test::ScriptedPrompts prompts;
        s.CurGroup = QStringLiteral("חברים");
        const guests::ListOutcome shown = guests::InitList(s, prompts, m_model, s.CurGroup,
                                                           QStringLiteral("FAMILY_NAME"), guests::ListView{});
        const GuestReport built = buildGuestReport(s, m_model, shown.caption);
        QVERIFY2(!built.lastFailure, built.lastFailure ? qPrintable(built.lastFailure->text()) : "");
        const LaidOutReport laidOut = layOut(built.report);
        QCOMPARE(laidOut.pages.size(), size_t(1));
        const Page& page = laidOut.pages[0];
        QCOMPARE(find(page, QStringLiteral("lblReport"))->text, QStringLiteral("רשימה של חברים"));
        QCOMPARE(find(page, QStringLiteral("txtFamilyName"), 0)->text, QStringLiteral("כהן"));
        QCOMPARE(find(page, QStringLiteral("Text2"), 1)->text, QStringLiteral("לוי")); // struck, still counted
        QCOMPARE(find(page, QStringLiteral("txtFamilyName"), 2)->text, QStringLiteral("מזרחי"));
        QCOMPARE(built.report.dataSource->recordCount(), 3);
        const std::vector<std::pair<QString, QString>> summary = {
            {"lblTotalInvNum", "3"}, {"lblTotaCnfOkNum", "2"}, {"lblTotaCnfUnkownNum", "4"},
            {"lblTotaCnfNotOkNum", "3"}, {"lblSumOfPresents", "₪750"}};
        for (const auto& [control, value] : summary)
            QCOMPARE(find(page, control)->text, value);
        QCOMPARE(find(page, QStringLiteral("Label1"))->text, QStringLiteral(":סיכום כללי"));
        QCOMPARE(find(page, QStringLiteral("lblAppWeb"))->text, QStringLiteral("www.velmora.co.il"));
    }

    // Every word reaches the paper: captions and cells are one line each, narrowed or cut at
    // their box's edge, never broken at a blank.
    void aPdfReadsInLogicalOrder()
    {
        std::vector<guests::GuestRow> rows = {guest("כהן", "דנה")};
        rows[0].cells[4] = QStringLiteral("שולחן מס' 12");
        rows[0].cells[8] = QStringLiteral("הנביאים חיפה");
        rows[0].cells[9] = QStringLiteral("₪1,250");
        rows.push_back(guest("לוי", "רון", true));
        rows[1].cells[9] = QStringLiteral("₪") + QString(20, u'ס'); // a gift as long as it may be
        m_wedding->state.PresentTotal = 1250;
        const GuestReport built = build(rows);
        QVERIFY2(!built.lastFailure, built.lastFailure ? qPrintable(built.lastFailure->text()) : "");
        QCOMPARE(find(layOut(built.report).pages.at(0), QStringLiteral("txtBPresent"), 1)->text, rows[1].cells[9]);
        const QString path = m_wedding->folder() + QStringLiteral("/report.pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        QVERIFY(ui::printReport(built.report, printer));
        const QString text = pdfText(path).simplified(); // the PDF keeps one blank of two
        for (const char* expected :
             {"רשימה של כל האורחים", "שולחן מס' 12", "₪1,250", "Page 1 of 1", "www.velmora.co.il", "₪1250",
              "הנביאים חיפה", "מס' ההזמנות", "מס' האנשים שאישרו הגעתם",
              "מס' האנשים שממתינים לאישורם", "מס' האנשים  שאישרו שאינם מגיעים", "סך כול המתנות הכספיות"})
            QVERIFY2(text.contains(QString::fromUtf8(expected).simplified()), expected);
    }

    // A cell of a laid-out page, painted as the preview paints it, reads in the order the grid
    // shows: the Hebrew of a mixed line at the right and its number to the left, digits in
    // order ("12", never "21"); a value beginning with a number reads right to left too.
    // `tail` is what stands at the cell's right end.
    void aMixedCellReadsInOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tail");
        QTest::newRow("table number") << "שולחן מס' 12" << "שולחן מס' 2";
        QTest::newRow("number first") << "2 ילדים" << "2";
    }

    void aMixedCellReadsInOrder()
    {
        QFETCH(QString, text);
        QFETCH(QString, tail);
        auto remarkCell = [&](const QString& remark) {
            std::vector<guests::GuestRow> rows = {guest("כהן", "דנה")};
            rows[0].cells[4] = remark;
            const LaidOutReport laidOut = layOut(build(rows).report);
            const Page& page = laidOut.pages.at(0);
            constexpr int Dpi = 300;
            QImage image(QSize(laidOut.paper.width(), laidOut.paper.height()) * Dpi / 1440, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.setLayoutDirection(Qt::RightToLeft); // as the preview's painter comes
            paintPage(painter, page, Dpi);
            painter.end();
            const QRect cell = find(page, QStringLiteral("txtRemark"), 0)->rect;
            return image.copy(QRect(cell.topLeft() * Dpi / 1440, cell.size() * Dpi / 1440));
        };
        const QList<int> whole = inkColumns(remarkCell(text));
        const QList<int> end = inkColumns(remarkCell(tail));
        QVERIFY(!end.isEmpty() && whole.size() > end.size());
        QCOMPARE(whole.mid(whole.size() - end.size()), end);
    }

    // The whole road: the list's print command opens the preview at once, asking nothing; the
    // user pages through it by keys a screen reader names, prints from it through the print
    // dialog; closing it lets the rows go.
    void theListsPrintCommandOpensAPreviewToPrintFrom()
    {
        for (int i = 0; i < 90; ++i)
            m_wedding->addInvitation(test::invitation(QStringLiteral("משפחה %1").arg(i), QStringLiteral("א"), 1, i % 3));
        test::RunningProgram program;
        QVERIFY(program.start(m_wedding->folder()));
        ui::MainWindow& main = program.main();
        QVERIFY(main.action(QStringLiteral("mnuPrintReport"))->isEnabled());
        main.action(QStringLiteral("mnuPrintReport"))->trigger();
        main.toolButton(8)->trigger(); // the button opens it afresh: still one preview
        QList<ui::ReportPreview*> previews;
        for (ui::ReportPreview* preview : main.findChildren<ui::ReportPreview*>()) {
            if (preview->isVisible())
                previews << preview;
        }
        QCOMPARE(previews.size(), 1);
        ui::ReportPreview* preview = previews.front();
        QVERIFY(preview->isVisible() && !preview->isModal() && preview->isWindow());
        QCOMPARE(preview->windowTitle(), QStringLiteral("Velmora - Report"));
        QCOMPARE(program.state.ReportRs->recordCount(), 90);
        QCOMPARE(program.state.ReportRs, preview->report().dataSource);
        QCOMPARE(preview->pageCount(), 3);
        preview->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(preview));

        auto spoken = [](QObject* object) {
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(object);
            return face ? face->text(QAccessible::Name) : QString();
        };
        auto* counter = preview->findChild<QLabel*>(QStringLiteral("pageNumber"));
        QVERIFY(counter);
        const struct {
            Qt::Key key;
            int page;
        } steps[] = {{Qt::Key_PageDown, 2}, {Qt::Key_PageDown, 3}, {Qt::Key_PageDown, 3},
                     {Qt::Key_Home, 1},     {Qt::Key_End, 3},      {Qt::Key_PageUp, 2}};
        for (const auto& step : steps) {
            QTest::keyClick(QApplication::focusWidget(), step.key);
            QCOMPARE(preview->currentPage(), step.page);
            QCOMPARE(spoken(counter), QStringLiteral("עמוד %1 מתוך 3").arg(step.page));
        }
        QStringList buttons;
        for (auto* button : preview->findChildren<QToolButton*>()) {
            if (!spoken(button).isEmpty())
                buttons << spoken(button);
        }
        for (const char* name : {"הדפסה", "עמוד ראשון", "עמוד קודם", "עמוד הבא", "עמוד אחרון", "התאמה לרוחב",
                                 "עמוד שלם", "הגדלה", "הקטנה"})
            QVERIFY2(buttons.contains(QString::fromUtf8(name)), name);
        // The page in sight is painted.
        auto* view = preview->findChild<QAbstractScrollArea*>();
        QVERIFY(view);
        const QImage shot = view->viewport()->grab().toImage();
        QVERIFY(!inkColumns(shot).isEmpty());

        program.prompts.expectPrinter(std::nullopt); // cancelled: nothing, and no word
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
        PrinterRequest toFile;
        toFile.outputFile = m_wedding->folder() + QStringLiteral("/list.pdf");
        toFile.paper = QPageSize(QPageSize::A5); // laid out again for it
        toFile.duplex = PrinterDuplex::LongSide;
        toFile.grayscale = true;
        toFile.collate = false;
        program.prompts.expectPrinter(toFile);
        preview->printAction()->trigger();
        QVERIFY(program.prompts.verifyDone());
        QCOMPARE(pdfPages(toFile.outputFile), 5);
        QVERIFY(pdfText(toFile.outputFile).contains(QStringLiteral("Page 2 of 5")));
        const std::unique_ptr<QPrinter> kept = ui::printerFor(toFile);
        QCOMPARE(kept->pageLayout().pageSize().id(), QPageSize::A5);
        QCOMPARE(kept->colorMode(), QPrinter::GrayScale);
        QVERIFY(!kept->collateCopies());

        const auto records = program.state.ReportRs;
        preview->close();
        QVERIFY(!program.state.ReportRs && !program.state.ReportConn);
        QVERIFY(!records->isOpen());
        program.stop();
    }

    // A failed step doesn't stop the report: what could be built shows, then the failure.
    void aFailureFollowsTheReportItCouldBuild()
    {
        m_wedding->addInvitation(test::invitation(QStringLiteral("כהן"), QStringLiteral("דנה"), 2, 1));
        test::RunningProgram program;
        QVERIFY(program.start(m_wedding->folder()));
        const QString database = program.state.databaseFile();
        QVERIFY(QFile::remove(database));
        program.prompts.expectMessage(PromptIcon::Warning,
                                      QStringLiteral("לא ניתן למצוא את הקובץ '%1'.").arg(database));
        program.main().toolButton(8)->trigger();
        QVERIFY(program.prompts.verifyDone());
        auto* preview = program.main().findChild<ui::ReportPreview*>();
        QVERIFY(preview && preview->isVisible());
        QCOMPARE(preview->report().dataSource->recordCount(), 1);
        program.stop();
    }
};

VELMORA_TEST_MAIN(GuestReportTest)
#include "test_guestreport.moc"
