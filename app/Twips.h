#pragma once

#include <QRect>
#include <QSizeF>

#include <cmath>

namespace velmora {

// Geometry of the design is in twips, 1440 to the inch; the screen has 96 logical pixels
// to the inch. All conversions go through here.
inline constexpr int TwipsPerInch = 1440;
inline constexpr int ScreenDpi = 96;

inline int twipsToPixels(double twips, int dpi = ScreenDpi)
{
    return int(std::lround(twips * dpi / TwipsPerInch));
}

inline int pixelsToTwips(int pixels, int dpi = ScreenDpi)
{
    return int(std::lround(double(pixels) * TwipsPerInch / dpi));
}

inline QRect twipsRect(int left, int top, int width, int height)
{
    return QRect(twipsToPixels(left), twipsToPixels(top), twipsToPixels(width), twipsToPixels(height));
}

} // namespace velmora

namespace velmora {
// Exact conversions for positions the user drags: no rounding either way.
inline double twipsToPixelsF(double twips, int dpi = ScreenDpi)
{
    return twips * dpi / TwipsPerInch;
}

inline double pixelsToTwipsF(double pixels, int dpi = ScreenDpi)
{
    return pixels * TwipsPerInch / dpi;
}
} // namespace velmora

namespace velmora {
// Paper sizes come in millimetres, fonts in points, pictures in dots to the metre.
inline constexpr double MmPerInch = 25.4;
inline constexpr int PointsPerInch = 72;

inline int mmToTwips(double mm)
{
    return int(std::lround(mm * TwipsPerInch / MmPerInch));
}

inline QSize mmToTwips(QSizeF mm)
{
    return QSize(mmToTwips(mm.width()), mmToTwips(mm.height()));
}

inline double pointsToTwips(double points)
{
    return points * TwipsPerInch / PointsPerInch;
}

// One dot of a picture with this resolution; one screen pixel when it has none.
inline double twipsPerDot(double dotsPerMeter)
{
    return dotsPerMeter > 0 ? TwipsPerInch * 1000.0 / (dotsPerMeter * MmPerInch) : double(TwipsPerInch) / ScreenDpi;
}
} // namespace velmora
