#include "seating/AutoSeat.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <random>
#include <tuple>

namespace velmora::seating {

bool IsChosen(const SeatGuest& guest, const SeatChoice& choice, int maxTables)
{
    if (guest.people < 1 || guest.confirm == 2)
        return false;
    if (guest.confirm != 1 && !choice.includeUnsure)
        return false;
    const bool seated = guest.table >= 1 && guest.table <= maxTables;
    return !seated || (choice.who == SeatWho::AllComing && !choice.keepSeated);
}

namespace {

// Groups in their list order: "2" before "10"; texts that aren't numbers after, by text.
bool groupBefore(const QString& a, const QString& b)
{
    bool aNumber = false;
    bool bNumber = false;
    const int aValue = a.toInt(&aNumber);
    const int bValue = b.toInt(&bNumber);
    return std::tuple(!aNumber, aNumber ? aValue : 0, a) < std::tuple(!bNumber, bNumber ? bValue : 0, b);
}

// The subset of `sizes` with the largest sum not above `capacity`; among equal sums the one
// reached first in the given order, so larger items (put first) win.
std::vector<int> bestSubset(const std::vector<int>& sizes, int capacity)
{
    std::vector<int> via(size_t(capacity) + 1, -1); // the item that first reached a sum
    std::vector<int> from(size_t(capacity) + 1, -1);
    std::vector<bool> reached(size_t(capacity) + 1, false);
    reached[0] = true;
    for (int item = 0; item < int(sizes.size()); ++item) {
        const int size = sizes[size_t(item)];
        if (size < 1 || size > capacity)
            continue;
        for (int sum = capacity; sum >= size; --sum) {
            if (!reached[size_t(sum)] && reached[size_t(sum - size)]) {
                reached[size_t(sum)] = true;
                via[size_t(sum)] = item;
                from[size_t(sum)] = sum - size;
            }
        }
    }
    int best = capacity;
    while (!reached[size_t(best)])
        --best;
    std::vector<int> items;
    for (int sum = best; sum > 0; sum = from[size_t(sum)])
        items.push_back(via[size_t(sum)]);
    return items;
}

class Packer {
public:
    Packer(const std::vector<SeatGuest>& guests, int maxTables, int maxChairs, const SeatChoice& choice)
        : m_guests(guests), m_maxTables(maxTables), m_maxChairs(maxChairs)
    {
        const size_t n = guests.size();
        m_chosen.resize(n);
        m_table.assign(n, 0);
        m_load.assign(size_t(maxTables) + 1, 0);
        m_open.assign(size_t(maxTables) + 1, false);

        std::vector<QString> names;
        for (const SeatGuest& guest : guests)
            names.push_back(guest.group.trimmed());
        std::sort(names.begin(), names.end(), groupBefore);
        names.erase(std::unique(names.begin(), names.end()), names.end());
        m_groupNames = names;
        m_groupOf.resize(n);
        for (size_t i = 0; i < n; ++i)
            m_groupOf[i] = int(std::lower_bound(names.begin(), names.end(), guests[i].group.trimmed(), groupBefore)
                               - names.begin());
        m_presence.assign(names.size(), std::vector<int>(size_t(maxTables) + 1, 0));

        std::vector<bool> occupied(size_t(maxTables) + 1, false);
        for (size_t i = 0; i < n; ++i) {
            m_chosen[i] = IsChosen(guests[i], choice, maxTables);
            const int table = guests[i].table;
            if (!m_chosen[i] && table >= 1 && table <= maxTables) {
                place(int(i), table);
                occupied[size_t(table)] = true;
            }
        }
        std::vector<bool> allowed(size_t(maxTables) + 1, choice.tables.empty());
        for (int table : choice.tables)
            if (table >= 1 && table <= maxTables)
                allowed[size_t(table)] = true;
        for (int table = 1; table <= maxTables; ++table)
            m_open[size_t(table)] = allowed[size_t(table)] && !(choice.keepSeated && occupied[size_t(table)]);
    }

    int room(int table) const
    {
        return m_open[size_t(table)] ? std::max(0, m_maxChairs - m_load[size_t(table)]) : 0;
    }

