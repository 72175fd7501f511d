#include "Modal.h"
#include "RunningProgram.h"
#include "ShownText.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Settings.h"
#include "app/Twips.h"
#include "app/ui/MainWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTableView>

using namespace velmora;

namespace {

QAccessibleInterface* reader(QObject* control) { return QAccessible::queryAccessibleInterface(control); }

// What a screen reader announces as a field's label: the label it is a buddy of, else its name.
QString labelOf(QWidget* field)
{
    const auto labels = reader(field)->relations(QAccessible::Label);
    return labels.isEmpty() ? reader(field)->text(QAccessible::Name) : labels.front().first->text(QAccessible::Name);
}

QStringList unlabelledFields(QWidget* window)
{
    QStringList unlabelled;
    for (QWidget* field : window->findChildren<QWidget*>()) {
        const bool input = qobject_cast<QLineEdit*>(field) || qobject_cast<QPlainTextEdit*>(field)
                           || qobject_cast<QComboBox*>(field) || qobject_cast<QAbstractSpinBox*>(field);
        const bool part = qobject_cast<QComboBox*>(field->parentWidget())
                          || qobject_cast<QAbstractSpinBox*>(field->parentWidget());
        if (input && !part && labelOf(field).isEmpty())
            unlabelled << field->objectName();
    }
    return unlabelled;
}

// From a text's ink to each side of its box, as drawn.
std::pair<int, int> inkGaps(QWidget* widget, const QRect& box)
{
    const QImage image = widget->grab().toImage();
    const int paper = image.pixelColor(box.left() + 1, box.top() + 1).lightness();
    int left = box.right(), right = box.left();
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            if (std::abs(image.pixelColor(x, y).lightness() - paper) > 60)
                left = std::min(left, x), right = std::max(right, x);
    return {left - box.left(), box.right() - right};
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    test::ScriptedPrompts& m_prompts = m_program.prompts;

    ui::MainWindow& start() { m_program.start(m_wedding->folder()); return m_program.main(); }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 1));
        m_wedding->addInvitation(test::invitation("לוי", "רון", 1, 0, {}, QString(), QStringLiteral("2")));
    }

    void cleanup() { m_program.finish(); }

    void theGridTakesTheGrowthAndTheGroupBoxKeepsRight()
    {
        ui::MainWindow& main = start();
        const QSize built = main.size();
        auto* label = main.findChild<QLabel*>(QStringLiteral("LblSelUserGroups"));
        const QRect grid = main.grid()->geometry(), count = main.lblWeddingCount()->geometry();
        // The group box and its label keep to the right edge; the list's title takes the width.
        const auto right = [&] { return QList<int>{main.cmbUserGroups()->x(), label->x(), main.lblList()->width()}; };
        const QList<int> before = right();
        for (int change : {-1500, 3000}) { // narrower and lower, then wider and taller
            const int px = twipsToPixels(change);
            main.resize(built.width() + px, built.height() + px);
            QTRY_COMPARE(main.grid()->geometry(), grid.adjusted(0, 0, px, px));
            QCOMPARE(right(), QList<int>({before[0] + px, before[1] + px, before[2] + px}));
            QCOMPARE(main.lblWeddingCount()->geometry(), count);
        }
    }

    void thePlacementAndTheColumnsSurviveARestart()
    {
        ui::MainWindow& main = start();
        main.move(100, 80); // the outer corner
        main.resize(700, 500);
        main.grid()->setColumnWidth(0, 120);
        main.grid()->setColumnWidth(9, 30);
        m_prompts.expectMapSaveQuestion(PromptAnswer::Ok);
        main.close();
        UserStore store;
        auto stored = [&] {
            return QStringList{store.read(keys::Window), store.read(keys::MainLeft), store.read(keys::MainWidth),
                               store.read(keys::ColWidth, 0), store.read(keys::ColWidth, 9)};
        };
        const QStringList normal{"0", "1500", "10500", "1800", "450"}; // in twips
        QCOMPARE(stored(), normal);

        ui::MainWindow& again = start();
        QCOMPARE(QRect(again.frameGeometry().topLeft(), again.size()), QRect(100, 80, 700, 500));
        QCOMPARE(QList<int>({again.grid()->columnWidth(0), again.grid()->columnWidth(9)}), QList<int>({120, 30}));

        // Closed maximised, only the state changes; closed minimised, nothing does.
        again.showMaximized();
        again.close();
        QCOMPARE(stored(), QStringList("2") + normal.mid(1));
        ui::MainWindow& maximised = start();
        QVERIFY(maximised.windowState() & Qt::WindowMaximized);
        maximised.showMinimized();
        maximised.close();
        QCOMPARE(stored(), QStringList("2") + normal.mid(1));
    }

    // The map's two ticks and button 10 follow it, also when its own close box hides it.
    void buttonTenFollowsTheMapsTick()
    {
        ui::MainWindow& main = start();
        auto shown = [&](bool on) {
            return m_program.map().isVisible() == on && main.toolButton(10)->isChecked() == on
                   && main.action(QStringLiteral("mnuShowTablesMap"))->isChecked() == on
                   && main.action(QStringLiteral("popShowTablesMap"))->isChecked() == on;
        };
        main.toolButton(10)->trigger();
        QVERIFY(shown(true));
        m_prompts.expectMapSaveQuestion();
        m_program.map().close();
        QVERIFY(shown(false));
    }

    // Texts stand right in their boxes as drawn; a screen reader hears every panel and field.
    void whatAUserSeesAndAScreenReaderHears()
    {
        ui::MainWindow& main = start();
        main.show();
        auto* header = main.grid()->horizontalHeader();
        std::vector<std::pair<QWidget*, QRect>> boxes{
            {header, QRect(header->sectionViewportPosition(1) + 2, 2, header->sectionSize(1) - 4, header->height() - 4)},
            {main.grid()->viewport(), main.grid()->visualRect(main.grid()->model()->index(0, 1)).adjusted(1, 1, -2, -2)}};
        const char* titles[] = {"מתנות", "לא מגיעים", "ממתינים לאישור", "מגיעים", "מספר ההזמנות"};
        for (int number = 2; number <= 6; ++number) {
            boxes.emplace_back(main.panel(number), main.panel(number)->contentsRect());
            QCOMPARE(reader(main.panel(number))->text(QAccessible::Name), main.panel(number)->text());
            QCOMPARE(reader(main.panel(number))->text(QAccessible::Description), QString::fromUtf8(titles[number - 2]));
        }
        for (const auto& [widget, box] : boxes) {
            const auto [left, right] = inkGaps(widget, box);
            QVERIFY2(right < 8 && left > right, widget->metaObject()->className());
        }
        QCOMPARE(reader(main.panel(6))->text(QAccessible::Name), QStringLiteral("מס' ההזמנות  2"));
        QCOMPARE(reader(main.panel(7))->text(QAccessible::Name), QStringLiteral("הגדרות"));
        QCOMPARE(test::lineEnds(labelOf(main.cmbUserGroups()), Qt::RightToLeft), QStringLiteral(":ק"));

        main.AddNewInv();
        QCOMPARE(unlabelledFields(main.invitationDialog()), QStringList());
        QCOMPARE(labelOf(main.invitationDialog()->txtPresent), QStringLiteral("סכום המתנה"));
        main.invitationDialog()->hide();

        // A double click on a panel with text does nothing; on the picture, the options open.
        QStringList optionsUnlabelled{QStringLiteral("not opened")};
        test::NextModal options([&](QWidget* modal) {
            QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
            QCOMPARE(modal->parentWidget(), &main);
            optionsUnlabelled = unlabelledFields(modal);
        });
        QTest::mouseDClick(main.panel(2), Qt::LeftButton);
        QVERIFY(!options.seen());
        QTest::mouseDClick(main.panel(7), Qt::LeftButton);
        QCOMPARE(optionsUnlabelled, QStringList());
    }
};

VELMORA_TEST_MAIN(MainWindowTest)
#include "test_mainwindow.moc"
