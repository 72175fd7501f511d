#pragma once

#include "store/Engine.h"

#include <QString>

#include <functional>
#include <optional>

namespace velmora {
class PendingFailure;
struct WeddingState;
}

namespace velmora::guests {

// What the invitation dialog holds, as the user typed and ticked it.
struct InvitationForm {
    enum class Gift { Cheque, Cash, Other };

    QString familyName;
    QString firstName;
    QString phones;
    QString address;
    QString invNum = QStringLiteral("2");
    QString group;
    QString remark;
    bool confirmOk = false;
    bool confirmNotOk = false;
    bool confirmUnknown = false;
    QString tableNo;
    bool invSent = false;
    Gift gift = Gift::Cheque;
    QString present;

    int confirm() const { return confirmOk ? 1 : confirmNotOk ? 2 : confirmUnknown ? 3 : 0; }
    bool moneyGift() const { return gift != Gift::Other; }
};

// The people a table holds as the table map tells them.
using SeatedCountFn = std::function<quint8(int table)>;

// The checks of a save, in their order: the message of the first that fails, or nothing.
// `ownPeople` are the people of the row being updated that already count at the table.
std::optional<QString> CheckInvitation(const WeddingState& state, const InvitationForm& form,
                                       const SeatedCountFn& seatedCount, int ownPeople);

// The people of the open row that count at `table` already: its stored INV_NUM when it
// sits at that table.
int OwnPeople(const store::Recordset& row, int table);

// LIST_GROUP for the group box's text; 0 when it names no group.
int GroupIndex(const WeddingState& state, const QString& groupText);
// The group box's text for a stored LIST_GROUP; nothing when it names no group.
std::optional<QString> GroupText(const WeddingState& state, const QVariant& listGroup);

// What the duplicate test says when another row carries the pair.
inline const QString DuplicateMessage = QStringLiteral("קיימת כבר הזמנה זהה ברשימה.");

// Walks from the first row to the row of the pair; false (and at the end) when none.
bool FindPair(store::Recordset& rs, const QString& familyName, const QString& firstName);
// True when another row than the one at `skipPosition` (-1: none) carries the pair.
// The record set is put back where it stood.
bool IsDuplicate(store::Recordset& rs, const QString& familyName, const QString& firstName, int skipPosition);

// Writes every field of the form into the row in AddNew or Edit mode. Adding keeps a
// table of "0" as 0; an update stores it as no table.
void WriteInvitation(store::Recordset& rs, const InvitationForm& form, int groupIndex, bool adding);
// The form as the row holds it; a value the form can't show is kept as a failure and the
// rest still filled.
InvitationForm ReadInvitation(const WeddingState& state, const store::Recordset& rs, const QString& openingGroup,
                              PendingFailure& pending);

} // namespace velmora::guests
