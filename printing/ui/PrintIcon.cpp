#include "printing/ui/PrintIcon.h"

#include "printing/ui/PrinterPicture.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace velmora::ui {

PrintIcon::PrintIcon(const QString& toolTip, QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setToolTip(toolTip);
    setAccessibleName(toolTip);
}

QSize PrintIcon::sizeHint() const
{
    return QSize(32, 32);
}

void PrintIcon::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int side = std::max(1, std::min(width(), height()) - 4);
    const QPixmap picture = printerPicture(side);
    painter.drawPixmap((width() - side) / 2, (height() - side) / 2, picture);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void PrintIcon::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void PrintIcon::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

void PrintIcon::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() == Qt::LeftButton)
        click();
}

void PrintIcon::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event); // Space presses it
}

} // namespace velmora::ui
