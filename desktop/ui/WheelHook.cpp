#include "desktop/ui/WheelHook.h"

#include "desktop/Wheel.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QWheelEvent>

namespace velmora::desktop::ui {

namespace {

const QString HookName = QStringLiteral("WheelHook");

class WheelHook : public QObject {
public:
    explicit WheelHook(QTableView& grid) : QObject(&grid), m_grid(grid)
    {
        setObjectName(HookName);
        // The list and its scroll bar both take the wheel.
        grid.viewport()->installEventFilter(this);
        grid.verticalScrollBar()->installEventFilter(this);
    }
    // No destructor of its own: Qt drops the filters of a deleted object by itself, and
    // as the grid's child the hook may go while the grid is half destroyed already.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel)
            return QObject::eventFilter(watched, event);
        const auto* wheel = static_cast<QWheelEvent*>(event);
        int zDelta = wheel->angleDelta().y();
        if (zDelta == 0)
            zDelta = wheel->pixelDelta().y();
        if (zDelta == 0 && wheel->angleDelta().x() != 0)
            return false; // a sideways wheel scrolls the columns as usual
        step(zDelta);
        return true;
    }

private:
    void step(int zDelta)
    {
        const int rows = m_grid.model() ? m_grid.model()->rowCount() : 0;
        const int topRow = std::max(0, m_grid.rowAt(0)) + 1;
        const int wanted = MouseWheel(topRow, rows, zDelta);
        if (wanted == topRow)
            return;
        // Through the scroll bar, which stops where the last row reaches the bottom.
        QScrollBar* bar = m_grid.verticalScrollBar();
        if (m_grid.verticalScrollMode() == QAbstractItemView::ScrollPerItem)
            bar->setValue(m_grid.verticalHeader()->visualIndex(wanted - 1));
        else
            bar->setValue(m_grid.verticalHeader()->sectionPosition(wanted - 1));
    }

    QTableView& m_grid;
};

} // namespace

void HookMouseWheel(QTableView& grid)
{
    if (!grid.findChild<QObject*>(HookName, Qt::FindDirectChildrenOnly))
        new WheelHook(grid);
}

void UnhookMouseWheel(QTableView& grid)
{
    delete grid.findChild<QObject*>(HookName, Qt::FindDirectChildrenOnly);
}

} // namespace velmora::desktop::ui
