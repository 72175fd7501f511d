#include "guests/Removal.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/WeddingState.h"

namespace velmora::guests {

namespace {
QString quoted(QString text)
{
    return text.replace(u'\'', QStringLiteral("''"));
}
} // namespace

QString PairSql(const QString& familyName, const QString& firstName)
{
    return QStringLiteral("select * from VELMORA_LIST where FAMILY_NAME = '") + quoted(familyName)
        + QStringLiteral("' and FIRST_NAME = '") + quoted(firstName) + QStringLiteral("';");
}

bool RemoveInvitation(WeddingState& state, Prompts& prompts, const QString& familyName, const QString& firstName)
{
    PendingFailure pending;
    pending.attempt([&] {
        state.WeddingDb = store::Database::open(state.databaseFile());
        state.SqlText = PairSql(familyName, firstName);
        state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText);
    });
    if (state.WeddingRs.isOpen() && state.WeddingRs.recordCount() == 0) {
        prompts.message(QStringLiteral("רשימת המוזמנים ריקה."));
        pending.attempt([&] { state.WeddingDb.close(); });
        return false;
    }
    pending.attempt([&] {
        state.WeddingRs.moveFirst();
        state.WeddingRs.deleteCurrent();
    });
    pending.attempt([&] { state.WeddingDb.close(); });
    if (pending) {
        prompts.message(QStringLiteral("ארעה שגיאה בנסיון המחיקה."));
        return false;
    }
    return true;
}

} // namespace velmora::guests