    void place(int guest, int table)
    {
        const int people = m_guests[size_t(guest)].people;
        m_table[size_t(guest)] = table;
        m_load[size_t(table)] += people;
        m_presence[size_t(m_groupOf[size_t(guest)])][size_t(table)] += people;
    }

    void unplace(int guest)
    {
        const int table = m_table[size_t(guest)];
        const int people = m_guests[size_t(guest)].people;
        m_load[size_t(table)] -= people;
        m_presence[size_t(m_groupOf[size_t(guest)])][size_t(table)] -= people;
        m_table[size_t(guest)] = 0;
    }

    // The table that takes `people` of `group` whole: tables where the group sits first, then
    // the tightest fit, then the lowest number. 0 when none has the room.
    int bestFit(int group, int people) const
    {
        int best = 0;
        auto key = [&](int table) { return std::tuple(m_presence[size_t(group)][size_t(table)] == 0, room(table), table); };
        for (int table = 1; table <= m_maxTables; ++table)
            if (room(table) >= people && (best == 0 || key(table) < key(best)))
                best = table;
        return best;
    }

    std::vector<int> chosenOf(int group, bool unplacedOnly) const
    {
        std::vector<int> list;
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i] && m_groupOf[i] == group && (!unplacedOnly || m_table[i] == 0))
                list.push_back(int(i));
        return list;
    }

    int peopleOf(const std::vector<int>& list) const
    {
        return std::accumulate(list.begin(), list.end(), 0,
                               [&](int sum, int guest) { return sum + m_guests[size_t(guest)].people; });
    }

    // The group whole at one table when one has the room; else table by table, each filled
    // as far as families allow and then with single invitations, the group's own tables first.
    void placeGroup(int group)
    {
        std::vector<int> pending = chosenOf(group, true);
        while (!pending.empty()) {
            const int people = peopleOf(pending);
            if (const int table = bestFit(group, people)) {
                for (int guest : pending)
                    place(guest, table);
                return;
            }
            int smallest = m_maxChairs + 1;
            for (int guest : pending)
                smallest = std::min(smallest, m_guests[size_t(guest)].people);
            int table = 0;
            auto key = [&](int t) { return std::tuple(m_presence[size_t(group)][size_t(t)] == 0, -room(t), t); };
            for (int t = 1; t <= m_maxTables; ++t)
                if (room(t) >= smallest && (table == 0 || key(t) < key(table)))
                    table = t;
            if (table == 0)
                return; // left for the last pass
            for (int guest : fillFrom(pending, room(table)))
                place(guest, table);
            std::erase_if(pending, [&](int guest) { return m_table[size_t(guest)] != 0; });
        }
    }

    // Invitations of `pending` that fill `capacity` best: whole families first, then single
    // invitations of the families left over.
    std::vector<int> fillFrom(const std::vector<int>& pending, int capacity) const
    {
        std::map<QString, std::vector<int>> byFamily;
        for (int guest : pending)
            byFamily[m_guests[size_t(guest)].family.trimmed()].push_back(guest);
        std::vector<std::vector<int>> families;
        for (auto& [name, members] : byFamily)
            families.push_back(members);
        std::stable_sort(families.begin(), families.end(),
                         [&](const auto& a, const auto& b) { return peopleOf(a) > peopleOf(b); });
        std::vector<int> sizes;
        for (const auto& family : families)
            sizes.push_back(peopleOf(family));
        std::vector<int> taken;
        std::vector<bool> used(families.size(), false);
        for (int item : bestSubset(sizes, capacity)) {
            used[size_t(item)] = true;
            taken.insert(taken.end(), families[size_t(item)].begin(), families[size_t(item)].end());
        }
        const int left = capacity - peopleOf(taken);
        std::vector<int> singles;
        for (size_t f = 0; f < families.size(); ++f)
            if (!used[f])
                singles.insert(singles.end(), families[f].begin(), families[f].end());
        std::stable_sort(singles.begin(), singles.end(), [&](int a, int b) {
            return m_guests[size_t(a)].people > m_guests[size_t(b)].people;
        });
        std::vector<int> singleSizes;
        for (int guest : singles)
            singleSizes.push_back(m_guests[size_t(guest)].people);
        if (left > 0)
            for (int item : bestSubset(singleSizes, left))
                taken.push_back(singles[size_t(item)]);
        return taken;
    }

