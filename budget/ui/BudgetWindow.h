#pragma once

#include "budget/Budget.h"
#include "printing/ui/PrintIcon.h"

#include <QLabel>
#include <QWidget>

#include <array>

class QLineEdit;
class QPushButton;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

// frmBudget: the thirty budget branches and their total, in a window of its own beside
// the guest list. It holds its own connection to the database while it is open and is
// deleted when closed, so that unsaved text goes with it.
class BudgetWindow : public QWidget {
    Q_OBJECT

public:
    BudgetWindow(WeddingState& state, Prompts& prompts, QWidget* parent = nullptr);
    ~BudgetWindow() override;

    void LoadBudget();
    // Lets go of the connection and opens the wedding's database anew, as after an import.
    void reopen();
    store::Currency SumOfBudget();
    bool budgetIsNew() const { return m_ledger.isNew(); }
    QStringList boxTexts() const;

    // The commands, as the buttons and the icon run them.
    void cmdUpdate_Click();
    void imgPrint_DblClick();

    std::array<QLineEdit*, budget::BranchCount> txtBudgetBranch{};
    QLabel* lblTitle = nullptr;
    QLabel* lblDate = nullptr;
    QLabel* lblSum = nullptr;
    PrintIcon* imgPrint = nullptr;
    QPushButton* cmdUpdate = nullptr;

private:
    void build();

    WeddingState& m_state;
    Prompts& m_prompts;
    budget::BudgetLedger m_ledger;
};

} // namespace velmora::ui
