#include "budget/BudgetCsv.h"

#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "budget/Budget.h"
#include "store/CsvText.h"
#include "store/Schema.h"

namespace velmora::budget {

QByteArray BudgetCsv(const QString& databaseFile)
{
    BudgetLedger ledger;
    ledger.open(databaseFile);
    QString sql;
    QStringList amounts;
    try {
        amounts = ledger.load(sql);
    } catch (...) {
        ledger.close();
        throw;
    }
    ledger.close();

    QByteArray out = store::CsvBom();
    store::AppendCsvRow(out, {QStringLiteral("סעיף"), QStringLiteral("סכום")});
    std::optional<store::Currency> total = store::Currency{};
    const auto& branches = store::budgetBranches();
    for (int i = 0; i < BranchCount && i < amounts.size(); ++i) {
        store::AppendCsvRow(out, {branches[size_t(i)].label, amounts[i]});
        const auto amount = store::Currency::fromAmountText(amounts[i]);
        total = total && amount ? store::Currency::add(*total, *amount) : std::nullopt;
    }
    // A total past what currency holds is left empty rather than shown wrong.
    store::AppendCsvRow(out, {QStringLiteral("ס\"כ הוצאות"), total ? total->toString() : QString()});
    return out;
}

bool ExportBudget(const WeddingState& state, Prompts& prompts)
{
    QByteArray bytes;
    try {
        bytes = BudgetCsv(state.databaseFile());
    } catch (const Failure& failure) {
        prompts.warning(failure.text());
        return false;
    }
    return store::SaveCsvFile(prompts, QStringLiteral("תקציב.csv"), state.AppPath, bytes);
}

} // namespace velmora::budget
