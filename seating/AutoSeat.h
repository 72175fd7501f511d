#pragma once

#include <QString>

#include <vector>

namespace velmora::seating {

// One invitation as automatic seating sees it.
struct SeatGuest {
    int id = 0;      // the caller's handle, handed back in the plan
    int people = 0;  // INV_NUM
    QString group;   // LIST_GROUP as stored
    QString family;  // FAMILY_NAME
    int confirm = 0; // CONFIRM
    int table = 0;   // TABLE_NO; 0 for Null, 0 or a number beyond the tables
};

enum class SeatWho { Unseated, AllComing };

// What the user chose.
struct SeatChoice {
    SeatWho who = SeatWho::Unseated;
    // Also those who haven't answered yet or aren't sure ("not coming" never).
    bool includeUnsure = false;
    // Tables that already have people are left exactly as they are: nobody leaves, nobody joins.
    bool keepSeated = false;
    // Tables that may take people; empty: every table.
    std::vector<int> tables;
};

struct SplitGroup {
    QString group;
    int tables = 0; // tables the group sits at after the seating
};

struct SeatPlan {
    struct Move {
        int id = 0;
        int table = 0; // the new table
    };
    std::vector<Move> moves;    // only invitations whose table changes, in input order
    std::vector<int> people;    // index 0 to MaxTables: the people at each table afterwards
    std::vector<SplitGroup> splitGroups;
    int lowerBound = 0;         // groups that no seating can keep at one table
    int seatedPeople = 0;       // people the plan seats (chosen ones)
    int missingChairs = 0;      // above 0: the chosen people don't fit and there is nothing to apply

    bool fits() const { return missingChairs == 0; }
};

// Whether the choice takes this invitation. "Not coming" is never seated, as in the
// invitation dialog, and an invitation of no people has nobody to seat.
bool IsChosen(const SeatGuest& guest, const SeatChoice& choice, int maxTables);

// A deterministic seating of the chosen invitations. Never broken: an invitation sits whole
// at one table, no table holds more than maxChairs (with those already there), tables are
// 1 to maxTables and among those allowed. Aimed at, in this order: each group at as few
// tables as possible, families of one name together, no table left with a handful of people.
SeatPlan PlanSeating(const std::vector<SeatGuest>& guests, int maxTables, int maxChairs, const SeatChoice& choice);

// "1-10, 15, 20-30" as table numbers within 1 to maxTables, ascending; false on anything
// else (an empty text is every table).
bool ParseTables(const QString& text, int maxTables, std::vector<int>& tables);

// What the user reads when the chosen people don't fit.
QString MissingChairsMessage(int missingChairs);

} // namespace velmora::seating
