#include "PrintedPdf.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "printing/ui/PrinterTarget.h"
#include "seating/ui/TableMapWindow.h"
#include "seating/ui/TableWindow.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>

using namespace velmora;

namespace {

// The first page at 96 dpi (a pixel to 15 twips) and its words' top left corners in twips, from the printer's origin.
QImage pdfPage(const QString& pdf, QPoint origin)
{
    QProcess::execute(QStringLiteral("pdftoppm"), {"-r", "96", "-png", "-singlefile", pdf, pdf});
    return QImage(pdf + QStringLiteral(".png")).copy(QRect(origin, QSize(1200, 1200))).convertToFormat(QImage::Format_RGB32);
}

std::vector<std::pair<QPointF, QString>> pdfWords(const QString& pdf, QPointF origin)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {"-bbox", pdf, "-"});
    process.waitForFinished();
    static const QRegularExpression word(QStringLiteral("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\"[^>]*>([^<]*)<"));
    std::vector<std::pair<QPointF, QString>> words;
    for (const auto& m : word.globalMatch(QString::fromUtf8(process.readAllStandardOutput())))
        words.emplace_back((QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()) - origin) * 20, m.captured(3));
    return words;
}

bool near(QColor shown, QColor wanted)
{
    return std::abs(shown.red() - wanted.red()) + std::abs(shown.green() - wanted.green()) + std::abs(shown.blue() - wanted.blue()) < 90;
}

} // namespace

class MapPrintTest : public QObject {
    Q_OBJECT

    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    PrinterRequest m_pdf;

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(12, 15);
        for (auto [family, people, table] : {std::tuple{"אלון", 2, 1}, {"בר", 3, 5}, {"גל", 4, 5}, {"דהן", 1, 12}})
            m_wedding->addInvitation(test::invitation(family, "x", people, table == 1 ? 0 : 1, table));
        QVERIFY(m_program.start(m_wedding->folder()));
        m_pdf.outputFile = m_wedding->folder() + QStringLiteral("/out.pdf");
    }
    void cleanup() { m_program.stop(); }
    // Each table where the map has it, unsaved drags too: caption at +600,+2200, icon 300 right, 500 above; garden under.
    void theMapOnPaper()
    {
        ui::TableMapWindow& map = m_program.map();
        QImage garden(400, 300, QImage::Format_RGB32);
        garden.fill(Qt::darkGreen);
        QPainter(&garden).fillRect(150, 80, 10, 10, Qt::red);
        garden.setDotsPerMeterX(2835); // the file's 72 to the inch don't count: a dot is a pixel
        QVERIFY(garden.save(m_wedding->folder() + QStringLiteral("/garden.png")));
        m_program.prompts.expectOpenFile(m_wedding->folder() + QStringLiteral("/garden.png"));
        map.LoadGardenMap();
        m_program.chooseGroup(1);
        map.SaveTablePositions();
        map.setTablePlace(5, QPointF(4200, 2100));
        map.setTablePlace(12, QPointF(150, 3300));

        m_program.prompts.expectPrinter(m_pdf).expectMessage(PromptIcon::None, QStringLiteral("הודפסה מפת השולחנות."));
        map.toolButton(10)->trigger();
        QVERIFY(m_program.prompts.verifyDone());

        const QString text = test::pdfText(m_pdf.outputFile);
        QVERIFY(text.contains(QStringLiteral("מפת השולחנות של ") + m_program.main().cmbUserGroups()->currentText()));
        QVERIFY(text.contains(QStringLiteral("Velmora")) && text.contains(QStringLiteral("www.velmora.co.il")));
        const QRectF printable = ui::printerFor(m_pdf)->pageLayout().paintRect(QPageLayout::Point);
        const auto words = pdfWords(m_pdf.outputFile, printable.topLeft());
        const QImage page = pdfPage(m_pdf.outputFile, (printable.topLeft() * 96 / 72).toPoint());
        const auto pixel = [&](double x, double y) { return page.pixelColor(int(x / 15), int(y / 15)); };
        for (int table = 1; table <= map.itemCount(); ++table) {
            const QPointF caption = map.tablePlace(table) + QPointF(600, 2200);
            // Right to left, the caption's leftmost word is its count.
            const auto found = std::find_if(words.begin(), words.end(), [&](const auto& word) {
                return std::abs(word.first.x() - caption.x()) < 45 && std::abs(word.first.y() - caption.y()) < 120;
            });
            QVERIFY2(found != words.end(), qPrintable(QString::number(table)));
            QCOMPARE(found->second, QString::number(map.SeatedCount(table)));
            // The disc's top, above the number.
            QVERIFY2(near(pixel(found->first.x() + 300 + 240, caption.y() - 500 + 75), QColor(0x80, 0, 0)),
                     qPrintable(QString::number(table)));
        }
        QVERIFY(near(pixel(600 + 155 * 15, 1700 + 85 * 15), Qt::red));
        QVERIFY(near(pixel(600 + 10 * 15, 1700 + 290 * 15), Qt::darkGreen));
    }

    void thePlanOnPaper_data()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("double click") << 0;
        QTest::newRow("Tab to the icon, Space") << 1;
        QTest::newRow("one click: no dialog") << 2;
    }
    void thePlanOnPaper()
    {
        QFETCH(int, how);
        const bool printed = how != 2;
        m_program.map().selectTable(5);
        m_program.map().ViewTable();
        ui::TableWindow* window = m_program.map().tableWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QWidget* icon = window->printButton();
        const QLabel* number = window->findChild<QLabel*>(QStringLiteral("lblTableNum")); // on one line
        QVERIFY(number->fontMetrics().horizontalAdvance(number->text()) <= number->contentsRect().width());

        if (printed)
            m_program.prompts.expectPrinter(m_pdf).expectMessage(PromptIcon::None, QStringLiteral("סידור ההושבה לשולחן הודפס"));
        if (how == 1) {
            QTest::keyClick(window, Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), icon);
            QTest::keyClick(icon, Qt::Key_Space);
        } else
            how ? QTest::mouseClick(icon, Qt::LeftButton) : QTest::mouseDClick(icon, Qt::LeftButton);
        QVERIFY(m_program.prompts.verifyDone() && icon->isVisible());
        QCOMPARE(QFile::exists(m_pdf.outputFile), printed);
        if (!printed)
            return;
        // On paper the icon's place is blank, and the rest is as on the screen.
        const QImage page = pdfPage(m_pdf.outputFile, ui::printerFor(m_pdf)->pageLayout().paintRectPixels(96).topLeft());
        const QImage screen = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRect place = icon->geometry().adjusted(4, 4, -4, -4);
        QImage blank(place.size(), QImage::Format_RGB32);
        blank.fill(window->palette().color(QPalette::Window));
        QVERIFY(screen.copy(place) != blank);
        QCOMPARE(page.copy(place), blank);
        const QPoint chair = window->chairBoxes()[0]->geometry().topLeft() + QPoint(5, 5);
        for (const QPoint at : {chair, ui::TableWindow::discRect().center() + QPoint(0, 30)})
            QVERIFY(near(page.pixelColor(at), screen.pixelColor(at)));
    }
};

VELMORA_TEST_MAIN(MapPrintTest)
#include "test_mapprint.moc"
