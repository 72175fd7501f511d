#include "TestMain.h"
#include "TestWedding.h"

#include "app/Failure.h"
#include "printing/PrinterCanvas.h"
#include "printing/ReportLayout.h"

using namespace velmora;
using namespace velmora::printing;
using test::failureOf;

namespace {

Control box(const QString& name, const QString& field, QRect rect)
{
    Control c;
    std::tie(c.name, c.kind, c.dataField, c.rect) = std::tuple(name, ControlKind::TextBox, field, rect);
    return c;
}

std::shared_ptr<RecordSet> rows(int count)
{
    auto records = std::make_shared<RecordSet>();
    records->appendField(QStringLiteral("Name"), 20);
    records->open();
    for (int i = 0; i < count; ++i)
        records->addNew({QStringLiteral("name")}, {QStringLiteral("row %1").arg(i + 1)});
    return records;
}

// 1440 between margins, header 200, footer 240: room for three detail bands of 300 a page, and 300 over.
Report smallReport(int records)
{
    Report report;
    report.topMargin = report.bottomMargin = 1000;
    report.section(SectionKind::PageHeader).height = 200;
    report.section(SectionKind::PageFooter).height = 240;
    Control& page = report.section(SectionKind::PageFooter).add(Control{});
    std::tie(page.name, page.caption, page.rect) = std::tuple(QString("lblPage"), QString("%p/%P"), QRect(0, 0, 1000, 240));
    Section& detail = report.section(SectionKind::Detail);
    detail.height = 300;
    detail.add(box(QStringLiteral("txtName"), QStringLiteral("NAME"), QRect(0, 0, 1000, 240)));
    report.dataSource = rows(records);
    return report;
}

const QSize Paper(4000, 3440);

} // namespace

class ReportLayoutTest : public QObject {
    Q_OBJECT

private slots:
    // Refused: a value too long, an unknown field, a new field once open, work once closed.
    void recordsKeepTheirFieldsAndWidths()
    {
        RecordSet records;
        records.appendField(QStringLiteral("First"), 3);
        records.appendField(QStringLiteral("Second"), 5);
        records.open();
        QCOMPARE(failureOf([&] { records.appendField(QStringLiteral("Third"), 1); }), 3027); // not once open
        records.addNew({QStringLiteral("FIRST")}, {QStringLiteral("abc")});
        records.addNew();
        QCOMPARE(failureOf([&] { records.setValue(QStringLiteral("First"), QStringLiteral("abcd")); }), 3163);
        QCOMPARE(failureOf([&] { records.setValue(QStringLiteral("Third"), QStringLiteral("a")); }), 3265);
        records.setValue(QStringLiteral("second"), QStringLiteral("12345"));
        records.update();
        QCOMPARE(records.recordCount(), 2);
        QCOMPARE(QStringList({records.value(0, 0), records.value(0, 1), records.value(1, 0), records.value(1, 1)}),
                 QStringList({"abc", "", "", "12345"}));
        records.close();
        QCOMPARE(records.recordCount(), 0);
        QCOMPARE(failureOf([&] { records.addNew(); }), 3420);
    }

    // The third band meets the page's end: kept together it moves whole, else only its second control moves.
    void keptTogetherBandsNeverBreak()
    {
        for (const auto& [keepTogether, pagesOfTheThirdBand] : {std::pair(true, QList<int>{1, 1}), {false, {0, 1}}}) {
            Report report = smallReport(3);
            Section& detail = report.section(SectionKind::Detail);
            std::tie(detail.height, detail.keepTogether) = std::pair(380, keepTogether);
            detail.add(box(QStringLiteral("txtSecond"), QStringLiteral("Name"), QRect(0, 140, 1000, 240)));
            detail.add(box(QStringLiteral("txtHidden"), QStringLiteral("Name"), QRect(0, 0, 100, 100))).visible = false;
            const LaidOutReport laidOut = layOut(report, Paper);
            QList<int> pages;
            for (size_t p = 0; p < laidOut.pages.size(); ++p)
                for (const PlacedItem& item : laidOut.pages[p].items) {
                    QVERIFY(item.control != QLatin1String("txtHidden"));
                    if (item.record == 2)
                        pages << int(p);
                    if (item.record >= 0)
                        QVERIFY(item.rect.bottom() < Paper.height() - 1000 - 240);
                }
            QCOMPARE(pages, pagesOfTheThirdBand);
        }
    }

    // Drawing without a report: each text at the place set, the next line at the left margin.
    void theCanvasPrintsWhereItIsTold()
    {
        PrinterCanvas canvas;
        std::tie(canvas.CurrentX, canvas.CurrentY, canvas.FontSize, canvas.FontBold) = std::tuple(3700, 500, 14, true);
        canvas.Print(QStringLiteral("מפת השולחנות של כל האורחים"));
        const int next = canvas.CurrentY;
        std::tie(canvas.FontSize, canvas.FontBold) = std::pair(8.28, false);
        canvas.Print(QStringLiteral("Velmora"));
        canvas.PaintPicture(QImage(32, 32, QImage::Format_ARGB32), 900, 1700);
        const LaidOutReport done = canvas.EndDoc();
        QCOMPARE(done.pages.size(), size_t(1));
        const auto& items = done.pages[0].items;
        QCOMPARE(items.size(), size_t(3));
        QCOMPARE(items[0].rect.topLeft(), QPoint(3700, 500));
        QVERIFY(items[0].font.bold && items[0].font.points == 14);
        QVERIFY(next > 500 + 14 * 20 && next < 500 + 14 * 20 * 2); // one line of 14 points further
        QCOMPARE(items[1].rect.topLeft(), QPoint(0, next));
        QCOMPARE(items[2].rect, QRect(900, 1700, 480, 480)); // 32 pixels of the screen
        QCOMPARE(canvas.EndDoc().pages[0].items.size(), size_t(0));
    }

    // Names are found whatever the case; a box bound to a missing field fails the layout.
    void namesAndFields()
    {
        Report report = smallReport(1);
        report.section(SectionKind::Detail).setName(QStringLiteral("rptDetails"));
        report.section(QStringLiteral("RPTdetails")).control(QStringLiteral("TXTNAME")).dataField = QStringLiteral("Nome");
        QVERIFY_THROWS_EXCEPTION(Failure, report.section(QStringLiteral("rptDetail")));
        QVERIFY_THROWS_EXCEPTION(Failure, report.section(QStringLiteral("rptDetails")).control(QStringLiteral("txtNames")));
        QVERIFY_THROWS_EXCEPTION(Failure, layOut(report, Paper));
    }
};

VELMORA_TEST_MAIN(ReportLayoutTest)
#include "test_reportlayout.moc"
