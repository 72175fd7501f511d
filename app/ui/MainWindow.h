#pragma once

#include "app/Settings.h"
#include "app/WindowPlacement.h"
#include "budget/ui/BudgetWindow.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "guests/ui/InvitationDialog.h"

#include <QMainWindow>
#include <QPointer>

#include <array>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QTableView;
class QToolBar;
class QTimer;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class TableMapWindow;
class AutoSeatWindow;

// The main window: the guest list and the frame around it. It dispatches; the work is
// done by the operations of the other folders.
class MainWindow : public QMainWindow, public InvitationHost {
    Q_OBJECT

public:
    MainWindow(WeddingState& state, Prompts& prompts, QWidget* parent = nullptr);

    // Reads the settings, makes the database when there is none and fills the list.
    // False when the program must end.
    bool load(TableMapWindow& tableMap);
    bool endRequested() const { return m_endRequested; }

    void ChangeMode(quint8& mode);
    void InitEvent();
    void InitList(const QString& group, const QString& order);
    void ResizeForm();
    bool CreateNewDatabase();

    // Commands and controls, by their design names.
    QAction* action(const QString& name) const;
    QTableView* grid() const { return m_grid; }
    guests::GuestListModel& listModel() { return m_model; }
    QLabel* panel(int number) const { return m_panels[size_t(number - 1)]; }
    QLabel* lblList() const { return m_lblList; }
    QLabel* lblWeddingCount() const { return m_lblWeddingCount; }
    QComboBox* cmbUserGroups() const { return m_cmbUserGroups; }
    QAction* toolButton(int number) const { return m_buttons[size_t(number - 1)]; }
    guests::ListView& listView() { return m_view; }
    QTimer* tmrDelay() const { return m_tmrDelay; }
    const QString& helpFile() const { return m_helpFile; }

    void ShowHideTablesMap();
    void AddNewInv();
    void UpdateInv();
    void RemoveRecord();
    // The phones of the current row to the dialer window.
    void DialNum();
    QMenu* popupMenu() const { return m_popup; }
    InvitationDialog* invitationDialog() const { return m_invDialog; }
    // frmBudget, modeless; made on each first press and gone when closed.
    void openBudget();
    BudgetWindow* budgetWindow() const { return m_budget; }
    AutoSeatWindow* autoSeatWindow() const { return m_autoSeat; }

    // The refresh after every change of the list or of what it shows: the list, then the map.
    void refreshList() override;
    void rememberGridPosition() override;
    void restoreGridPosition() override;
    quint8 seatedCount(int table) const override;
    // frmOptions, modal and owned by this window.
    void openOptions();
    // frmPrint on the page given (1 labels, 2 seating notes), modal; its print buttons
    // build the reports below once it is gone.
    void openPrintDesign(qint32 page);
    void PrintLabels();
    void PrintSittingNote();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildStatusBar();
    void buildControls();
    void wireCommands();
    void onToolbar(QAction* button);
    void onDelayTick();
    void mapHidden();
    void sortByColumn(int column);
    void toggleFilter(bool notComing);
    void followCurrentRow();
    void makeCurrentRow(int row);
    // The grid's selection: the current row and the row at its other end, as grid rows.
    std::pair<int, int> selectionEnds() const;
    InvitationDialog& invitation();
    void endProgram();
    int columnWidthTwips(int column) const;

    WeddingState& m_state;
    Prompts& m_prompts;
    UserStore m_store;
    TableMapWindow* m_tableMap = nullptr;
    guests::GuestListModel m_model;
    guests::ListView m_view;
    std::array<QString, 10> m_savedWidths;
    QSize m_designedSize;
    StoredPlacement m_storedPlacement;
    bool m_shownOnce = false;
    bool m_awaitingFrame = false; // shown, and the window system's frame not yet seen
    void placeOnScreens(const QMargins& frame);
    bool m_endRequested = false;
    bool m_loaded = false;

    QWidget* m_client = nullptr;
    QTableView* m_grid = nullptr;
    QLabel* m_lblWeddingCount = nullptr;
    QLabel* m_lblSelUserGroups = nullptr;
    QLabel* m_lblList = nullptr;
    QComboBox* m_cmbUserGroups = nullptr;
    QToolBar* m_toolbar = nullptr;
    QTimer* m_tmrDelay = nullptr;
    QString m_helpFile;
    InvitationDialog* m_invDialog = nullptr;
    QPointer<BudgetWindow> m_budget;
    AutoSeatWindow* m_autoSeat = nullptr;
    QMenu* m_popup = nullptr;
    int m_lastColumn = 0;
    std::array<QAction*, 14> m_buttons{};
    std::array<QLabel*, 7> m_panels{};
};

} // namespace velmora::ui
