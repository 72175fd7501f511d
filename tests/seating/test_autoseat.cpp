#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "seating/AutoSeat.h"
#include "seating/SeatingRun.h"
#include "seating/ui/AutoSeatWindow.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

#include <random>
#include <set>

using namespace velmora;
using seating::SeatGuest;

namespace {

struct Wedding {
    int maxTables = 0, maxChairs = 0;
    std::vector<SeatGuest> guests;
    seating::SeatChoice choice;
};

// Any shape: big and small groups with families, some invitations over a table, some already seated.
Wedding randomWedding(unsigned seed)
{
    std::mt19937 rng(seed);
    auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
    Wedding w;
    w.maxTables = pick(1, 3) == 1 ? pick(1, 100) : pick(1, 12);
    w.maxChairs = pick(1, 15);
    std::vector<int> load(size_t(w.maxTables) + 1, 0);
    const int groups = pick(1, 12);
    const int people = w.maxTables * w.maxChairs * pick(0, 12) / 10; // up to a fifth more than the chairs
    for (int i = 0, sum = 0; sum < people; ++i, sum += w.guests.back().people) {
        SeatGuest g{i, pick(1, 20) == 1 ? pick(1, 20) : pick(1, std::min(5, w.maxChairs)),
                    QString::number(pick(1, pick(1, groups))), QStringLiteral("f%1").arg(pick(1, 6)), pick(0, 3)};
        const int table = pick(1, w.maxTables);
        if (g.confirm != 2 && pick(1, 4) == 1 && load[size_t(table)] + g.people <= w.maxChairs) {
            g.table = table;
            load[size_t(table)] += g.people;
        }
        w.guests.push_back(g);
    }
    w.choice.who = pick(0, 1) ? seating::SeatWho::AllComing : seating::SeatWho::Unseated;
    w.choice.includeUnsure = pick(0, 1);
    w.choice.keepSeated = pick(0, 1);
    if (pick(0, 1))
        for (int t = pick(1, w.maxTables), end = pick(t, w.maxTables); t <= end; ++t)
            w.choice.tables.push_back(t);
    return w;
}

bool moves(const seating::SeatPlan& plan, int id)
{
    return std::any_of(plan.moves.begin(), plan.moves.end(), [&](const auto& m) { return m.id == id; });
}

} // namespace

class AutoSeatTest : public QObject {
    Q_OBJECT

private slots:
    // Every hard rule; everyone seated when they surely fit, else the missing chairs; true splits; stable.
    void randomWeddings()
    {
        int fitted = 0, refused = 0;
        for (unsigned seed = 1; seed <= 1500; ++seed) {
            const Wedding w = randomWedding(seed);
            const QByteArray at = QByteArray::number(seed);
            const auto& c = w.choice;
            const seating::SeatPlan plan = seating::PlanSeating(w.guests, w.maxTables, w.maxChairs, c);
            auto allowed = [&](int t) {
                return t >= 1 && t <= w.maxTables
                    && (c.tables.empty() || std::count(c.tables.begin(), c.tables.end(), t));
            };
            std::vector<int> before(size_t(w.maxTables) + 1, 0), after = before, staying = before;
            std::vector<int> finalTable;
            int chosenPeople = 0, largest = 0;
            for (const SeatGuest& g : w.guests) {
                const bool seated = g.table >= 1 && g.table <= w.maxTables;
                const bool chosen = g.confirm != 2 && (g.confirm == 1 || c.includeUnsure)
                    && (!seated || (c.who == seating::SeatWho::AllComing && !c.keepSeated));
                if (chosen) {
                    chosenPeople += g.people;
                    largest = std::max(largest, g.people);
                } else if (seated) {
                    staying[size_t(g.table)] += g.people;
                }
                if (seated)
                    before[size_t(g.table)] += g.people;
                QVERIFY2(chosen || !moves(plan, g.id), at);
                finalTable.push_back(g.table);
            }
            for (const auto& m : plan.moves)
                finalTable[size_t(m.id)] = m.table;
            int freeChairs = 0, openTables = 0;
            for (int t = 1; t <= w.maxTables; ++t)
                if (allowed(t) && !(c.keepSeated && staying[size_t(t)] > 0)) {
                    freeChairs += std::max(0, w.maxChairs - staying[size_t(t)]);
                    ++openTables;
                }

            if (!plan.fits()) {
                ++refused;
                QVERIFY(plan.moves.empty());
                if (chosenPeople > freeChairs)
                    QCOMPARE(plan.missingChairs, chosenPeople - freeChairs);
                // Invitation by invitation, each table wastes less than the largest invitation.
                QVERIFY2(chosenPeople + openTables * (largest - 1) > freeChairs, at);
                continue;
            }
            ++fitted;
            std::map<QString, std::set<int>> groupTables;
            for (size_t i = 0; i < w.guests.size(); ++i) {
                const SeatGuest& g = w.guests[i];
                const int t = finalTable[i];
                const bool keptFrom = c.keepSeated && g.table >= 1 && g.table <= w.maxTables && before[size_t(g.table)];
                if (moves(plan, g.id))
                    QVERIFY2(allowed(t) && !(c.keepSeated && before[size_t(t)] > 0) && !keptFrom, at);
                QVERIFY2(t >= 1 || g.confirm == 2 || (g.confirm != 1 && !c.includeUnsure), at); // everyone chosen sits
                if (t >= 1 && t <= w.maxTables) {
                    after[size_t(t)] += g.people;
                    groupTables[g.group].insert(t);
                }
            }
            for (int t = 1; t <= w.maxTables; ++t)
                QVERIFY2(after[size_t(t)] <= w.maxChairs, at);
            QCOMPARE(plan.people, after);
            for (const auto& split : plan.splitGroups)
                QCOMPARE(int(groupTables[split.group].size()), split.tables);
            QVERIFY(plan.lowerBound <= int(plan.splitGroups.size()));

            const seating::SeatPlan again = seating::PlanSeating(w.guests, w.maxTables, w.maxChairs, c);
            QVERIFY2(std::equal(again.moves.begin(), again.moves.end(), plan.moves.begin(), plan.moves.end(),
                                [](const auto& a, const auto& b) { return a.id == b.id && a.table == b.table; }), at);
        }
        QVERIFY(fitted > 300 && refused > 100);
    }

