#include "Modal.h"
#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "guests/GuestList.h"
#include "guests/Options.h"
#include "guests/ui/OptionsWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

using namespace velmora;
using test::pressKey;

class OptionsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::ScriptedPrompts m_prompts;
    int m_applied = 0;
    // Table 3 holds 9 people, table 7 holds 4.
    guests::SeatedCountFn m_seated = [](int table) { return quint8(table == 3 ? 9 : table == 7 ? 4 : 0); };

    std::unique_ptr<ui::OptionsWindow> open()
    {
        auto window = std::make_unique<ui::OptionsWindow>(m_wedding->state, m_prompts, m_seated, [this] { ++m_applied; });
        window->show();
        return window;
    }

    // Shown and active on the groups' tab, with the user's groups A, B and C.
    std::unique_ptr<ui::OptionsWindow> openGroups()
    {
        WeddingState& s = m_wedding->state;
        s.NumOfGroups = 6;
        s.UserGroups = {s.CoupleName, s.HisFamily, s.HerFamily, "A", "B", "C"};
        SaveOptions(s);
        auto window = open();
        test::activate(window.get());
        window->SSTab1->setCurrentIndex(1);
        QCoreApplication::processEvents(); // lays the list out
        return window;
    }

    QString ini(const char* section, const char* key) { return test::iniValue(m_wedding->state.iniFile(), section, key); }