    // Invitations still without a table, one by one, largest first.
    void placeLeftovers()
    {
        std::vector<int> left;
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i] && m_table[i] == 0)
                left.push_back(int(i));
        std::stable_sort(left.begin(), left.end(), [&](int a, int b) {
            return std::tuple(-m_guests[size_t(a)].people, m_groupOf[size_t(a)])
                < std::tuple(-m_guests[size_t(b)].people, m_groupOf[size_t(b)]);
        });
        for (int guest : left)
            if (const int table = bestFit(m_groupOf[size_t(guest)], m_guests[size_t(guest)].people))
                place(guest, table);
            else
                makeRoom(guest);
    }

    // Chairs scattered in ones and twos: a smaller invitation moves to another table to make
    // the room, at a table of the guest's own group when there is one.
    bool makeRoom(int guest)
    {
        const int people = m_guests[size_t(guest)].people;
        const int group = m_groupOf[size_t(guest)];
        for (bool ownGroup : {true, false})
            for (int table = 1; table <= m_maxTables; ++table) {
                if (!m_open[size_t(table)] || (ownGroup && m_presence[size_t(group)][size_t(table)] == 0))
                    continue;
                for (size_t other = 0; other < m_guests.size(); ++other) {
                    const int size = m_guests[other].people;
                    if (m_table[other] != table || !m_chosen[other] || size >= people || room(table) + size < people)
                        continue;
                    unplace(int(other));
                    m_open[size_t(table)] = false;
                    const int to = bestFit(m_groupOf[other], size);
                    m_open[size_t(table)] = true;
                    if (to == 0) {
                        place(int(other), table);
                        continue;
                    }
                    place(int(other), to);
                    place(guest, table);
                    return true;
                }
            }
        return false;
    }

    void clearChosen()
    {
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i] && m_table[i] != 0)
                unplace(int(i));
    }

    int unplacedPeople() const
    {
        int people = 0;
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i] && m_table[i] == 0)
                people += m_guests[i].people;
        return people;
    }

    int chosenPeople() const
    {
        int people = 0;
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i])
                people += m_guests[i].people;
        return people;
    }

    int freeChairs() const
    {
        int chairs = 0;
        for (int table = 1; table <= m_maxTables; ++table)
            chairs += room(table);
        return chairs;
    }

    // Largest groups first; a later attempt weighs each group's size by up to 40% more, so
    // that groups of nearly one size come in another order.
    bool seatsGroupsTogether(unsigned attempt)
    {
        std::vector<std::pair<int, int>> order; // weighted size, group
        std::mt19937 weights(attempt);
        for (int group = 0; group < int(m_groupNames.size()); ++group)
            if (const int people = peopleOf(chosenOf(group, true)))
                order.push_back({people * (100 + (attempt == 0 ? 0 : int(weights() % 41))), group});
        std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
        for (const auto& [weight, group] : order)
            placeGroup(group);
        placeLeftovers();
        return unplacedPeople() == 0;
    }

    // Every invitation by itself, largest first: the plain packing, when the grouped one
    // leaves people over.
    bool seatsInvitations()
    {
        clearChosen();
        placeLeftovers();
        return unplacedPeople() == 0;
    }

    bool isSmall(int table) const { return m_load[size_t(table)] > 0 && m_load[size_t(table)] * 4 <= m_maxChairs; }

    int familyAt(int group, const QString& family, int table) const
    {
        int people = 0;
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_table[i] == table && m_groupOf[i] == group && m_guests[i].family.trimmed() == family)
                people += m_guests[i].people;
        return people;
    }

    // A table left with a handful of people: its invitations join their groups elsewhere
    // when all of them can; else it takes people of its own groups from fuller tables while
    // that brings the two closer, as long as no family is parted by it.
    void balance()
    {
        for (int table = 1; table <= m_maxTables; ++table) {
            if (!isSmall(table))
                continue;
            std::vector<int> here;
            bool allMovable = true;
            for (size_t i = 0; i < m_guests.size(); ++i)
                if (m_table[i] == table) {
                    here.push_back(int(i));
                    allMovable = allMovable && m_chosen[i];
                }
            if (allMovable && mergeAway(table, here))
                continue;
            while (isSmall(table) && takeFromOthers(table)) {
            }
        }
    }

    bool mergeAway(int table, const std::vector<int>& here)
    {
        const bool wasOpen = m_open[size_t(table)];
        m_open[size_t(table)] = false; // nobody comes back here meanwhile
        std::vector<int> moved;
        for (int guest : here) {
            const int group = m_groupOf[size_t(guest)];
            int target = 0;
            for (int t = 1; t <= m_maxTables; ++t)
                if (t != table && m_presence[size_t(group)][size_t(t)] > 0 && room(t) >= m_guests[size_t(guest)].people
                    && (target == 0 || room(t) < room(target)))
                    target = t;
            if (target == 0)
                break;
            unplace(guest);
            place(guest, target);
            moved.push_back(guest);
        }
        m_open[size_t(table)] = wasOpen;
        if (moved.size() == here.size())
            return true;
        for (int guest : moved) {
            unplace(guest);
            place(guest, table);
        }
        return false;
    }

    bool takeFromOthers(int table)
    {
        int best = -1;
        auto gain = [&](int guest) { return std::tuple(m_guests[size_t(guest)].people, -guest); };
        for (size_t i = 0; i < m_guests.size(); ++i) {
            const int from = m_table[i];
            const int group = m_groupOf[i];
            const int people = m_guests[i].people;
            if (!m_chosen[i] || from == 0 || from == table || m_presence[size_t(group)][size_t(table)] == 0)
                continue;
            if (room(table) < people || m_load[size_t(table)] + people >= m_load[size_t(from)])
                continue;
            const QString family = m_guests[i].family.trimmed();
            if (familyAt(group, family, from) != people && familyAt(group, family, table) == 0)
                continue; // would part a family
            if (best < 0 || gain(int(i)) > gain(best))
                best = int(i);
        }
        if (best < 0)
            return false;
        unplace(best);
        place(best, table);
        return true;
    }

    // Groups that no seating keeps at one table: those already at two tables, those bigger
    // than any table's room, and those that each need a table of their own beyond the
    // tables there are.
    int lowerBound() const
    {
        int bound = 0;
        int largestRoom = 0;
        for (int table = 1; table <= m_maxTables; ++table)
            largestRoom = std::max(largestRoom, room(table));
        std::vector<int> halfOrMore;
        for (int group = 0; group < int(m_groupNames.size()); ++group) {
            const int people = peopleOf(chosenOf(group, false));
            if (people == 0)
                continue;
            std::vector<int> fixedAt;
            for (int table = 1; table <= m_maxTables; ++table)
                if (m_presence[size_t(group)][size_t(table)] > 0)
                    fixedAt.push_back(table);
            if (fixedAt.size() > 1 || (fixedAt.size() == 1 && room(fixedAt[0]) < people)
                || (fixedAt.empty() && people > largestRoom))
                ++bound;
            else if (fixedAt.empty() && 2 * people > largestRoom)
                halfOrMore.push_back(people);
        }
        if (!halfOrMore.empty()) {
            const int smallest = *std::min_element(halfOrMore.begin(), halfOrMore.end());
            int tables = 0;
            for (int table = 1; table <= m_maxTables; ++table)
                tables += room(table) >= smallest;
            bound += std::max(0, int(halfOrMore.size()) - tables);
        }
        return bound;
    }

    // The tables where people of the group sit.
    int tablesOf(int group) const
    {
        const auto& at = m_presence[size_t(group)];
        return int(std::count_if(at.begin() + 1, at.end(), [](int people) { return people > 0; }));
    }

    // How good a seating is, better first: groups split, the tables they take beyond one,
    // tables with a handful of people.
    std::tuple<int, int, int> score() const
    {
        int split = 0;
        int extra = 0;
        for (int group = 0; group < int(m_presence.size()); ++group) {
            const int tables = tablesOf(group);
            split += tables > 1;
            extra += std::max(0, tables - 1);
        }
        int small = 0;
        for (int table = 1; table <= m_maxTables; ++table)
            small += isSmall(table);
        return {split, extra, small};
    }

    SeatPlan plan(int lowerBound) const
    {
        SeatPlan result;
        result.lowerBound = lowerBound;
        result.people = m_load;
        result.seatedPeople = chosenPeople();
        for (size_t i = 0; i < m_guests.size(); ++i)
            if (m_chosen[i] && m_table[i] != m_guests[i].table)
                result.moves.push_back({m_guests[i].id, m_table[i]});
        for (int group = 0; group < int(m_groupNames.size()); ++group) {
            if (chosenOf(group, false).empty())
                continue;
            const int tables = tablesOf(group);
            if (tables > 1)
                result.splitGroups.push_back({m_groupNames[size_t(group)], tables});
        }
        return result;
    }

