#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

#include <vector>

namespace velmora::printing {
class PrinterCanvas;
}

namespace velmora::seating {

// One table as the map shows it now, unsaved drags included.
struct MapTable {
    QPointF place; // twips from the map's top left corner
    QString caption;
    QImage icon;
};

// The map on paper, one twip of the screen's map to one twip of the page: the title with
// the group the main list shows, the garden's picture, every table's icon with its caption
// 500 twips below it and 300 to its left, and the footer low on the page.
void DrawTableMap(printing::PrinterCanvas& printer, const QString& group, const QImage& garden,
                  const std::vector<MapTable>& tables);

} // namespace velmora::seating
