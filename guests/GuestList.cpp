#include "guests/GuestList.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"
#include "guests/GuestListModel.h"
#include "store/Upgrade.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora::guests {

namespace {

constexpr int InvalidUseOfNull = 94;

QString confirmText(const QVariant& value)
{
    switch (value.isNull() ? 0 : value.toInt()) {
    case 1:
        return QStringLiteral("מגיע");
    case 2:
        return QStringLiteral("לא");
    case 3:
        return QStringLiteral("??");
    default:
        return {};
    }
}

bool isMoneyGift(const QVariant& presentType)
{
    return !presentType.isNull() && (presentType.toInt() == 0 || presentType.toInt() == 1);
}

// The sign goes before every gift but a described one and one of no kind: a kind the
// dialog never writes still reads as money, though the total leaves it out.
bool showsShekel(const QVariant& presentType)
{
    return !presentType.isNull() && presentType.toInt() != 2;
}

// The text of a byte value. Those texts are made once and shared: on a long list a new
// string for every cell is a good part of the load.
QString byteText(const QVariant& value)
{
    static const auto texts = [] {
        std::array<QString, 256> made;
        for (int number = 0; number < 256; ++number)
            made[size_t(number)] = QString::number(number);
        return made;
    }();
    const int number = value.metaType() == QMetaType::fromType<int>() ? value.toInt() : -1;
    return number >= 0 && number < 256 ? texts[size_t(number)] : value.toString();
}

// The sum is rounded to whole shekels after each gift. Should gifts ever pass what 64
// bits hold, the total stops at the limit rather than wrapping round.
qint64 addGift(qint64 total, double gift)
{
    constexpr double Limit = 9.2e18;
    const double sum = std::nearbyint(double(total) + gift);
    return std::isnan(sum) ? total : qint64(std::clamp(sum, -Limit, Limit));
}

} // namespace

QString PlainText(const QVariant& value, PendingFailure& pending)
{
    if (value.isNull()) {
        pending.fail(InvalidUseOfNull, QStringLiteral("שימוש לא חוקי בערך Null."));
        return {};
    }
    return value.toString();
}

bool CheckEvenNum(int number)
{
    return number % 2 == 0;
}

int GroupNumber(const WeddingState& state, const QString& group)
{
    if (state.NumOfGroups == 0) {
        if (group == state.CoupleName)
            return 1;
        if (group == state.HerFamily)
            return 3;
        if (group == state.HisFamily)
            return 2;
        return 0;
    }
    const int position = int(state.UserGroups.indexOf(group));
    return position >= 0 && position < state.NumOfGroups ? position + 1 : 0;
}

QString ListSql(const WeddingState& state, const QString& group, const QString& order, const ListView& view)
{
    QString sql = QStringLiteral("select * from VELMORA_LIST");
    const QString orderClause = order.isEmpty() ? QString() : QStringLiteral(" order by ") + order + u' ' + view.sortDirection;
    if (view.hideNotComing && view.hideNotConfirmed)
        sql += QStringLiteral(" where (CONFIRM = 1)");
    else if (view.hideNotComing)
        sql += QStringLiteral(" where (CONFIRM <> 2)");
    else if (view.hideNotConfirmed)
        sql += QStringLiteral(" where (CONFIRM between 1 and 2)");

    if (group == state.AllGuests) {
        sql += orderClause;
    } else {
        const QString number = QString::number(GroupNumber(state, group));
        if (!sql.contains(QStringLiteral("where")))
            sql += QStringLiteral(" where LIST_GROUP = '") + number + u'\'' + orderClause;
        else
            sql += QStringLiteral(" and (LIST_GROUP = '") + number + QStringLiteral("')") + orderClause;
    }
    return sql;
}

