#include "printing/ui/PrinterPicture.h"

#include <QIcon>
#include <QPainter>

namespace velmora::ui {

namespace {

// A printer drawn for the icon where the desktop's theme has none.
QPixmap drawnPrinter(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal u = side / 16.0;
    p.setPen(QPen(QColor(0x40, 0x40, 0x40), u * 0.6));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(4 * u, 1 * u, 8 * u, 5 * u)); // paper going in
    p.setBrush(QColor(0x90, 0x98, 0xA8));
    p.drawRoundedRect(QRectF(1 * u, 6 * u, 14 * u, 6 * u), u, u);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(4 * u, 10 * u, 8 * u, 5 * u)); // the page printed
    p.setPen(QPen(QColor(0x40, 0x40, 0x40), u * 0.5));
    p.drawLine(QPointF(5.5 * u, 12 * u), QPointF(10.5 * u, 12 * u));
    p.drawLine(QPointF(5.5 * u, 13.5 * u), QPointF(9 * u, 13.5 * u));
    p.setBrush(QColor(0x30, 0xB0, 0x30));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QPointF(12.5 * u, 8 * u), 0.8 * u, 0.8 * u);
    return pixmap;
}

} // namespace

QPixmap printerPicture(int side)
{
    const QIcon themed = QIcon::fromTheme(QStringLiteral("document-print"));
    return themed.isNull() ? drawnPrinter(side) : themed.pixmap(side, side);
}

} // namespace velmora::ui
