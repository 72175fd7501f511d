#include "seating/SeatingRun.h"

#include "app/Failure.h"
#include "app/WeddingState.h"

namespace velmora::seating {

namespace {

const QString AllRows = QStringLiteral("select * from VELMORA_LIST");

SeatingList readOpen(store::Recordset& rs)
{
    SeatingList list;
    for (int position = 0; !rs.eof(); rs.moveNext(), ++position) {
        const QVariant table = rs.value(QStringLiteral("TABLE_NO"));
        SeatGuest guest;
        guest.id = position;
        guest.people = rs.value(QStringLiteral("INV_NUM")).toInt();
        guest.group = rs.value(QStringLiteral("LIST_GROUP")).toString();
        guest.family = rs.value(QStringLiteral("FAMILY_NAME")).toString();
        guest.confirm = rs.value(QStringLiteral("CONFIRM")).toInt();
        guest.table = table.isNull() ? 0 : table.toInt();
        list.guests.push_back(guest);
        list.rows.push_back({guest.family, rs.value(QStringLiteral("FIRST_NAME")).toString(), table});
    }
    return list;
}

bool sameRow(const SeatGuest& a, const SeatGuest& b)
{
    return a.people == b.people && a.group == b.group && a.family == b.family && a.confirm == b.confirm
        && a.table == b.table;
}

// Opens the file, runs `work` and closes the file whatever happens.
template <class Work>
void inOpenFile(WeddingState& state, Work&& work)
{
    state.WeddingDb = store::Database::open(state.databaseFile());
    try {
        work();
    } catch (...) {
        state.WeddingDb.close();
        throw;
    }
    state.WeddingDb.close();
}

store::Recordset& openAllRows(WeddingState& state)
{
    state.SqlText = AllRows;
    state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText);
    return state.WeddingRs;
}

// Opens the list, runs `work` on it in one transaction and closes the file whatever happens.
template <class Work>
void inListTransaction(WeddingState& state, Work&& work)
{
    inOpenFile(state, [&] { state.WeddingDb.inTransaction([&] { work(openAllRows(state)); }); });
}

void storeTable(store::Recordset& rs, int position, const QVariant& table)
{
    rs.setAbsolutePosition(position);
    rs.edit();
    rs.setValue(QStringLiteral("TABLE_NO"), table);
    rs.update();
}

} // namespace

SeatingList ReadSeatingList(WeddingState& state)
{
    SeatingList list;
    inOpenFile(state, [&] { list = readOpen(openAllRows(state)); });
    return list;
}

SeatingUndo ApplySeating(WeddingState& state, const SeatingList& list, const SeatPlan& plan)
{
    SeatingUndo undo;
    if (!plan.fits())
        return undo;
    inListTransaction(state, [&](store::Recordset& rs) {
        const SeatingList now = readOpen(rs);
        bool same = now.rows.size() == list.rows.size();
        for (size_t i = 0; same && i < now.rows.size(); ++i)
            same = sameRow(now.guests[i], list.guests[i]) && now.rows[i].firstName == list.rows[i].firstName
                && now.rows[i].table == list.rows[i].table;
        if (!same)
            throw Failure(0, ListChangedMessage);
        for (const SeatPlan::Move& move : plan.moves) {
            const SeatingList::Row& row = list.rows.at(size_t(move.id));
            storeTable(rs, move.id, move.table);
            undo.changes.push_back({move.id, row.familyName, row.firstName, row.table, move.table});
        }
    });
    return undo;
}

void UndoSeating(WeddingState& state, const SeatingUndo& undo)
{
    inListTransaction(state, [&](store::Recordset& rs) {
        for (const SeatingUndo::Change& change : undo.changes) {
            if (change.position >= rs.recordCount())
                throw Failure(0, ListChangedMessage);
            rs.setAbsolutePosition(change.position);
            if (rs.value(QStringLiteral("FAMILY_NAME")).toString() != change.familyName
                || rs.value(QStringLiteral("FIRST_NAME")).toString() != change.firstName
                || rs.value(QStringLiteral("TABLE_NO")).toInt() != change.after)
                throw Failure(0, QStringLiteral("ההושבה האוטומטית לא בוטלה: מאז הוזזו או הוסרו הזמנות שהושבו בה."));
            storeTable(rs, change.position, change.before);
        }
    });
}

} // namespace velmora::seating
