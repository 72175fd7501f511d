#pragma once

#include "seating/ui/TableWindow.h"

#include <QListView>
#include <QPointer>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QStackedWidget;
class QStandardItemModel;
class QToolBar;
class QTreeView;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class TableWindow;

// The map view: one icon with its caption for each table (row = table - 1), over the
// garden's picture at its natural size. Picture and tables share one origin, the top left
// corner of the list; a table's place is kept in twips, exactly as stored, and shown to the
// nearest pixel. The user drags a table with the mouse; the table taken last is drawn above
// the others. Being a list, every table reads to a screen reader and is selectable by keys.
class TableMapView : public QListView {
    Q_OBJECT

public:
    explicit TableMapView(QWidget* parent = nullptr);

    void setBackgroundPicture(const QPixmap& picture);
    void clearBackgroundPicture();
    const QPixmap& backgroundPicture() const { return m_picture; }

    QPointF place(int row) const;
    void setPlace(int row, const QPointF& twips);
    // After places changed from outside: the scrolling area covers them again.
    void fitScrollArea();

    static QSize cellSize();
    // Where a table's icon stands inside its cell.
    static QRect iconRect();

    void doItemsLayout() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void updateGeometries() override;

private:
    void applyPlace(int row);

    QPixmap m_picture;
    int m_topRow = -1; // the table taken last, drawn above all others
    int m_dragRow = -1;
    bool m_dragging = false;
    QPoint m_grab;      // where the mouse took the table, viewport pixels
    QPoint m_dragStart; // the table's top left corner then, contents pixels
};

// The map of all tables, as icons over the garden or as a detailed list: two views of one
// model sharing one selection. Built hidden at start and kept for the whole run; closing it
// only hides it until the program ends.
class TableMapWindow : public QWidget {
    Q_OBJECT

public:
    TableMapWindow(WeddingState& state, Prompts& prompts, QWidget* parent = nullptr);
    ~TableMapWindow() override;

    void InitTableSetting();
    void InitTableView(int viewMode);
    void ChangeTableViewMode(int viewMode);
    void ViewTable();
    void LoadTablePositions();
    void SaveTablePositions();
    bool TablePositionsChanged() const;
    void SetDefTableMap();
    void LoadGardenMap();
    void UpdateTableNum();
    void PrintTableMap();
    // What a renumbering ends in besides the map's refresh: the main list reloaded, and the
    // grid given the focus at its remembered rows.
    void setListReload(std::function<void()> reload) { m_reloadList = std::move(reload); }

    // The people at a table as its item's caption tells them.
    quint8 SeatedCount(int table) const;
    int itemCount() const;
    QString itemText(int table) const;
    QString itemNames(int table) const; // the detailed list's second column
    void selectTable(int table);       // as a click on the table would
    // A table's place on the map, twips from the list's top left corner.
    QPointF tablePlace(int table) const;
    void setTablePlace(int table, const QPointF& twips);
    std::vector<QPointF> itemPositions() const;

    TableMapView* mapView() const { return m_map; }
    QTreeView* detailList() const { return m_details; }
    QAction* toolButton(int index) const { return m_buttons[size_t(index - 1)]; }
    QAction* popupAction(const QString& name) const;
    QMenu* popupMenu() const { return m_popup; }
    TableWindow* tableWindow() const { return m_tableWindow; }
    const QString& gardenMapFile() const { return GardenMapFile; }

    bool ProgramClosing = false;

signals:
    // The window was closed by the user and is now hidden.
    void hiddenByClose();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ensureLoaded();
    void onToolbar(QAction* button);
    void onClick();
    void enableTableCommands(bool enabled);
    void askToSavePositions();
    QPointF automaticPosition(int index) const;
    void showPopup(QAbstractItemView* view, const QPoint& at);

    WeddingState& m_state;
    Prompts& m_prompts;
    bool m_loaded = false;
    QString GardenMapFile;
    int m_selected = 0;

    QToolBar* m_toolbar = nullptr;
    std::array<QAction*, 10> m_buttons{};
    QStackedWidget* m_stack = nullptr;
    QStandardItemModel* m_model = nullptr;
    TableMapView* m_map = nullptr;
    QTreeView* m_details = nullptr;
    QMenu* m_popup = nullptr;
    // Cleared by Qt when the window goes, even while the map itself is being destroyed.
    QPointer<TableWindow> m_tableWindow;
    std::function<void()> m_reloadList;
};

} // namespace velmora::ui
