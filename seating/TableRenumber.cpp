#include "seating/TableRenumber.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"

#include <cmath>

namespace velmora::seating {

namespace {

const QString TableField = QStringLiteral("TABLE_NO");

// The row's table, 0 for none (Null included).
int tableOf(const store::Recordset& rs)
{
    const QVariant table = rs.value(TableField);
    return table.isNull() ? 0 : table.toInt();
}

} // namespace

quint8 TableNumberFromAnswer(const QString& answer)
{
    // "1e9" is a billion, not table 1.
    const double number = LeadingNumber(answer, true);
    // The remainder is taken against the nearest whole number, a half going to the even one.
    const double whole = number - std::remainder(number, 1.0);
    return whole >= 0 && whole <= 255 ? quint8(whole) : 0;
}

QString TableRangeMessage(int maxTables)
{
    return QString::number(maxTables) + QStringLiteral(" מספר השולחן צריך להיות מ 1 עד");
}

bool UpdateTableNum(WeddingState& state, Prompts& prompts, quint8 source)
{
    const QString answer = prompts.inputBox(QStringLiteral("בבקשה החלף את מספר השולחן?"), QStringLiteral("עדכון"),
                                            QString::number(source));
    if (answer.isEmpty())
        return false;
    const quint8 destination = TableNumberFromAnswer(answer);
    if (destination == 0 || destination > state.MaxTables) {
        prompts.message(TableRangeMessage(state.MaxTables));
        return false;
    }
    return ChangeTableNum(state, prompts, source, destination);
}

bool ChangeTableNum(WeddingState& state, Prompts& prompts, quint8 source, quint8 destination)
{
    PendingFailure passedOver;
    const bool opened = passedOver.attempt([&] {
        state.WeddingDb = store::Database::open(state.databaseFile());
        state.SqlText = QStringLiteral("select * from VELMORA_LIST");
        state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText);
    });
    if (!opened)
        return true; // the reload that follows tells what is wrong with the file
    store::Recordset& rs = state.WeddingRs;
    bool declined = false;
    for (; !rs.eof(); rs.moveNext()) {
        if (tableOf(rs) != destination)
            continue;
        declined = prompts.question(QStringLiteral("שולחן היעד אינו ריק, האם להחליף שולחנות?"),
                                    QStringLiteral("עדכון שולחנות"))
            != PromptAnswer::Yes;
        break;
    }
    if (!declined) {
        // Both tests in one pass: the two tables trade numbers without a third one between.
        if (rs.recordCount() > 0)
            rs.moveFirst();
        for (; !rs.eof(); rs.moveNext()) {
            const int table = tableOf(rs);
            if (table != source && table != destination)
                continue;
            const bool stored = passedOver.attempt([&] {
                rs.edit();
                rs.setValue(TableField, int(table == source ? destination : source));
                rs.update();
            });
            if (!stored)
                passedOver.attempt([&] { rs.cancelUpdate(); });
        }
    }
    passedOver.attempt([&] {
        rs.close();
        state.WeddingDb.close();
    });
    return !declined;
}

} // namespace velmora::seating
