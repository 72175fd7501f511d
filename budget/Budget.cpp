#include "budget/Budget.h"

#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "store/Schema.h"

namespace velmora::budget {

using store::Currency;

namespace {

const QString BudgetSql = QStringLiteral("select * from VELMORA_BUDGET");

template <class Step>
void skipFailure(Step&& step)
{
    try {
        step();
    } catch (const Failure&) {
    }
}

} // namespace

bool IsNumericBox(const QString& text)
{
    return Currency::isAmountText(text);
}

int FirstInvalidBox(const QStringList& boxes)
{
    for (int i = 0; i < boxes.size(); ++i) {
        if (!IsNumericBox(boxes[i]) && !Trim(boxes[i]).isEmpty())
            return i;
    }
    return -1;
}

Currency SumOfBudget(const QStringList& boxes, Prompts& prompts)
{
    Currency total;
    bool overflow = false;
    for (const QString& box : boxes) {
        // A box that fails leaves the sum as it was; the others still count.
        const std::optional<Currency> amount = Currency::fromDouble(LeadingNumber(box, true));
        const std::optional<Currency> sum = amount ? Currency::add(total, *amount) : std::nullopt;
        if (sum)
            total = *sum;
        else
            overflow = true;
    }
    if (overflow) {
        prompts.message(messages::TotalTooLarge);
        return Currency{};
    }
    return total;
}

QString SumText(Currency total)
{
    // The amount's exact text read back as a double: the total shows as a plain number of
    // at most 15 significant digits, the exponent form beyond.
    const double shown = total.toString().toDouble();
    QString text = QString::number(shown, 'g', 15);
    text.replace(u'e', u'E');
    return text;
}

void BudgetLedger::open(const QString& databaseFile)
{
    m_db = store::Database::open(databaseFile);
}

void BudgetLedger::close()
{
    skipFailure([&] { m_rs.close(); });
    skipFailure([&] { m_db.close(); });
}

QStringList BudgetLedger::load(QString& sqlText)
{
    sqlText = BudgetSql;
    m_rs = m_db.openRecordset(sqlText);
    QStringList boxes;
    if (m_rs.eof()) {
        for (int i = 0; i < BranchCount; ++i)
            boxes << QStringLiteral("0");
        m_isNew = true;
        return boxes;
    }
    m_rs.moveFirst();
    for (const store::BudgetBranch& branch : store::budgetBranches()) {
        QString text = QStringLiteral("0");
        skipFailure([&] {
            const QVariant value = m_rs.value(branch.field);
            if (value.isValid())
                text = value.value<Currency>().toString();
        });
        boxes << text;
    }
    m_isNew = false;
    return boxes;
}

BudgetLedger::Outcome BudgetLedger::save(const QStringList& boxes, Prompts& prompts,
                                         const std::function<void(int box)>& focusBox)
{
    const int invalid = FirstInvalidBox(boxes);
    if (invalid >= 0) {
        focusBox(invalid);
        prompts.message(messages::NotNumeric);
        return Outcome::Invalid;
    }
    skipFailure([&] {
        if (m_isNew)
            m_rs.addNew();
        else
            m_rs.edit();
    });
    for (const QString& box : boxes) {
        if (LeadingNumber(box, true) > LargestField) {
            skipFailure([&] { m_rs.cancelUpdate(); });
            prompts.message(messages::FieldTooLarge);
            return Outcome::TooLarge;
        }
    }
    const std::vector<store::BudgetBranch>& branches = store::budgetBranches();
    for (int i = 0; i < boxes.size() && i < int(branches.size()); ++i) {
        // The store converts the text itself; a field that refuses it keeps its value.
        skipFailure([&] {
            const int index = m_rs.fieldIndex(branches[size_t(i)].field);
            if (index < 0)
                return;
            m_rs.setValue(branches[size_t(i)].field, store::convertForField(m_rs.fieldDef(index), boxes[i]));
        });
    }
    skipFailure([&] { m_rs.update(); });
    skipFailure([&] { m_rs.cancelUpdate(); }); // a refused row leaves no edit behind
    return Outcome::Saved;
}

} // namespace velmora::budget
