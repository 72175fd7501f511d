#pragma once

#include <QGraphicsItem>
#include <QGraphicsView>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <vector>

class QAction;
class QMenu;
class QStackedWidget;
class QToolBar;
class QTreeWidget;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class TableWindow;

// One table on the map: its icon with the caption under it. The caption is not editable:
// the people at the table are read back from it.
class TableMapItem : public QGraphicsItem {
public:
    TableMapItem(int number, const QPixmap& icon);

    int number() const { return m_number; }
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    // Left and top in twips from the map's top left corner.
    QPointF twips() const;
    void setTwips(const QPointF& twips);

    static QSizeF cellSize();
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    int m_number;
    QPixmap m_icon;
    QString m_text;
};

// The map view: the garden's picture at its natural size from the top left corner, and
// the table icons the user drags over it.
class TableMapView : public QGraphicsView {
    Q_OBJECT

public:
    explicit TableMapView(QWidget* parent = nullptr);
    void setBackgroundPicture(const QPixmap& picture);
    void clearBackgroundPicture();
    const QPixmap& backgroundPicture() const { return m_picture; }
    TableMapItem* itemNumber(int number) const;

signals:
    void itemPressed(int number);
    void clicked();
    void doubleClicked();
    void contextMenuWanted(const QPoint& globalPos);
    void focusGained();

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    QPixmap m_picture;
};

// The map of all tables, as icons over the garden or as a detailed list. Built hidden at
// start and kept for the whole run; closing it only hides it until the program ends.
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

    // The people at a table as its item's caption tells them.
    quint8 SeatedCount(int table) const;
    int itemCount() const { return int(m_items.size()); }
    TableMapItem* item(int table) const;
    QString itemText(int table) const;
    QString itemNames(int table) const; // the detailed list's second column
    void selectTable(int table);       // as a click on the table would
    std::vector<QPointF> itemPositions() const;

    TableMapView* mapView() const { return m_map; }
    QTreeWidget* detailList() const { return m_details; }
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
    void syncSelection();

    WeddingState& m_state;
    Prompts& m_prompts;
    bool m_loaded = false;
    QString GardenMapFile;
    int m_selected = 0;

    QToolBar* m_toolbar = nullptr;
    std::array<QAction*, 10> m_buttons{};
    QStackedWidget* m_stack = nullptr;
    TableMapView* m_map = nullptr;
    QGraphicsScene* m_scene = nullptr;
    QTreeWidget* m_details = nullptr;
    QMenu* m_popup = nullptr;
    std::vector<TableMapItem*> m_items;
    TableWindow* m_tableWindow = nullptr;
};

} // namespace velmora::ui