ListOutcome InitList(WeddingState& state, Prompts& prompts, GuestListModel& model, const QString& group,
                     const QString& order, const ListView& view)
{
    ListOutcome outcome;
    PendingFailure pending;
    outcome.caption = QStringLiteral("רשימה של ") + state.CurGroup;
    model.setRows({});

    // Another process holding the file locked is told by the lock's own failure; the
    // list stays empty until the next load, and nothing ends.
    if (!pending.attempt([&] { state.WeddingDb = store::Database::open(state.databaseFile()); })
        && pending.failure().number() == store::failures::Locked) {
        pending.report(prompts);
        return outcome;
    }
    bool locked = false;
    if (!store::UpdateDatabase(state, prompts, &locked)) {
        outcome.endProgram = !locked;
        return outcome;
    }
    state.SqlText = ListSql(state, group, order, view);
    pending.attempt([&] { state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText); });

    state.InvCount = 0;
    state.GuestsConfirmed = 0;
    state.GuestsNotComing = 0;
    state.GuestsUnknown = 0;
    state.PresentTotal = 0;

    store::Recordset& rs = state.WeddingRs;
    std::vector<GuestRow> rows;
    pending.attempt([&] {
        if (!rs.isOpen() || rs.eof())
            return;
        outcome.hasRows = true;
        // Each field's place is looked up once: by name for every cell, the look-ups would
        // cost more than the rest of the load on a long list.
        auto field = [&](const char* name) {
            const int index = rs.fieldIndex(QString::fromLatin1(name));
            if (index < 0)
                rs.value(QString::fromLatin1(name)); // fails, naming the field
            return index;
        };
        const int familyName = field("FAMILY_NAME"), firstName = field("FIRST_NAME"), phones = field("PHONES"),
                  invNum = field("INV_NUM"), remark = field("REMARK"), confirmField = field("CONFIRM"),
                  tableNo = field("TABLE_NO"), invStatus = field("INV_STATUS"), address = field("ADDRESS"),
                  presentType = field("PRESENT_TYPE"), presentField = field("PRESENT");
        // Running totals of the rows shown.
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            ++state.InvCount;
            const QVariant confirm = rs.value(confirmField);
            const int people = rs.value(invNum).toInt();
            switch (confirm.isNull() ? 0 : confirm.toInt()) {
            case 1:
                state.GuestsConfirmed += people;
                break;
            case 2:
                state.GuestsNotComing += people;
                break;
            case 0:
            case 3:
                state.GuestsUnknown += people;
                break;
            default:
                break;
            }
            const QVariant present = rs.value(presentField);
            if (isMoneyGift(rs.value(presentType)) && !present.isNull())
                state.PresentTotal = addGift(state.PresentTotal, LeadingNumber(present.toString()));
        }
        rows.reserve(size_t(state.InvCount));
        rs.moveFirst();
        for (; !rs.eof(); rs.moveNext()) {
            GuestRow row;
            auto& cells = row.cells;
            cells[0] = PlainText(rs.value(familyName), pending);
            cells[1] = PlainText(rs.value(firstName), pending);
            cells[2] = PlainText(rs.value(phones), pending);
            const QVariant people = rs.value(invNum);
            cells[3] = people.isNull() ? PlainText(people, pending) : byteText(people);
            cells[4] = PlainText(rs.value(remark), pending);
            const QVariant confirm = rs.value(confirmField);
            cells[5] = confirmText(confirm);
            cells[6] = byteText(rs.value(tableNo));
            cells[7] = rs.value(invStatus).toBool() ? QStringLiteral("נשלחה") : QString();
            cells[8] = rs.value(address).toString();
            const QVariant present = rs.value(presentField);
            if (!present.isNull())
                cells[9] = (showsShekel(rs.value(presentType)) ? QStringLiteral("₪") : QString()) + present.toString();
            row.notComing = !confirm.isNull() && confirm.toInt() == 2;
            rows.push_back(std::move(row));
        }
    });
    const int filled = int(rows.size());
    model.setRows(std::move(rows));
    if (outcome.hasRows)
        outcome.dialEnabled = !Trim(model.cellText(1, 2)).isEmpty();
    if (rs.isOpen() && rs.recordCount() != filled)
        prompts.message(QStringLiteral("שגיאה בהצגת הטבלה"));
    pending.attempt([&] { state.WeddingDb.close(); });

    outcome.panels[1] = QStringLiteral("מתנות ₪") + QString::number(state.PresentTotal);
    outcome.panels[2] = QStringLiteral("אישרו שלא מגיעים  ") + QString::number(state.GuestsNotComing);
    outcome.panels[3] = QStringLiteral("ממתינים לאישור  ") + QString::number(state.GuestsUnknown);
    outcome.panels[4] = QStringLiteral("אישרו שמגיעים  ") + QString::number(state.GuestsConfirmed);
    outcome.panels[5] = QStringLiteral("מס' ההזמנות  ") + QString::number(state.InvCount);
    pending.report(prompts);
    return outcome;
}

} // namespace velmora::guests
