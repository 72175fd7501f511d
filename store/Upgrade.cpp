#include "store/Upgrade.h"

#include "app/PendingFailure.h"
#include "app/Product.h"
#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "store/Schema.h"

#include <array>

namespace velmora::store {

bool UpdateDatabase(WeddingState& state, Prompts& prompts, bool* locked)
{
    PendingFailure pending;
    bool changed = false;
    // The three fields the earlier layout lacked: the last three of the table.
    const auto& layout = listFields();
    const std::array<const FieldDef*, 3> added = {&layout[10], &layout[11], &layout[12]};
    std::array<bool, 3> found = {false, false, false};

    TableDef list;
    pending.attempt([&] {
        list = state.WeddingDb.tableDef(ListTable);
        for (int position = 0; position < list.fieldCount(); ++position) {
            for (size_t i = 0; i < added.size(); ++i) {
                if (list.field(position).name == added[i]->name)
                    found[i] = true;
            }
        }
    });
    for (size_t i = 0; i < added.size(); ++i) {
        if (found[i])
            continue;
        pending.attempt([&] {
            if (!list.attached())
                list = state.WeddingDb.tableDef(ListTable);
            FieldDef field = list.createField(added[i]->name, added[i]->type, added[i]->size);
            field.allowZeroLength = added[i]->allowZeroLength;
            field.required = added[i]->required;
            list.appendField(field);
            changed = true;
        });
    }

    bool budgetFound = false;
    bool scanned = pending.attempt([&] {
        for (int position = 0; position < state.WeddingDb.tableDefCount(); ++position) {
            if (state.WeddingDb.tableDef(position).name() == BudgetTable)
                budgetFound = true;
        }
    });
    if (scanned && !budgetFound) {
        const int before = pending.count();
        appendTable(state.WeddingDb, BudgetTable, budgetFields(), pending);
        changed = changed || pending.count() == before;
    }

    if (pending && pending.failure().number() == failures::Locked) {
        if (locked)
            *locked = true;
        pending.report(prompts);
        return false;
    }
    if (pending) {
        prompts.critical(QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה") + state.CrLf + product::WebAddress
                             + state.CrLf + product::SupportMail,
                         QStringLiteral("שדרוג גירסת תוכנה"));
        return false;
    }
    if (changed)
        prompts.message(QStringLiteral("תהליך שידרוג מבנה הנתונים הסתיים בהצלחה."));
    return true;
}

} // namespace velmora::store
