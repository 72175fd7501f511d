#include "printing/PrinterCanvas.h"

#include "app/Twips.h"

#include <QFont>
#include <QFontMetricsF>

#include <cmath>

namespace velmora::printing {

PrinterCanvas::PrinterCanvas(QSize page)
{
    m_out.paper = page;
    m_out.pages.emplace_back();
}

void PrinterCanvas::Print(const QString& text)
{
    FontSpec style;
    style.points = FontSize;
    style.bold = FontBold;
    QFont font(style.family);
    font.setPixelSize(std::max(1, int(std::lround(pointsToTwips(style.points))))); // twips, as the painter sizes it
    font.setBold(style.bold);
    const QFontMetricsF metrics(font);
    if (!text.isEmpty()) {
        PlacedItem item;
        item.kind = ItemKind::Text;
        // A little wider than the text, so that the painter never wraps it.
        item.rect = QRect(CurrentX, CurrentY, int(std::ceil(metrics.horizontalAdvance(text))) + 60,
                          int(std::ceil(metrics.height())));
        item.text = text;
        item.font = style;
        item.color = Qt::black;
        m_out.pages.back().items.push_back(std::move(item));
    }
    CurrentX = 0;
    CurrentY += int(std::lround(metrics.lineSpacing()));
}

void PrinterCanvas::PaintPicture(const QImage& picture, int x, int y)
{
    if (picture.isNull())
        return;
    const double dot = twipsPerDot(picture.dotsPerMeterX());
    PlacedItem item;
    item.kind = ItemKind::Picture;
    item.rect = QRect(x, y, int(std::lround(picture.width() * dot)), int(std::lround(picture.height() * dot)));
    item.picture = picture;
    item.sizeMode = SizeMode::Stretch;
    m_out.pages.back().items.push_back(std::move(item));
}

LaidOutReport PrinterCanvas::EndDoc()
{
    LaidOutReport done = std::move(m_out);
    m_out = LaidOutReport{done.paper, {}};
    m_out.pages.emplace_back();
    CurrentX = CurrentY = 0;
    return done;
}

} // namespace velmora::printing
