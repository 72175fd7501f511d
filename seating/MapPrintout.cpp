#include "seating/MapPrintout.h"

#include "app/Product.h"
#include "app/Twips.h"
#include "printing/PrinterCanvas.h"

#include <cmath>

namespace velmora::seating {

namespace {

// Where the map's top left corner lies on the page.
constexpr int OffsetX = 600;
constexpr int OffsetY = 1700;

int twips(double position)
{
    return int(std::lround(position));
}

// On the screen the garden is shown a dot to a pixel, whatever resolution its file states;
// so it is on paper, beside the icons. A picture drawn at a higher pixel ratio keeps the
// size it has on the screen, in finer dots.
QImage asOnScreen(QImage picture)
{
    const int dotsPerMeter = int(std::lround(ScreenDpi * picture.devicePixelRatio() * 1000.0 / MmPerInch));
    picture.setDotsPerMeterX(dotsPerMeter);
    picture.setDotsPerMeterY(dotsPerMeter);
    return picture;
}

} // namespace

void DrawTableMap(printing::PrinterCanvas& printer, const QString& group, const QImage& garden,
                  const std::vector<MapTable>& tables)
{
    printer.CurrentX = 3700;
    printer.CurrentY = 500;
    printer.FontSize = 14;
    printer.FontBold = true;
    printer.Print(QStringLiteral("מפת השולחנות של ") + group);
    if (!garden.isNull())
        printer.PaintPicture(asOnScreen(garden), OffsetX, OffsetY);
    printer.FontSize = 8.28;
    printer.FontBold = false;
    for (const MapTable& table : tables) {
        if (!table.icon.isNull())
            printer.PaintPicture(asOnScreen(table.icon), twips(table.place.x() + OffsetX + 300),
                                 twips(table.place.y() + OffsetY));
        printer.CurrentX = twips(table.place.x() + OffsetX);
        printer.CurrentY = twips(table.place.y() + OffsetY + 500);
        printer.Print(table.caption);
    }
    printer.CurrentY = 14000;
    printer.Print(QString(14, u' ') + QString(100, u'_'));
    printer.Print(QString(15, u' ') + product::Title + QString(103, u' ') + product::WebAddress);
}

} // namespace velmora::seating
