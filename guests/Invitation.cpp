#include "guests/Invitation.h"

#include "app/PendingFailure.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"
#include "guests/GuestList.h"

namespace velmora::guests {

namespace {

QString numberText(double number)
{
    return QString::number(number, 'g', 15);
}

} // namespace

std::optional<QString> CheckInvitation(const WeddingState& state, const InvitationForm& form,
                                       const SeatedCountFn& seatedCount, int ownPeople)
{
    const QString family = Trim(form.familyName);
    const QString first = Trim(form.firstName);
    if (family.isEmpty() || first.isEmpty())
        return QStringLiteral("השדות שם משפחה\\פרטי אינם יכולים להיות ריקים.");
    if (family.size() > 20 || first.size() > 20)
        return QStringLiteral("השדות שם משפחה\\פרטי מוגבלים לגודל של 20 תווים.");
    const double people = LeadingNumber(form.invNum);
    if (people <= 0)
        return QStringLiteral("השדה מס' מוזמנים חייב להכיל מספר הגדול מאפס.");
    if (Trim(form.remark).size() > 40)
        return QStringLiteral("השדה הערות מוגבל לגודל של 40 תווים.");
    if (Trim(form.phones).size() > 30)
        return QStringLiteral("השדה טלפונים מוגבל לגודל של 30 תווים.");
    if (Trim(form.address).size() > 50)
        return QStringLiteral("השדה כתובת מוגבל לגודל של 50 תווים.");
    const QString present = Trim(form.present);
    if (present.size() > 20)
        return QStringLiteral("השדה מתנה מוגבל לגודל של 20 תווים.");
    if (!present.isEmpty() && form.moneyGift() && !IsNumeric(present))
        return QStringLiteral("השדה מתנה חייב להיות מספרי.");

    const double table = LeadingNumber(form.tableNo);
    if (table > 0) {
        if (table > state.MaxTables)
            return QStringLiteral("מספר השולחן אינו קיים במערכת.");
        if (form.confirmNotOk)
            return QStringLiteral("הושבת אורח שלא מגיע לשולחן אינה אפשרית");
        if (seatedCount(int(table)) + people - ownPeople > state.MaxChairs)
            return QStringLiteral("לא ניתן להושיב יותר מ- ") + QString::number(state.MaxChairs)
                + QStringLiteral(" איש בשולחן");
    }
    return std::nullopt;
}

int OwnPeople(const store::Recordset& row, int table)
{
    const QVariant stored = row.value(QStringLiteral("TABLE_NO"));
    if (stored.isNull() || stored.toInt() != table)
        return 0;
    return row.value(QStringLiteral("INV_NUM")).toInt();
}

int GroupIndex(const WeddingState& state, const QString& groupText)
{
    return GroupNumber(state, Trim(groupText));
}

std::optional<QString> GroupText(const WeddingState& state, const QVariant& listGroup)
{
    const int number = listGroup.isNull() ? 0 : listGroup.toString().toInt();
    if (state.NumOfGroups == 0) {
        switch (number) {
        case 1:
            return state.CoupleName;
        case 3:
            return state.HerFamily;
        case 2:
            return state.HisFamily;
        default:
            return std::nullopt;
        }
    }
    if (number < 1 || number > state.NumOfGroups || number > state.UserGroups.size())
        return std::nullopt;
    return state.UserGroups[number - 1];
}

bool FindPair(store::Recordset& rs, const QString& familyName, const QString& firstName)
{
    if (rs.recordCount() == 0)
        return false;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
        if (rs.value(QStringLiteral("FAMILY_NAME")).toString() == familyName
            && rs.value(QStringLiteral("FIRST_NAME")).toString() == firstName)
            return true;
    }
    return false;
}

