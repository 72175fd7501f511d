#pragma once

#include "seating/AutoSeat.h"
#include "seating/SeatingRun.h"

#include <QDialog>

#include <functional>

class QAction;
class QCheckBox;
class QMenu;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

// Automatic seating: the user chooses who is seated and where, sees the result, and applies
// it; the last applied seating can be taken back for as long as the program runs.
class AutoSeatWindow : public QDialog {
    Q_OBJECT

public:
    // `refresh` is the list's and the map's refresh after the rows changed.
    AutoSeatWindow(WeddingState& state, Prompts& prompts, std::function<void()> refresh, QWidget* parent = nullptr);

    // Reads the list and works out the seating for the present choices; shows it.
    void compute();
    // Stores the result shown and closes; false when nothing was stored.
    bool apply();
    bool canUndo() const { return !m_undo.empty(); }
    // "בטל הושבה אוטומטית": every row the last seating changed gets its earlier table back.
    void undo();

    seating::SeatChoice choice() const;
    const seating::SeatPlan& plan() const { return m_plan; }
    bool hasResult() const { return m_hasResult; }

    QRadioButton* optUnseated() const { return m_optUnseated; }
    QRadioButton* optAllComing() const { return m_optAllComing; }
    QCheckBox* chkUnsure() const { return m_chkUnsure; }
    QCheckBox* chkKeepSeated() const { return m_chkKeep; }
    QLineEdit* txtTables() const { return m_txtTables; }
    QPushButton* cmdCompute() const { return m_cmdCompute; }
    QPushButton* cmdApply() const { return m_cmdApply; }
    QLabel* lblResult() const { return m_lblResult; }
    QTreeWidget* lstTables() const { return m_lstTables; }
    QTreeWidget* lstSplit() const { return m_lstSplit; }

signals:
    void undoAvailable(bool available);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void forgetResult();
    void showResult();
    QString groupName(const QString& group) const;

    WeddingState& m_state;
    Prompts& m_prompts;
    std::function<void()> m_refresh;
    seating::SeatingList m_list;
    seating::SeatPlan m_plan;
    bool m_hasResult = false;
    seating::SeatingUndo m_undo;

    QRadioButton* m_optUnseated = nullptr;
    QRadioButton* m_optAllComing = nullptr;
    QCheckBox* m_chkUnsure = nullptr;
    QCheckBox* m_chkKeep = nullptr;
    QLineEdit* m_txtTables = nullptr;
    QPushButton* m_cmdCompute = nullptr;
    QPushButton* m_cmdApply = nullptr;
    QLabel* m_lblResult = nullptr;
    QTreeWidget* m_lstTables = nullptr;
    QTreeWidget* m_lstSplit = nullptr;
};

// Adds "הושבה אוטומטית..." and "בטל הושבה אוטומטית" to a menu, before `before` (at the end
// when null), named `prefix` + "AutoSeat" and `prefix` + "UndoAutoSeat"; the undo entry is
// enabled while there is a seating to take back.
void AddAutoSeatEntries(AutoSeatWindow& window, QMenu* menu, QAction* before, const QString& prefix);

} // namespace velmora::ui
