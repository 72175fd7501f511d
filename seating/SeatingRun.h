#pragma once

#include "seating/AutoSeat.h"

#include <QVariant>

#include <vector>

namespace velmora {
struct WeddingState;
}

namespace velmora::seating {

// The list as automatic seating read it: one guest a row in stored order, the guest's id
// being the row's position, with what identifies the row again when the plan is stored.
struct SeatingList {
    struct Row {
        QString familyName;
        QString firstName;
        QVariant table; // TABLE_NO exactly as stored, Null included
    };
    std::vector<SeatGuest> guests;
    std::vector<Row> rows;
};

// One step back: every row an applied seating changed, with its table before and after.
struct SeatingUndo {
    struct Change {
        int position = 0;
        QString familyName;
        QString firstName;
        QVariant before;
        int after = 0;
    };
    std::vector<Change> changes;

    bool empty() const { return changes.empty(); }
};

// Reads every row of VELMORA_LIST; throws the engine's failure.
SeatingList ReadSeatingList(WeddingState& state);

// The message when the list changed between reading it and storing; nothing is stored then.
inline const QString ListChangedMessage =
    QStringLiteral("רשימת המוזמנים השתנתה בינתיים ולא נשמר דבר. יש לחשב את ההושבה מחדש.");

// Stores the plan's tables in one transaction, after checking that the list is still the
// one the plan was made from; on any failure nothing is stored and the failure is thrown.
SeatingUndo ApplySeating(WeddingState& state, const SeatingList& list, const SeatPlan& plan);

// Puts back every row's earlier table in one transaction. When a row isn't where the
// seating left it (moved or removed since), nothing is stored and a failure is thrown.
void UndoSeating(WeddingState& state, const SeatingUndo& undo);

} // namespace velmora::seating