    void knownWeddings()
    {
        auto guest = [](int id, int people, const char* group, const char* family) {
            return SeatGuest{id, people, QString::fromLatin1(group), QString::fromLatin1(family), 1, 0};
        };
        // Groups of 6, 6 and 4 at tables of 8 need three tables, nobody split; the 10 splits, families whole.
        std::vector<SeatGuest> guests{guest(0, 2, "1", "a"), guest(1, 4, "1", "a"), guest(2, 3, "2", "b"),
                                      guest(3, 3, "2", "c"), guest(4, 4, "3", "d"), guest(5, 4, "4", "e"),
                                      guest(6, 2, "4", "e"), guest(7, 4, "4", "g")};
        seating::SeatPlan plan = seating::PlanSeating(guests, 5, 8, {});
        QVERIFY(plan.fits() && plan.lowerBound == 1 && plan.splitGroups.size() == 1);
        QCOMPARE(plan.splitGroups[0].group, QStringLiteral("4"));
        std::map<int, int> table;
        for (const auto& m : plan.moves)
            table[m.id] = m.table;
        QVERIFY(table[0] == table[1] && table[2] == table[3] && table[5] == table[6]);
        // A lone pair left beside a group's table joins it instead of sitting by themselves.
        guests = {guest(0, 5, "1", "a"), guest(1, 5, "1", "b"), guest(2, 2, "1", "c")};
        plan = seating::PlanSeating(guests, 3, 10, {});
        QCOMPARE(plan.splitGroups.size(), size_t(1));
        QVERIFY(std::none_of(plan.people.begin(), plan.people.end(), [](int n) { return n == 1 || n == 2; }));
        QCOMPARE(seating::MissingChairsMessage(1), QStringLiteral("לא ניתן להושיב את כל המוזמנים שנבחרו: חסר כיסא אחד."));
        QCOMPARE(seating::MissingChairsMessage(7),
                 QStringLiteral("לא ניתן להושיב את כל המוזמנים שנבחרו: חסרים 7 כיסאות."));
    }

