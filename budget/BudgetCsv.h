#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::budget {

// The budget for a spreadsheet: each branch with its amount as a plain number, then the
// total. Reads the wedding's database; a failure is thrown.
QByteArray BudgetCsv(const QString& databaseFile);
// Asks for a file and writes the budget there; a failed read is told.
bool ExportBudget(const WeddingState& state, Prompts& prompts);

} // namespace velmora::budget