private slots:
    void init()
    {
        test::clearUserStore();
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->state.MaxTables = 20;
        m_wedding->state.MaxChairs = 12;
        m_wedding->state.WeddingDate = QDate(2027, 5, 20);
        SaveOptions(m_wedding->state);
        m_applied = 0;
    }

    void cleanup() { m_prompts.verifyDone(); }

    void theLimitsAreCheckedInOrder_data()
    {
        QTest::addColumn<QString>("tables");
        QTest::addColumn<QString>("chairs");
        QTest::addColumn<QString>("message");
        QTest::newRow("largest") << "100" << "15" << "";
        QTest::newRow("both too many: tables first") << "101" << "16" << "לא ניתן להגדיר יותר מ-100 שולחנות";
        QTest::newRow("too many chairs") << "100" << "16" << "לא ניתן להגדיר יותר מ-15 כסאות לשולחן";
        QTest::newRow("zero chairs") << "20" << "0" << "חובה להזין לפחות שולחן אחד וכיסא אחד";
        QTest::newRow("letters") << "עשרים" << "12" << "הערך אינו מספר חוקי";
        QTest::newRow("empty") << "20" << "" << "הערך אינו מספר חוקי";
        QTest::newRow("the fullest table exactly") << "20" << "9" << "";
        QTest::newRow("one below the fullest") << "20" << "8" << "לא ניתן לבטל כסאות לשולחן שמושבים בהם אורחים";
        QTest::newRow("past a seated table") << "6" << "12" << "לא ניתן לבטל שולחנות שמושבים בהם מוזמנים";
        QTest::newRow("past empty tables") << "7" << "12" << "";
    }

    void theLimitsAreCheckedInOrder()
    {
        QFETCH(QString, tables);
        QFETCH(QString, chairs);
        guests::OptionsForm form = guests::OptionsFromState(m_wedding->state);
        form.maxTables = tables;
        form.maxChairs = chairs;
        QTEST(guests::CheckOptions(m_wedding->state, form, m_seated).value_or(QString()), "message");
        form.couple = QStringLiteral("   "); // an empty name comes before all of them
        QCOMPARE(guests::CheckOptions(m_wedding->state, form, m_seated).value_or(QString()), "כל השדות חייבים להיות מלאים");
    }

    void applyStoresRoundedLimitsAndTheGroupsAnew()
    {
        auto window = open();
        QVERIFY(!window->cmdApply->isEnabled());
        window->txtNewGroup->setText(QStringLiteral("חברים"));
        QVERIFY(!window->cmdApply->isEnabled()); // typing a group name doesn't count
        window->cmdAddUpdateGroup->click();
        QVERIFY(window->cmdApply->isEnabled());
        window->txtMaxChairs->setText(QStringLiteral("2.5"));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן לבטל כסאות לשולחן שמושבים בהם אורחים"));
        window->cmdApply->click();
        QVERIFY(window->cmdApply->isEnabled());
        QCOMPARE(m_wedding->state.MaxChairs, quint8(12)); // nothing changed

        // Halves go to the even neighbour.
        window->txtMaxChairs->setText(QStringLiteral("10.5"));
        window->txtMaxTable->setText(QStringLiteral("7.5"));
        window->txtHisFamily->setText(QStringLiteral(" משפחת כהן-לוי "));
        window->txtHerFamily->setText(QStringLiteral("משפחת אדלר"));
        window->DTPickWedding->setDate(QDate(2027, 6, 1));
        window->cmdApply->click();
        QVERIFY(!window->cmdApply->isEnabled());
        const WeddingState& s = m_wedding->state;
        QCOMPARE(QList<int>({s.MaxChairs, s.MaxTables}), QList<int>({10, 8}));
        QCOMPARE(s.HisFamily, QStringLiteral("משפחת כהן-לוי"));
        // The first Apply makes the three main groups real groups, with the numbers they had.
        QCOMPARE(QStringList({ini("Options", "Wedding Date"), ini("Options", "NumOfGroups"), ini("UserGroups", "Group-3")}),
                 QStringList({"01/06/2027", "4", "חברים"}));
        QCOMPARE(guests::GroupNumber(s, s.HerFamily), 3); // renamed without visiting the groups' tab
    }

    void theGroupListIsEditedOnlyBelowTheMainGroups()
    {
        auto window = openGroups();
        QListWidget* list = window->lstGroups;
        // Through the window, which makes the double click of two presses as the system does.
        auto doubleClick = [list](int row) {
            const QPoint at = list->viewport()->mapTo(list->window(), list->visualItemRect(list->item(row)).center());
            QTest::mouseDClick(list->window()->windowHandle(), Qt::LeftButton, {}, at);
        };
        auto add = [&window](const QString& name) { window->txtNewGroup->setText(name); window->cmdAddUpdateGroup->click(); };
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להגדיר קבוצה ריקה"));
        add(QStringLiteral("  "));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("קבוצה דומה כבר קיימת במאגר"));
        add(m_wedding->state.HisFamily);
        add(QStringLiteral("a")); // case counts

        // A main group can't be renamed; the refusal leaves Apply on.
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להסיר\\לעדכן שלושת הקבוצות הראשיות"));
        doubleClick(1);
        QVERIFY(window->cmdApply->isEnabled());

        // Rename B; then a cancelled update goes back to adding.
        doubleClick(4);
        QCOMPARE(window->groupMode(), 2);
        QCOMPARE(window->txtNewGroup->text(), QStringLiteral("B"));
        QVERIFY(!window->cmdCancelUpdate->isHidden() && window->cmdDelGroup->isHidden());
        add(QStringLiteral("B2"));
        QCOMPARE(window->groupMode(), 1);
        doubleClick(5);
        window->cmdCancelUpdate->click();
        add(QStringLiteral("D"));
        QStringList names;
        for (int i = 3; i < list->count(); ++i)
            names << list->item(i)->text();
        QCOMPARE(names, QStringList({"A", "B2", "C", "a", "D"}));
    }

    void onlyASelectedUserGroupCanBeRemoved()
    {
        auto window = openGroups();
        QVERIFY(!window->cmdDelGroup->isEnabled());
        window->lstGroups->setFocus();
        // Keys as the user presses them, and removals (no key): the list moves on to the next
        // entry, and past the last user group onto a main group.
        const struct { int key; Qt::KeyboardModifiers modifiers; bool removable; } steps[] = {
            {Qt::Key_End, {}, true}, {Qt::Key_Up, {}, true}, {Qt::Key_Up, {}, true}, {Qt::Key_Up, {}, false},
            {Qt::Key_Down, {}, true}, {Qt::Key_Space, Qt::ControlModifier, false}, {Qt::Key_Space, {}, true},
            {0, {}, true}, {0, {}, true}, {0, {}, false}};
        for (const auto& step : steps) {
            if (step.key)
                pressKey(step.key, step.modifiers);
            else
                window->cmdDelGroup->click();
            QCOMPARE(window->cmdDelGroup->isEnabled(), step.removable);
        }
        QCOMPARE(window->lstGroups->count(), 3);
        window->cmdApply->click();
        QCOMPARE(m_applied, 1);
        QCOMPARE(ini("Options", "NumOfGroups") + ini("UserGroups", "Group-3"), "3<none>");
    }

    void okAppliesOnlyWhatPassesAndClosesAnyway()
    {
        auto window = open();
        window->txtMaxTable->setText("200");
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להגדיר יותר מ-100 שולחנות"));
        window->cmdOK->click();
        QVERIFY(!window->isVisible() && m_applied == 0);
        QCOMPARE(ini("Options", "Max Tables"), QStringLiteral("20"));

        window = open();
        QFile::remove(m_wedding->state.iniFile());
        window->cmdOK->click(); // nothing changed: nothing written
        QVERIFY(!QFile::exists(m_wedding->state.iniFile()));

        window = open();
        window->txtCouple->setText(QStringLiteral("אחר"));
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(!window->isVisible());
        QCOMPARE(m_wedding->state.CoupleName, QStringLiteral("נועה ואיתי"));
    }

    void theProgramFollowsAnApply()
    {
        m_wedding->createDatabase();
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 9, 1, 3));
        test::RunningProgram program;
        QVERIFY(program.start(m_wedding->folder()));
        ui::MainWindow& main = program.main();
        test::NextModal options([&](QWidget* modal) {
            auto* window = static_cast<ui::OptionsWindow*>(modal);
            window->txtMaxTable->setText(QStringLiteral("2"));
            window->cmdApply->click(); // table 3 has people
            window->txtMaxTable->setText(QStringLiteral("5"));
            window->txtCouple->setText(QStringLiteral("דנה ויואב"));
            window->cmdOK->click();
        });
        program.prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן לבטל שולחנות שמושבים בהם מוזמנים"));
        main.action(QStringLiteral("mnuSetting"))->trigger();
        QVERIFY(options.seen());
        QCOMPARE(program.map().itemCount(), 5);
        QCOMPARE(program.map().itemText(3) + main.cmbUserGroups()->itemText(1), "שולחן של 9" "דנה ויואב");
    }
};

VELMORA_TEST_MAIN(OptionsTest)
#include "test_options.moc"