bool IsDuplicate(store::Recordset& rs, const QString& familyName, const QString& firstName, int skipPosition)
{
    const int kept = rs.absolutePosition();
    bool found = false;
    if (rs.recordCount() > 0) {
        for (rs.moveFirst(); !rs.eof() && !found; rs.moveNext()) {
            if (rs.absolutePosition() == skipPosition)
                continue;
            found = rs.value(QStringLiteral("FAMILY_NAME")).toString() == familyName
                && rs.value(QStringLiteral("FIRST_NAME")).toString() == firstName;
        }
    }
    if (kept >= 0)
        rs.setAbsolutePosition(kept);
    return found;
}

void WriteInvitation(store::Recordset& rs, const InvitationForm& form, int groupIndex, bool adding)
{
    rs.setValue(QStringLiteral("FAMILY_NAME"), Trim(form.familyName));
    rs.setValue(QStringLiteral("FIRST_NAME"), Trim(form.firstName));
    rs.setValue(QStringLiteral("PHONES"), Trim(form.phones));
    rs.setValue(QStringLiteral("ADDRESS"), Trim(form.address));
    rs.setValue(QStringLiteral("REMARK"), Trim(form.remark));
    rs.setValue(QStringLiteral("INV_NUM"), LeadingNumber(form.invNum));
    rs.setValue(QStringLiteral("LIST_GROUP"), QString::number(groupIndex));
    rs.setValue(QStringLiteral("INV_STATUS"), form.invSent);
    rs.setValue(QStringLiteral("CONFIRM"), form.confirm());

    const QString table = Trim(form.tableNo);
    QVariant tableNo;
    if (!table.isEmpty() && !(table == u"0" && !adding))
        tableNo = LeadingNumber(table);
    if (form.confirm() == 2)
        tableNo = QVariant(); // a guest who is not coming has no seat
    rs.setValue(QStringLiteral("TABLE_NO"), tableNo);

    rs.setValue(QStringLiteral("PRESENT_TYPE"), form.gift == InvitationForm::Gift::Cheque ? 0
                                                : form.gift == InvitationForm::Gift::Cash ? 1
                                                                                          : 2);
    const QString present = Trim(form.present);
    QVariant gift;
    if (!present.isEmpty())
        gift = form.moneyGift() ? QVariant(numberText(LeadingNumber(present))) : QVariant(present);
    rs.setValue(QStringLiteral("PRESENT"), gift);
}

InvitationForm ReadInvitation(const WeddingState& state, const store::Recordset& rs, const QString& openingGroup,
                              PendingFailure& pending)
{
    InvitationForm form;
    form.group = openingGroup;
    pending.attempt([&] {
        form.familyName = PlainText(rs.value(QStringLiteral("FAMILY_NAME")), pending);
        form.firstName = PlainText(rs.value(QStringLiteral("FIRST_NAME")), pending);
        form.phones = PlainText(rs.value(QStringLiteral("PHONES")), pending);
        form.address = rs.value(QStringLiteral("ADDRESS")).toString();
        form.invNum = PlainText(rs.value(QStringLiteral("INV_NUM")), pending);
        if (const auto group = GroupText(state, rs.value(QStringLiteral("LIST_GROUP"))))
            form.group = *group;
        else if (state.NumOfGroups > 0)
            pending.fail(9, QStringLiteral("הקבוצה של ההזמנה אינה קיימת."));
        form.remark = PlainText(rs.value(QStringLiteral("REMARK")), pending);
        form.invSent = rs.value(QStringLiteral("INV_STATUS")).toBool();
        const int confirm = rs.value(QStringLiteral("CONFIRM")).toInt();
        form.confirmOk = confirm == 1;
        form.confirmNotOk = confirm == 2;
        form.confirmUnknown = confirm == 3;
        form.tableNo = rs.value(QStringLiteral("TABLE_NO")).toString();
        form.present = rs.value(QStringLiteral("PRESENT")).toString();
        const QVariant kind = rs.value(QStringLiteral("PRESENT_TYPE"));
        form.gift = kind.isNull() ? InvitationForm::Gift::Cheque
                  : kind.toInt() == 2 ? InvitationForm::Gift::Other
                  : kind.toInt() == 1 ? InvitationForm::Gift::Cash
                                      : InvitationForm::Gift::Cheque;
    });
    return form;
}

} // namespace velmora::guests
