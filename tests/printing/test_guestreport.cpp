#include "PrintedPdf.h"
#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "printing/GuestReport.h"
#include "printing/ui/PrinterTarget.h"
#include "printing/ui/ReportPreview.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QToolButton>

using namespace velmora;
using namespace velmora::printing;
using velmora::test::pdfPages;
using velmora::test::pdfText;

namespace {

guests::GuestRow guest(const QString& family, const QString& first, bool notComing = false)
{
    guests::GuestRow row;
    row.cells = {family, first, "050-1234567", "2", "צמחוני", notComing ? "לא" : "מגיע", "12", "נשלחה", "הרצל 5, חיפה", "₪500"};
    row.notComing = notComing;
    return row;
}

const PlacedItem* find(const Page& page, const QString& control, int record = -1)
{
    const auto at = std::find_if(page.items.begin(), page.items.end(),
                                 [&](auto& item) { return item.control == control && item.record == record; });
    return at == page.items.end() ? nullptr : &*at;
}

bool hasInk(const QImage& image)
{
    for (int i = 0; i < image.width() * image.height(); ++i)
        if (qGray(image.pixel(i % image.width(), i / image.width())) < 128)
            return true;
    return false;
}

} // namespace

class GuestReportTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    guests::GuestListModel m_model;

    GuestReport build(std::vector<guests::GuestRow> rows)
    {
        m_model.setRows(std::move(rows));
        return buildGuestReport(m_wedding->state, m_model, QStringLiteral("רשימה של כל האורחים"));
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
    }

    // No rows: one numbered page; 39 rows: the summary alone on a second page.
    void pagesFollowTheRows()
    {
        // The pages of rows 1, 39, 40 and the last.
        for (const auto& [rows, pages, pageOfRow] : {std::tuple(0, 1, QList<int>{}), {1, 1, {1, 1, 1, 1}}, {39, 2, {1, 1, 1, 1}},
                                                     {40, 2, {1, 1, 2, 2}}, {400, 10, {1, 1, 2, 10}}}) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning("%d rows", rows); });
            const LaidOutReport laidOut = layOut(build(std::vector(size_t(rows), guest("משפחה", "פרטי"))).report);
            QCOMPARE(int(laidOut.pages.size()), pages);
            std::vector<int> pageOf(size_t(rows), 0);
            QSet<int> summaryPages;
            for (int p = 0; p < pages; ++p) {
                const Page& page = laidOut.pages[size_t(p)];
                const PlacedItem* number = find(page, QStringLiteral("lblPageNum"));
                QVERIFY(number && find(page, QStringLiteral("lblFamilyName")));
                QCOMPARE(number->text, QStringLiteral("Page %1 of %2").arg(p + 1).arg(pages));
                QCOMPARE(find(page, QStringLiteral("lblReport")) != nullptr, p == 0);
                for (const PlacedItem& item : page.items) {
                    const bool summary = item.control.startsWith(QLatin1String("lblTota")) || item.control == u"lblSumOfPresents";
                    if (item.record >= 0)
                        pageOf[size_t(item.record)] = p + 1;
                    if (item.record >= 0 || summary)
                        QVERIFY(item.rect.bottom() < number->rect.top());
                    if (summary || item.control == u"Label1")
                        summaryPages << p + 1;
                }
            }
            if (rows > 0)
                QCOMPARE((QList<int>{pageOf[0], pageOf[size_t(std::min(rows, 39) - 1)], pageOf[size_t(std::min(rows, 40) - 1)],
                                     pageOf.back()}), pageOfRow);
            QCOMPARE(summaryPages, QSet<int>{pages}); // whole, after the last row
        }
    }

    // A not-coming row prints grey and struck, in twin cells under the same captions, one line further down.
    void notComingRowsPrintGreyAndStruckThroughInTheSameColumns()
    {
        std::vector<guests::GuestRow> rows = {guest("כהן", "דנה"), guest("לוי", "רון", true)};
        rows[0].cells[4].clear(); // no remark
        rows[1].cells[8].clear(); // no address
        const Page page = layOut(build(rows).report).pages.at(0);
        int cells = 0;
        for (const PlacedItem& item : page.items) {
            QCOMPARE(item.font.strikeOut, item.record == 1);
            if (item.record >= 0)
                QCOMPARE(item.color, item.record ? QColor(0x80, 0x80, 0x80) : QColor(Qt::black));
            cells += item.record >= 0;
        }
        QCOMPARE(cells, 18); // each in the table below
        QCOMPARE(find(page, QStringLiteral("Text1"), 1)->text, QStringLiteral("רון"));
        const char* columns[][3] = {{"lblFamilyName", "txtFamilyName", "Text2"}, {"lblFirstName", "txtFirstName", "Text1"},
                                    {"lblPhones", "txtPhones", "Text3"},         {"lblInvNum", "txtInvNum", "Text4"},
                                    {"lblRemark", "txtRemark", "Text5"},         {"lblConfirm", "txtConfirm", "Text6"},
                                    {"lblTableNo", "txtTableNo", "Text7"},       {"lblInv", "txtInvStatus", "Text8"},
                                    {"Label2", "txtAddress", "txtBAddress"},     {"lblPres", "txtPresent", "txtBPresent"}};
        for (const auto& [caption, cell, twin] : columns) {
            const PlacedItem* head = find(page, QLatin1String(caption));
            QVERIFY2(head, caption);
            for (const auto& [name, record] : {std::pair(cell, 0), std::pair(twin, 1)}) {
                const PlacedItem* item = find(page, QLatin1String(name), record);
                QCOMPARE(!item, caption == std::string_view(record ? "Label2" : "lblRemark")); // the emptied cells
                if (!item)
                    continue;
                QCOMPARE(std::pair(item->rect.left(), item->rect.width()), std::pair(head->rect.left(), head->rect.width()));
                QCOMPARE(item->rect.top(), find(page, QStringLiteral("txtFamilyName"), 0)->rect.top() + 270 * record);
            }
        }
    }

    void theSummaryAndTitleFollowTheListShown()
    {
        WeddingState& s = m_wedding->state;
        s.NumOfGroups = 4;
        s.UserGroups = {s.CoupleName, s.HisFamily, s.HerFamily, QStringLiteral("חברים")};
        for (const auto& [family, people, confirm, group, present] :
             {std::tuple("כהן", 2, 1, "4", "500"), {"לוי", 3, 2, "4", "250"}, {"מזרחי", 4, 0, "4", ""}, {"פרץ", 7, 1, "1", "900"}}) {
            QVariantMap fields = test::invitation(QString::fromUtf8(family), "א", people, confirm, {}, "050", group);
            fields.insert({{"PRESENT", present}, {"PRESENT_TYPE", 1}});
            m_wedding->addInvitation(fields);
        }
        s.CurGroup = QStringLiteral("חברים");
        test::ScriptedPrompts prompts;
        const auto shown = guests::InitList(s, prompts, m_model, s.CurGroup, QStringLiteral("FAMILY_NAME"), guests::ListView{});
        const GuestReport built = buildGuestReport(s, m_model, shown.caption);
        QVERIFY(!built.lastFailure);
        const LaidOutReport laidOut = layOut(built.report);
        QCOMPARE(laidOut.pages.size(), size_t(1));
        const std::vector<std::tuple<QString, int, QString>> expected = {
            {"lblReport", -1, "רשימה של חברים"}, {"txtFamilyName", 0, "כהן"}, {"Text2", 1, "לוי"} /* struck, counted */,
            {"txtFamilyName", 2, "מזרחי"},       {"lblTotalInvNum", -1, "3"}, {"lblTotaCnfOkNum", -1, "2"},
            {"lblTotaCnfUnkownNum", -1, "4"},    {"lblTotaCnfNotOkNum", -1, "3"}, {"lblSumOfPresents", -1, "₪750"}};
        for (const auto& [control, record, text] : expected)
            QCOMPARE(find(laidOut.pages[0], control, record)->text, text);
    }

    // Every word reaches the paper: captions and cells stay one line each, never broken at a blank.
    void aPdfReadsInLogicalOrder()
    {
        std::vector<guests::GuestRow> rows = {guest("כהן", "דנה"), guest("לוי", "רון", true)};
        std::tie(rows[0].cells[4], rows[0].cells[8], rows[0].cells[9]) = std::tuple("שולחן מס' 12", "הנביאים חיפה", "₪1,250");
        rows[1].cells[9] = QStringLiteral("₪") + QString(20, u'ס'); // a gift as long as it may be
        m_wedding->state.PresentTotal = 1250;
        const GuestReport built = build(rows);
        QVERIFY(!built.lastFailure);
        QCOMPARE(find(layOut(built.report).pages.at(0), QStringLiteral("txtBPresent"), 1)->text, rows[1].cells[9]);
        PrinterRequest pdf;
        pdf.outputFile = m_wedding->folder() + QStringLiteral("/report.pdf");
        QVERIFY(ui::printReport(built.report, *ui::printerFor(pdf)));
        const QString text = pdfText(pdf.outputFile).simplified(); // the PDF keeps one blank of two
        for (const char* expected : {"רשימה של כל האורחים", "שולחן מס' 12", "₪1,250", "Page 1 of 1", "www.velmora.co.il",
                                     "₪1250", "הנביאים חיפה", "מס' ההזמנות", "מס' האנשים שאישרו הגעתם", "סך כול המתנות הכספיות",
                                     "מס' האנשים שממתינים לאישורם", "מס' האנשים  שאישרו שאינם מגיעים"})
            QVERIFY2(text.contains(QString::fromUtf8(expected).simplified()), expected);
    }

    // The print command opens a modeless preview at once; keys page it, a screen reader names all, it prints.
    void theListsPrintCommandOpensAPreviewToPrintFrom()
    {
        for (int i = 0; i < 90; ++i)
            m_wedding->addInvitation(test::invitation(QStringLiteral("משפחה %1").arg(i), QStringLiteral("א"), 1, i % 3));
        test::RunningProgram program;
        QVERIFY(program.start(m_wedding->folder()));
        ui::MainWindow& main = program.main();
        main.action(QStringLiteral("mnuPrintReport"))->trigger();
        main.toolButton(8)->trigger(); // the button opens it afresh: still one preview
        QList<ui::ReportPreview*> previews = main.findChildren<ui::ReportPreview*>();
        previews.removeIf([](const ui::ReportPreview* preview) { return !preview->isVisible(); });
        QCOMPARE(previews.size(), 1);
        ui::ReportPreview* preview = previews.front();
        QVERIFY(!preview->isModal() && preview->isWindow());
        QCOMPARE(preview->report().dataSource->recordCount(), 90);
        QCOMPARE(preview->pageCount(), 3);
        QVERIFY(test::activate(preview));

        auto spoken = [](QObject* object) { return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name); };
        auto* counter = preview->findChild<QLabel*>(QStringLiteral("pageNumber"));
        QVERIFY(counter);
        for (const auto& [key, page] : {std::pair(Qt::Key_PageDown, 2), {Qt::Key_PageDown, 3}, {Qt::Key_PageDown, 3},
                                        {Qt::Key_Home, 1}, {Qt::Key_End, 3}, {Qt::Key_PageUp, 2}}) {
            QTest::keyClick(QApplication::focusWidget(), key);
            QCOMPARE(spoken(counter), QStringLiteral("עמוד %1 מתוך 3").arg(page));
        }
        QStringList buttons;
        for (auto* button : preview->findChildren<QToolButton*>())
            buttons << spoken(button);
        for (const char* name : {"הדפסה", "עמוד ראשון", "עמוד קודם", "עמוד הבא", "עמוד אחרון", "התאמה לרוחב",
                                 "עמוד שלם", "הגדלה", "הקטנה"})
            QVERIFY2(buttons.contains(QString::fromUtf8(name)), name);
        // The page in sight is painted.
        auto* view = preview->findChild<QAbstractScrollArea*>();
        QVERIFY(view && hasInk(view->viewport()->grab().toImage()));

        program.prompts.expectPrinter(std::nullopt); // cancelled: nothing, and no word
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
        PrinterRequest toFile;
        std::tie(toFile.outputFile, toFile.paper) = std::tuple(m_wedding->folder() + "/list.pdf", QPageSize(QPageSize::A5)); // laid out anew
        program.prompts.expectPrinter(toFile);
        preview->printAction()->trigger();
        QVERIFY(program.prompts.verifyDone());
        QCOMPARE(pdfPages(toFile.outputFile), 5);
        QVERIFY(pdfText(toFile.outputFile).contains(QStringLiteral("Page 2 of 5")));

        const auto records = program.state.ReportRs;
        preview->close();
        QVERIFY(!program.state.ReportRs && !program.state.ReportConn && !records->isOpen());

        // A failed step doesn't stop the report: what could be built shows, then the failure.
        const QString database = program.state.databaseFile();
        QVERIFY(QFile::remove(database));
        program.prompts.expectMessage(PromptIcon::Warning, QStringLiteral("לא ניתן למצוא את הקובץ '%1'.").arg(database));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the closed preview is gone
        main.toolButton(8)->trigger();
        QVERIFY(program.prompts.verifyDone());
        preview = main.findChild<ui::ReportPreview*>();
        QVERIFY(preview && preview->isVisible());
        QCOMPARE(preview->report().dataSource->recordCount(), 90);
    }
};

VELMORA_TEST_MAIN(GuestReportTest)
#include "test_guestreport.moc"
