#pragma once

#include <QList>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

namespace velmora {

// A window's placement as the per-user store holds it, in pixels: the outer top-left
// corner and the size of the client area. A part never stored, or not a number, is absent.
struct StoredPlacement {
    std::optional<int> left;
    std::optional<int> top;
    std::optional<int> width;
    std::optional<int> height;
};

struct Placement {
    std::optional<QPoint> position; // absent: the window system chooses
    QSize size;
};

// Brings a stored placement onto the screens there are now (their available areas): onto
// the screen that holds its top-left corner, or the nearest one when that monitor is gone;
// no larger than that screen and wholly on it, so its title bar can always be reached.
// Without a stored position only the size is given. The frame is what the window system
// draws around the client area (title bar, borders): it must fit on the screen too.
Placement PlaceOnScreens(const StoredPlacement& stored, QSize built, QSize minimum, const QList<QRect>& screens,
                         const QMargins& frame = {});

} // namespace velmora
