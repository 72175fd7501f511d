// Automatic seating of a whole wedding: the time to work it out, and the groups it splits
// beside the number that no seating can avoid. The benchmark wedding (1,000 people in 400
// invitations over 90 tables of 12) also runs end to end through a real file: read, work
// out, store in one transaction, take back.
#include "BenchSupport.h"

#include "app/WeddingState.h"
#include "seating/AutoSeat.h"
#include "seating/SeatingRun.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <random>

using namespace velmora;

namespace {

// Invitations of 1 to 6 people summing to `people` exactly; the couple's friends and the two
// families are the big groups, the rest are groups of 4 to 40 (friends, work, neighbours),
// each made of a few families.
std::vector<seating::SeatGuest> makeGuests(int invitations, int people, unsigned seed)
{
    std::mt19937 rng(seed);
    auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
    std::vector<int> sizes;
    for (int i = 0; i < invitations; ++i) {
        const int roll = pick(1, 100);
        sizes.push_back(roll <= 20 ? 1 : roll <= 65 ? 2 : roll <= 80 ? 3 : roll <= 92 ? 4 : 5);
    }
    int sum = 0;
    for (int size : sizes)
        sum += size;
    while (sum != people) {
        int& size = sizes[size_t(pick(0, invitations - 1))];
        if (sum < people && size < 6) {
            ++size;
            ++sum;
        } else if (sum > people && size > 1) {
            --size;
            --sum;
        }
    }
    std::vector<int> groupSizes{people * 6 / 100, people * 20 / 100, people * 20 / 100};
    for (int left = people - groupSizes[0] - groupSizes[1] - groupSizes[2]; left > 0;) {
        const int size = std::min(left, pick(4, 40));
        groupSizes.push_back(size);
        left -= size;
    }
    std::vector<seating::SeatGuest> guests;
    size_t group = 0;
    int inGroup = 0;
    for (int i = 0; i < invitations; ++i) {
        if (inGroup >= groupSizes[group] && group + 1 < groupSizes.size()) {
            ++group;
            inGroup = 0;
        }
        seating::SeatGuest guest;
        guest.id = i;
        guest.people = sizes[size_t(i)];
        guest.group = QString::number(group + 1);
        guest.family = QStringLiteral("family%1-%2").arg(group + 1).arg(pick(1, std::max(1, groupSizes[group] / 8)));
        guest.confirm = 1;
        guests.push_back(guest);
        inGroup += guest.people;
    }
    return guests;
}

void report(const char* title, const std::vector<seating::SeatGuest>& guests, int tables, int chairs, double aimMs)
{
    seating::SeatPlan plan;
    const double ms = bench::medianMs(5, [&] { plan = seating::PlanSeating(guests, tables, chairs, {}); });
    int used = 0;
    int smallest = chairs;
    for (int table = 1; table <= tables; ++table)
        if (plan.people[size_t(table)] > 0) {
            ++used;
            smallest = std::min(smallest, plan.people[size_t(table)]);
        }
    int groups = 0;
    for (size_t i = 0; i < guests.size(); ++i)
        groups = std::max(groups, guests[i].group.toInt());
    std::printf("%s\n", title);
    std::printf("  %d people, %zu invitations, %d groups, %d tables of %d\n", plan.seatedPeople, guests.size(), groups,
                tables, chairs);
    std::printf("  time (median of 5):    %8.2f ms   (aim: at most %.0f ms)\n", ms, aimMs);
    std::printf("  everyone seated:       %s\n", plan.fits() ? "yes" : "no");
    std::printf("  groups split:          %8zu      (lower bound %d; aim: within 10%% of it)\n",
                plan.splitGroups.size(), plan.lowerBound);
    std::printf("  tables used:           %8d      (fewest people at a used table: %d)\n", used, smallest);
}

} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir home;
    bench::runHeadless(home);
    QCoreApplication app(argc, argv);

    const auto wedding = makeGuests(400, 1000, 21);
    report("automatic seating, the benchmark wedding", wedding, 90, 12, 1000);
    report("automatic seating, the largest wedding the options allow", makeGuests(600, 1500, 22), 100, 15, 2000);

    // End to end through a real file.
    QTemporaryDir dir;
    WeddingState state;
    state.AppPath = dir.path() + QLatin1Char('/');
    {
        PendingFailure pending;
        store::Database db = store::Database::create(state.databaseFile());
        store::appendTable(db, store::ListTable, store::listFields(), pending);
        db.inTransaction([&] {
            store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
            for (const seating::SeatGuest& guest : wedding) {
                rs.addNew();
                rs.setValue(QStringLiteral("FAMILY_NAME"), guest.family);
                rs.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("n%1").arg(guest.id));
                rs.setValue(QStringLiteral("INV_NUM"), guest.people);
                rs.setValue(QStringLiteral("LIST_GROUP"), guest.group);
                rs.setValue(QStringLiteral("CONFIRM"), guest.confirm);
                rs.update();
            }
        });
        db.close();
    }
    seating::SeatingUndo undo;
    const double apply = bench::medianMs(1, [&] {
        const seating::SeatingList list = seating::ReadSeatingList(state);
        undo = seating::ApplySeating(state, list, seating::PlanSeating(list.guests, 90, 12, {}));
    });
    const double back = bench::medianMs(1, [&] { seating::UndoSeating(state, undo); });
    std::printf("the benchmark wedding through its file\n");
    std::printf("  read, work out, store: %8.2f ms   (%zu rows in one transaction)\n", apply, undo.changes.size());
    std::printf("  take back:             %8.2f ms\n", back);
    return 0;
}