private:
    const std::vector<SeatGuest>& m_guests;
    int m_maxTables;
    int m_maxChairs;
    std::vector<bool> m_chosen;
    std::vector<int> m_table;
    std::vector<int> m_load;
    std::vector<bool> m_open;
    std::vector<QString> m_groupNames;
    std::vector<int> m_groupOf;
    std::vector<std::vector<int>> m_presence; // people of a group at each table
};

} // namespace

SeatPlan PlanSeating(const std::vector<SeatGuest>& guests, int maxTables, int maxChairs, const SeatChoice& choice)
{
    Packer packer(guests, maxTables, maxChairs, choice);
    const int bound = packer.lowerBound();
    const int people = packer.chosenPeople();
    const int chairs = packer.freeChairs();
    auto failed = [&](int missing) {
        SeatPlan plan;
        plan.lowerBound = bound;
        plan.seatedPeople = people;
        plan.missingChairs = std::max(1, missing);
        return plan;
    };
    if (people > chairs)
        return failed(people - chairs);
    // A few orders of the groups, the best kept; each takes about a millisecond.
    std::optional<SeatPlan> best;
    std::tuple<int, int, int> bestScore;
    int leftOver = people;
    for (unsigned attempt = 0; attempt < 16; ++attempt) {
        Packer tried(guests, maxTables, maxChairs, choice);
        if (!tried.seatsGroupsTogether(attempt)) {
            leftOver = std::min(leftOver, tried.unplacedPeople());
            continue;
        }
        tried.balance();
        const auto score = tried.score();
        if (!best || score < bestScore) {
            best = tried.plan(bound);
            bestScore = score;
        }
        if (int(best->splitGroups.size()) == bound)
            break; // no order can split fewer
    }
    if (best)
        return *best;
    if (!packer.seatsInvitations())
        return failed(std::min(leftOver, packer.unplacedPeople()));
    packer.balance();
    return packer.plan(bound);
}

