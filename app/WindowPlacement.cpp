#include "app/WindowPlacement.h"

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

// How far a point lies outside an area, in steps along the axes; no sum can overflow.
qint64 distance(const QRect& area, QPoint point)
{
    const qint64 dx = std::max({qint64(area.left()) - point.x(), qint64(0), qint64(point.x()) - area.right()});
    const qint64 dy = std::max({qint64(area.top()) - point.y(), qint64(0), qint64(point.y()) - area.bottom()});
    return dx + dy;
}

} // namespace

Placement PlaceOnScreens(const StoredPlacement& stored, QSize built, QSize minimum, const QList<QRect>& screens,
                         const QMargins& frame)
{
    Placement placement;
    const int width = stored.width.value_or(0) > 0 ? *stored.width : built.width();
    const int height = stored.height.value_or(0) > 0 ? *stored.height : built.height();
    placement.size = QSize(width, height).expandedTo(minimum);
    if (screens.isEmpty())
        return placement; // nowhere to check a position against: the window system chooses
    QRect area = screens.first();
    const bool positioned = stored.left && stored.top;
    if (positioned) {
        const QPoint corner(*stored.left, *stored.top);
        qint64 nearest = std::numeric_limits<qint64>::max();
        for (const QRect& screen : screens) {
            if (const qint64 d = distance(screen, corner); d < nearest) {
                nearest = d;
                area = screen;
            }
        }
    }
    const QSize frameSize(frame.left() + frame.right(), frame.top() + frame.bottom());
    placement.size = placement.size.boundedTo(area.size() - frameSize);
    if (positioned) {
        const QSize outer = placement.size + frameSize;
        placement.position = QPoint(std::clamp(*stored.left, area.left(), area.right() + 1 - outer.width()),
                                    std::clamp(*stored.top, area.top(), area.bottom() + 1 - outer.height()));
    }
    return placement;
}

} // namespace velmora
