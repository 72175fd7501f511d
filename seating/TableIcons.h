#pragma once

#include <QImage>

namespace velmora::seating {

// The map's pictures, drawn rather than shipped.
// One table: a dark red disc on white with its number in cream.
QImage tableNumberIcon(int number, int size = 32);
// A round table with chairs around it, for the buttons that open the map or a table.
QImage roundTableIcon(int size = 48);
// The two views of the map, for its toolbar.
QImage mapViewIcon(int size = 16);
QImage listViewIcon(int size = 16);

} // namespace velmora::seating