bool ParseTables(const QString& text, int maxTables, std::vector<int>& tables)
{
    static const QRegularExpression part(QStringLiteral("^\\s*(\\d{1,3})\\s*(?:-\\s*(\\d{1,3})\\s*)?$"));
    std::vector<bool> taken(size_t(maxTables) + 1, false);
    if (text.trimmed().isEmpty()) {
        std::fill(taken.begin() + 1, taken.end(), true);
    } else {
        for (const QString& piece : text.split(u',')) {
            const auto match = part.match(piece);
            if (!match.hasMatch())
                return false;
            const int from = match.captured(1).toInt();
            const int to = match.captured(2).isEmpty() ? from : match.captured(2).toInt();
            if (from < 1 || to > maxTables || from > to)
                return false;
            std::fill(taken.begin() + from, taken.begin() + to + 1, true);
        }
    }
    tables.clear();
    for (int table = 1; table <= maxTables; ++table)
        if (taken[size_t(table)])
            tables.push_back(table);
    return true;
}

QString MissingChairsMessage(int missingChairs)
{
    return QStringLiteral("לא ניתן להושיב את כל המוזמנים שנבחרו: ")
        + (missingChairs == 1 ? QStringLiteral("חסר כיסא אחד.")
                              : QStringLiteral("חסרים ") + QString::number(missingChairs) + QStringLiteral(" כיסאות."));
}

} // namespace velmora::seating
