#include "seating/ui/TableMapWindow.h"

#include "app/Twips.h"
#include "app/WeddingState.h"

#include <QCloseEvent>

namespace velmora::ui {

TableMapWindow::TableMapWindow(WeddingState& state, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowCloseButtonHint | Qt::WindowTitleHint), m_state(state)
{
    setObjectName(QStringLiteral("frmTableMap"));
    setWindowTitle(QStringLiteral("מפת השולחנות של כול האורחים"));
    setAccessibleName(windowTitle());
    setFixedSize(twipsToPixels(10815), twipsToPixels(6030));
}

void TableMapWindow::InitTableSetting() {}

void TableMapWindow::InitTableView(int mode)
{
    m_state.TableViewMode = quint8(mode);
}

void TableMapWindow::ChangeTableViewMode(int mode)
{
    InitTableView(mode);
}

void TableMapWindow::closeEvent(QCloseEvent* event)
{
    // The map only hides until the program ends.
    if (ProgramClosing) {
        event->accept();
        return;
    }
    event->ignore();
    hide();
}

} // namespace velmora::ui
