#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Twips.h"
#include "seating/TablePlan.h"
#include "seating/ui/TableMapWindow.h"
#include "seating/ui/TableWindow.h"

#include <QScreen>

#include <map>

using namespace velmora;

namespace {

const QString Overflow = QStringLiteral("ארעה שגיאה ביצירת השולחן");
const QRect StartPlace(2520, 360, 1575, 495);

} // namespace

class TablePlanTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::ScriptedPrompts m_prompts;
    test::RunningProgram m_program;

    seating::TablePlan load(int table, int chairs)
    {
        m_wedding->state.CurTable = quint8(table);
        m_wedding->state.CurTableChairs = quint8(chairs);
        return seating::LoadTablePlan(m_wedding->state, m_prompts);
    }

private slots:
    void init() { m_wedding = std::make_unique<test::TestWedding>(); m_wedding->createWedding(20, 15); }
    void cleanup() { m_program.finish(); m_prompts.verifyDone(); }

    // 1 to 15 chairs: none on another or off the window; where the layout turns, exact places.
    void layouts()
    {
        const QRect window(0, 0, 6615, 4560);
        const std::map<std::pair<int, int>, QRect> places = {
            {{1, 0}, {2400, 360, 1575, 495}},  {{3, 2}, {4680, 1800, 1575, 495}}, {{8, 4}, {2400, 3240, 1575, 495}},
            {{9, 0}, {2400, 360, 1575, 495}},  {{9, 4}, {3480, 3360, 1575, 495}}, {{10, 9}, {1440, 240, 1575, 495}},
            {{9, 7}, {240, 1800, 1575, 495}},  {{10, 0}, {3480, 240, 1575, 495}}, {{11, 5}, {2520, 3120, 1575, 495}},
            {{12, 11}, {720, 600, 1575, 495}}, {{14, 13}, {840, 360, 1575, 495}},
            {{15, 0}, {3360, 240, 1455, 495}}, {{15, 14}, {1800, 240, 1335, 495}}}; // 15: narrowed
        for (int seats = 1; seats <= 15; ++seats) {
            seating::TablePlan plan;
            for (int person = 0; person < seats; ++person)
                plan.SeatInvitation(m_prompts, QString::number(person), 1, 1);
            plan.ArrangeChairs(m_prompts, seats);
            QCOMPARE(int(plan.chairs().size()), seats);
            for (size_t i = 0; i < plan.chairs().size(); ++i) {
                const QRect a = plan.chairs()[i].place;
                const QString where = QStringLiteral("%1 seats, chair %2").arg(seats).arg(i);
                QVERIFY2(window.contains(a), qPrintable(where));
                for (size_t j = i + 1; j < plan.chairs().size(); ++j)
                    QVERIFY2(!a.intersects(plan.chairs()[j].place), qPrintable(where));
                if (places.count({seats, int(i)}))
                    QCOMPARE(a, places.at({seats, int(i)}));
            }
        }
    }

    void chairsAgainstTheMapsCount_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("placed"); // chairs moved to the layout; the rest stay at the start
        QTest::newRow("map counts the same") << 7 << QString() << 7;
        QTest::newRow("map counts more: what exists is placed") << 9 << Overflow << 7;
        QTest::newRow("map counts 15: chair 14 missing") << 15 << Overflow << 7;
        QTest::newRow("map counts fewer: the rest pile at the start") << 5 << QString() << 5;
        QTest::newRow("over 15: nothing moves") << 16 << QStringLiteral("מספר המושבים לשולחן גבוה מהמותר") << 0;
    }

    // One chair a person in stored order, coloured by the answer, in the map count's layout as far as both go.
    void chairsAgainstTheMapsCount()
    {
        QFETCH(int, count);
        QFETCH(QString, message);
        QFETCH(int, placed);
        // Table 5: four coming, someone at another table, two with no answer, one not coming.
        m_wedding->addInvitation(test::invitation("אברהם", "דן", 4, 1, 5));
        m_wedding->addInvitation(test::invitation("שכן", "בשולחן", 1, 3, 6));
        m_wedding->addInvitation(test::invitation("ברק", "טל", 2, 0, 5));
        m_wedding->addInvitation(test::invitation("גולן", "עדי", 1, 2, 5));
        if (!message.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, message);
        const seating::TablePlan plan = load(5, count);
        QCOMPARE(int(plan.chairs().size()), 7);
        const std::vector<QPoint> layout = seating::chairLayout(count);
        const QString first = QStringLiteral("אברהם\r\nדן"), second = QStringLiteral("ברק\r\nטל");
        const QStringList texts{first, first, first, first, second, second, QStringLiteral("גולן\r\nעדי")};
        for (int i = 0; i < 7; ++i) {
            const seating::Chair& chair = plan.chairs()[size_t(i)];
            QVERIFY(chair.text == texts[i] && chair.visible);
            QCOMPARE(chair.place.topLeft(), i < placed ? layout[size_t(i)] : StartPlace.topLeft());
        }
        // No answer looks like not sure; not coming keeps chair 0's colour as it was made.
        QCOMPARE(QList<QColor>({plan.chairs()[0].colour, plan.chairs()[4].colour, plan.chairs()[6].colour}),
                 QList<QColor>({seating::ConfirmedChair, seating::UnsureChair, seating::ConfirmedChair}));
        QCOMPARE(plan.chairs()[0].place.width(), count == 15 ? 1455 : 1575);
    }

    void anEmptyGuestListLeavesOneFreeChair()
    {
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("רשימת המוזמנים ריקה."));
        const seating::TablePlan plan = load(3, 4);
        QCOMPARE(int(plan.chairs().size()), 1);
        QVERIFY(plan.chairs()[0].text == seating::FreeChair && plan.chairs()[0].place == StartPlace);
    }

    // A full table: twelve coming, three unsure.
    void theWindowShowsTheTableOpenedFromTheMap()
    {
        const int people = 15;
        m_wedding->addInvitation(test::invitation("כהן", "רב", 12, 1, 9));
        m_wedding->addInvitation(test::invitation("לוי", "שלושה", 3, 0, 9));
        QVERIFY(m_program.start(m_wedding->folder()));
        ui::TableMapWindow& map = m_program.map();
        const QRect screen = map.screen()->availableGeometry();
        map.move(screen.bottomRight() - QPoint(40, 40)); // the plan opens beside the map, whole on the screen
        map.selectTable(9);
        map.ViewTable();
        ui::TableWindow* window = map.tableWindow();
        QVERIFY(window && QTest::qWaitForWindowExposed(window));
        QVERIFY(screen.contains(window->frameGeometry()) && window->frameGeometry().intersects(map.frameGeometry()));
        QCOMPARE(window->findChild<QLabel*>(QStringLiteral("lblNumOfPpl"))->text(),
                 QStringLiteral("שולחן של 15 מוזמנים"));

        // The table is a circle centred in its box, not an ellipse filling it.
        const QImage drawn = window->grab().toImage();
        QCOMPARE(drawn.pixelColor(twipsToPixels(2160 + 2175 / 2), twipsToPixels(1200 + 60)), QColor(0xC0, 0xC0, 0xFF));
        QCOMPARE(drawn.pixelColor(twipsToPixels(2160 + 90), twipsToPixels(1200 + 1695 / 2)),
                 window->palette().color(QPalette::Window));

        const std::vector<QPoint> layout = seating::chairLayout(people);
        const auto& boxes = window->chairBoxes();
        QCOMPARE(int(boxes.size()), people);
        for (int i = 0; i < people; ++i) {
            ui::ChairBox* box = boxes[size_t(i)];
            QVERIFY(box->isVisible());
            QCOMPARE(box->geometry().topLeft(), QPoint(twipsToPixels(layout[size_t(i)].x()), twipsToPixels(layout[size_t(i)].y())));
            const QColor shown = box->grab().toImage().pixelColor(4, box->height() / 2);
            QCOMPARE(shown, i < 12 ? seating::ConfirmedChair : seating::UnsureChair);
        }

        // Typing in a chair beeps and changes nothing.
        ui::ChairBox* chair = boxes[1];
        QCOMPARE(chair->text(), QStringLiteral("כהן\nרב"));
        chair->setFocus(Qt::MouseFocusReason);
        m_program.prompts.expectBeep().expectBeep().expectBeep();
        for (Qt::Key key : {Qt::Key_A, Qt::Key_Backspace, Qt::Key_Escape})
            QTest::keyClick(chair, key);
        QCOMPARE(chair->text(), QStringLiteral("כהן\nרב"));
        window->close();
    }
};

VELMORA_TEST_MAIN(TablePlanTest)
#include "test_tableplan.moc"
