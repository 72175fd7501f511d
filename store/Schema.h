#pragma once

#include "store/Engine.h"

#include <QString>

#include <vector>

namespace velmora {
class PendingFailure;
class Prompts;
struct WeddingState;
}

namespace velmora::store {

inline const QString ListTable = QStringLiteral("VELMORA_LIST");
inline const QString BudgetTable = QStringLiteral("VELMORA_BUDGET");
inline const QString DatabaseLocale = QStringLiteral(";LANGID=0x0409;CP=1252;COUNTRY=0");
inline constexpr int DatabaseVersion = 32;

// The invitations' table, field by field in file order.
const std::vector<FieldDef>& listFields();

struct BudgetBranch {
    QString field;
    QString label;
};
// The thirty budget branches in file order; every one a required Currency field.
const std::vector<BudgetBranch>& budgetBranches();
std::vector<FieldDef> budgetFields();

// Builds a table field by field and appends it; a failed step is passed over and kept
// in `pending`, and the following steps still run.
void appendTable(Database& db, const QString& name, const std::vector<FieldDef>& fields, PendingFailure& pending);

// Creates AppPath + "Velmora.mdb" with both tables and leaves it open in WeddingDb.
// Reports success, or a critical failure; false means the program must end.
bool CreateNewDatabase(WeddingState& state, Prompts& prompts);

} // namespace velmora::store