    void parseTables()
    {
        std::vector<int> parsed;
        const std::pair<const char*, QList<int>> accepted[] = {
            {"", {1, 2, 3, 4, 5, 6}}, {" 1-2 , 5,4 ", {1, 2, 4, 5}}, {"3,3-3", {3}}, {"6", {6}}};
        for (const auto& [text, tables] : accepted) {
            QVERIFY2(seating::ParseTables(QString::fromUtf8(text), 6, parsed), text);
            QCOMPARE(QList<int>(parsed.begin(), parsed.end()), tables);
        }
        for (const char* refused : {"5-7", "0", "4-2", "1, x", "1,"}) // above, zero, backwards, letters, dangling
            QVERIFY2(!seating::ParseTables(QString::fromUtf8(refused), 6, parsed), refused);
    }

    // Through the window and a real file: applied, the list refreshed, and every table given back by the undo.
    void applyAndUndo()
    {
        test::TestWedding wedding;
        wedding.createWedding(4, 5);
        const QList<QVariant> tables{QVariant(), 0, QVariant(), 2, QVariant(), QVariant(), 1};
        const int confirms[] = {1, 1, 3, 1, 2, 1, 0};
        for (int i = 0; i < tables.size(); ++i)
            wedding.addInvitation(test::invitation(QStringLiteral("f%1").arg(i % 3), QStringLiteral("n%1").arg(i), 2,
                                                   confirms[i], tables[i], QStringLiteral("050"), QString::number(1 + i % 2)));
        auto stored = [&] {
            QList<QVariant> now;
            for (int i = 0; i < tables.size(); ++i)
                now << wedding.value(QStringLiteral("f%1").arg(i % 3), QStringLiteral("n%1").arg(i), "TABLE_NO");
            return now;
        };
        test::ScriptedPrompts prompts;
        int refreshes = 0;
        ui::AutoSeatWindow window(wedding.state, prompts, [&] { ++refreshes; });
        QMenu menu;
        ui::AddAutoSeatEntries(window, &menu, nullptr, QStringLiteral("pop"));
        QAction* undo = menu.findChild<QAction*>(QStringLiteral("popUndoAutoSeat"));
        QVERIFY(undo && !undo->isEnabled());
        window.show();
        QCOMPARE(QAccessible::queryAccessibleInterface(window.txtTables())->text(QAccessible::Name),
                 QStringLiteral("שולחנות לשימוש:"));

        window.optAllComing()->setChecked(true);
        window.txtTables()->setText(QStringLiteral("1-3"));
        window.cmdCompute()->click();
        QVERIFY(window.cmdApply()->isEnabled());
        // The list changed behind the window's back: nothing is stored.
        wedding.addInvitation(test::invitation(QStringLiteral("late"), QStringLiteral("x"), 1, 1));
        prompts.expectMessage(PromptIcon::Warning, seating::ListChangedMessage);
        QVERIFY(!window.apply());
        QCOMPARE(stored(), tables);

        window.cmdCompute()->click(); // nine people of the coming: at all three tables
        QCOMPARE(window.lstTables()->topLevelItemCount(), 3);
        // Enter now applies, and the last column fits its heading rather than the list's width.
        QVERIFY(window.cmdApply()->isDefault() && !window.cmdCompute()->isDefault());
        QVERIFY(window.lstTables()->columnWidth(2) < window.lstTables()->viewport()->width() / 2);
        QVERIFY(window.apply());
        QVERIFY(refreshes == 1 && undo->isEnabled());
        const QList<QVariant> seated = stored();
        QCOMPARE(seated[4], QVariant()); // not coming stays without a table
        for (int i : {0, 1, 3, 5})
            QVERIFY(seated[i].toInt() >= 1 && seated[i].toInt() <= 3);
        QVERIFY(wedding.value(QStringLiteral("late"), QStringLiteral("x"), "TABLE_NO").toInt() >= 1);

        undo->trigger();
        QCOMPARE(stored(), tables); // Null and 0 kept apart
        QVERIFY(refreshes == 2 && !undo->isEnabled());

        // Too many for the chairs: the missing chairs told, nothing to apply.
        window.txtTables()->setText(QStringLiteral("4"));
        window.cmdCompute()->click();
        QCOMPARE(window.lblResult()->text(), seating::MissingChairsMessage(4));
        QVERIFY(!window.cmdApply()->isEnabled() && window.cmdCompute()->isDefault());
        QCOMPARE(stored(), tables);
        QVERIFY(prompts.verifyDone());
    }
};

VELMORA_TEST_MAIN(AutoSeatTest)
#include "test_autoseat.moc"
