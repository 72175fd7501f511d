#pragma once

// The wedding's budget: one row of thirty amounts in VELMORA_BUDGET, shown and edited as
// the texts of thirty boxes. The window keeps its own connection for as long as it is
// open; everything here works on the box texts, so it runs without the window.

#include "store/Currency.h"
#include "store/Engine.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::budget {

inline constexpr int BranchCount = 30;

namespace messages {
inline const QString NotNumeric = QStringLiteral("השדות חייבים להכיל ערך מיספרי בלבד.");
inline const QString FieldTooLarge = QStringLiteral("אחד השדות גדול מהערך המקסימלי המותר");
inline const QString TotalTooLarge = QStringLiteral("התקציב הכולל גדול מהערך המקסימלי המותר");
inline const QString Printed = QStringLiteral("המאזן התקציבי הודפס");
} // namespace messages

// The largest leading number a box may hold when saved; the store takes the rest.
inline constexpr double LargestField = 922337203685477.0;

// The numeric test of a box: the whole text is an amount (Currency::isAmountText).
bool IsNumericBox(const QString& text);

// The first box that holds text and isn't a number, or -1 when every box passes; an
// empty or all-blank box passes.
int FirstInvalidBox(const QStringList& boxes);

// The total of the boxes as they stand, each box by its leading number rounded to
// currency. An overflow or any other error is told once and gives 0.
store::Currency SumOfBudget(const QStringList& boxes, Prompts& prompts);

// The total as the window shows it: through a double, up to 15 significant digits.
QString SumText(store::Currency total);

// The budget row through the window's own connection.
class BudgetLedger {
public:
    // Opens the wedding's database; a failure is thrown.
    void open(const QString& databaseFile);
    // Closes the rows, then the connection, ignoring failures of either.
    void close();
    bool isOpen() const { return m_db.isOpen(); }
    bool isNew() const { return m_isNew; }

    // The box texts from the table, and `sqlText` set to its query: thirty "0" for an
    // empty table, else each field's plain number. A failure is thrown.
    QStringList load(QString& sqlText);

    enum class Outcome { Invalid, TooLarge, Saved };
    // Checks the boxes in order (a box that is no number gets the focus through
    // `focusBox`, then the message), then stores their texts; a field that refuses its
    // text keeps its value, and a row the store refuses stays as it was, without a word.
    // The caller reloads after Saved.
    Outcome save(const QStringList& boxes, Prompts& prompts, const std::function<void(int box)>& focusBox);

private:
    store::Database m_db;
    store::Recordset m_rs;
    bool m_isNew = true;
};

} // namespace velmora::budget
