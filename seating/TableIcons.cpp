#include "seating/TableIcons.h"

#include <QFont>
#include <QPainter>

#include <cmath>

namespace velmora::seating {

namespace {
const QColor DarkRed(0x80, 0x00, 0x00);
const QColor Cream(0xFF, 0xFB, 0xF0);

QImage blank(int size, const QColor& fill = Qt::transparent)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(fill);
    return image;
}
} // namespace

QImage tableNumberIcon(int number, int size)
{
    QImage image = blank(size, Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(DarkRed);
    painter.drawEllipse(QRectF(1, 1, size - 2, size - 2));
    QFont font(QStringLiteral("Arial"));
    font.setBold(true);
    font.setPixelSize(number >= 100 ? size * 5 / 16 : size * 7 / 16);
    painter.setFont(font);
    painter.setPen(Cream);
    painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, QString::number(number));
    return image;
}

QImage roundTableIcon(int size)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double c = size / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(DarkRed);
    for (int i = 0; i < 8; ++i) {
        const double angle = i * M_PI / 4;
        painter.drawEllipse(QPointF(c + 0.4 * size * std::cos(angle), c + 0.4 * size * std::sin(angle)), size / 12.0,
                            size / 12.0);
    }
    painter.setBrush(Cream);
    painter.setPen(QPen(DarkRed, size / 16.0));
    painter.drawEllipse(QPointF(c, c), size / 4.0, size / 4.0);
    return image;
}

QImage mapViewIcon(int size)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(DarkRed);
    const double r = size / 6.0;
    for (const QPointF& at : {QPointF(0.25, 0.3), QPointF(0.7, 0.25), QPointF(0.4, 0.75), QPointF(0.8, 0.7)})
        painter.drawEllipse(QPointF(at.x() * size, at.y() * size), r, r);
    return image;
}

QImage listViewIcon(int size)
{
    QImage image = blank(size);
    QPainter painter(&image);
    const int rows = 4;
    for (int i = 0; i < rows; ++i) {
        const int y = 1 + i * size / rows;
        painter.fillRect(QRect(0, y, size / 4, size / rows - 2), DarkRed);
        painter.fillRect(QRect(size / 3, y + 1, size - size / 3, size / rows - 4), QColor(60, 60, 60));
    }
    return image;
}

} // namespace velmora::seating
