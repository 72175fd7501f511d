#include "printing/PagePainter.h"

#include "app/Twips.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace velmora::printing {

namespace {

// One pixel of the screen the designs were drawn on.
constexpr double HairlineTwips = double(TwipsPerInch) / ScreenDpi;
// Text keeps this far from the sides of its box, so that the columns of a table don't run together.
constexpr double TextInset = HairlineTwips;
// Narrower than this a line no longer reads; what is left over is cut at the box's edge.
// The limit is the width a glyph keeps: three quarters of the list's 9.75-point text, so a
// larger font (a name on a seating note) may narrow further before anything is cut.
constexpr double MinNarrowing = 0.75;
constexpr double MinNarrowedPoints = MinNarrowing * 9.75;

// Fonts are sized in twips, the unit the painter works in, so no device's idea of its own
// resolution changes a size.
QFont fontFor(const FontSpec& style)
{
    QFont font(style.family);
    font.setPixelSize(std::max(1, int(std::lround(pointsToTwips(style.points)))));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    font.setStrikeOut(style.strikeOut);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

Qt::LayoutDirection fieldDirection(const QString& text)
{
    for (const QChar c : text) {
        const QChar::Direction kind = c.direction();
        if (kind == QChar::DirL)
            return Qt::LeftToRight;
        if (kind == QChar::DirR || kind == QChar::DirAL)
            break;
    }
    return Qt::RightToLeft;
}

Qt::Alignment alignmentFor(TextAlign align)
{
    switch (align) {
    case TextAlign::Left:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    case TextAlign::Centre:
        return Qt::AlignHCenter;
    case TextAlign::Right:
        break;
    }
    return Qt::AlignRight | Qt::AlignAbsolute;
}

QPen borderPen(const PlacedItem& item)
{
    QPen pen(item.color, HairlineTwips);
    pen.setStyle(item.borderStyle == BorderStyle::Dotted ? Qt::DotLine : Qt::SolidLine);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

class TextPainter {
public:
    void paint(QPainter& painter, const PlacedItem& item)
    {
        if (item.background.isValid())
            painter.fillRect(QRectF(item.rect), item.background);
        if (item.text.isEmpty())
            return;
        const QRectF box = QRectF(item.rect).adjusted(TextInset, 0, -TextInset, 0);
        if (!(item.font == m_spec) || !m_valid) {
            m_spec = item.font;
            m_font = fontFor(item.font);
            m_valid = true;
        }
        QTextLayout layout(item.text, m_font);
        QTextOption option(alignmentFor(item.alignment));
        // A field's value reads right to left, as the grid shows it, unless its first letter is
        // Latin: an address abroad ("12 Rue ...") keeps its number in front on an envelope. The
        // program's own texts read by their first character.
        const Qt::LayoutDirection direction = item.fromField ? fieldDirection(item.text) : textDirection(item.text);
        option.setTextDirection(direction);
        // Only a box with room for a second line wraps, and then at blanks; in a box of one
        // line's height the line stays whole and is narrowed or cut at the box's edge.
        const QFontMetricsF metrics(m_font);
        const bool wraps = box.height() >= 2 * metrics.height();
        option.setWrapMode(wraps ? QTextOption::WordWrap : QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.setCacheEnabled(true);
        layout.beginLayout();
        // The first line always prints; the others only where the box has room for them.
        int shown = 0;
        qreal y = 0;
        for (;;) {
            QTextLine line = layout.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(box.width());
            if (shown > 0 && y + line.height() > box.height())
                break;
            line.setPosition(QPointF(0, y));
            y += line.height();
            ++shown;
        }
        layout.endLayout();
        painter.setPen(item.color);
        const QPointF origin = box.topLeft();
        // Underline and strike-out are drawn under the text only, not across the whole line.
        for (int i = 0; i < shown; ++i) {
            const QTextLine line = layout.lineAt(i);
            const QRectF ink = line.naturalTextRect().translated(origin);
            // A line a little wider than its box is narrowed to fit; a much longer one is
            // narrowed as far as it stays readable and cut where the box ends, its beginning
            // kept at the box's side it reads from.
            const bool narrowed = ink.width() > box.width();
            if (narrowed) {
                const qreal floor = std::min(MinNarrowing, MinNarrowedPoints / std::max(item.font.points, 1.0));
                const qreal factor = std::max(box.width() / ink.width(), floor);
                // The cut keeps the side the text begins at: a Latin name in a field that reads
                // right to left still begins at its left.
                const bool fromRight = direction == Qt::RightToLeft && item.text.isRightToLeft();
                painter.save();
                if (factor > box.width() / ink.width()) {
                    const qreal top = item.rect.top() - item.rect.height();
                    painter.setClipRect(QRectF(item.rect.left(), top, item.rect.width(), 3.0 * item.rect.height()),
                                        Qt::IntersectClip);
                }
                painter.translate(fromRight ? box.right() : box.left(), 0);
                painter.scale(factor, 1);
                painter.translate(-(fromRight ? ink.right() : ink.left()), 0);
            }
            for (QGlyphRun run : line.glyphRuns()) {
                run.setUnderline(false);
                run.setStrikeOut(false);
                run.setOverline(false);
                painter.drawGlyphRun(origin, run);
            }
            const qreal baseline = origin.y() + line.y() + line.ascent();
            const qreal thickness = std::max<qreal>(metrics.lineWidth(), 1);
            if (m_font.underline())
                painter.fillRect(QRectF(ink.left(), baseline + metrics.underlinePos(), ink.width(), thickness), item.color);
            if (m_font.strikeOut())
                painter.fillRect(QRectF(ink.left(), baseline - metrics.strikeOutPos(), ink.width(), thickness), item.color);
            if (narrowed)
                painter.restore();
        }
    }

private:
    FontSpec m_spec;
    QFont m_font;
    bool m_valid = false;
};

void paintPicture(QPainter& painter, const PlacedItem& item)
{
    const QRectF box(item.rect);
    switch (item.sizeMode) {
    case SizeMode::Stretch:
        painter.drawImage(box, item.picture);
        return;
    case SizeMode::Zoom: {
        QSizeF size = QSizeF(item.picture.size()).scaled(box.size(), Qt::KeepAspectRatio);
        QRectF target(QPointF(), size);
        target.moveCenter(box.center());
        painter.drawImage(target, item.picture);
        return;
    }
    case SizeMode::Clip:
        break;
    }
    // The picture's own size: its resolution when it has one, the screen's when not.
    const QRectF natural(box.topLeft(), QSizeF(item.picture.size()) * twipsPerDot(item.picture.dotsPerMeterX()));
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    painter.drawImage(natural, item.picture);
    painter.restore();
}

} // namespace

Qt::LayoutDirection textDirection(const QString& text)
{
    if (text.isEmpty())
        return Qt::RightToLeft;
    const QChar::Direction first = text.at(0).direction();
    return first == QChar::DirR || first == QChar::DirAL ? Qt::RightToLeft : Qt::LeftToRight;
}

void paintPage(QPainter& painter, const Page& page, double dpi)
{
    painter.save();
    // Pages stand on paper the same way whichever window paints them.
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.scale(dpi / TwipsPerInch, dpi / TwipsPerInch);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    TextPainter text;
    for (const PlacedItem& item : page.items) {
        switch (item.kind) {
        case ItemKind::Text:
            text.paint(painter, item);
            break;
        case ItemKind::Picture:
            paintPicture(painter, item);
            break;
        case ItemKind::Line:
            painter.setPen(borderPen(item));
            painter.drawLine(QPointF(item.rect.topLeft()),
                             QPointF(item.rect.left() + item.rect.width(), item.rect.top() + item.rect.height()));
            break;
        case ItemKind::Rectangle:
        case ItemKind::RoundedRectangle: {
            painter.setPen(borderPen(item));
            painter.setBrush(item.background.isValid() ? QBrush(item.background) : QBrush(Qt::NoBrush));
            const QRectF box(item.rect);
            if (item.kind == ItemKind::Rectangle) {
                painter.drawRect(box);
            } else {
                const double radius = std::min(box.width(), box.height()) / 8;
                painter.drawRoundedRect(box, radius, radius);
            }
            painter.setBrush(Qt::NoBrush);
            break;
        }
        }
    }
    painter.restore();
}

} // namespace velmora::printing
