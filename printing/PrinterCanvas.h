#pragma once

#include "printing/ReportLayout.h"

namespace velmora::printing {

// Drawing straight on the printer without a report, as the map's printout does: a place in
// twips and a font for the next text, lines of text and pictures in their own size. What it
// draws becomes laid-out pages, painted like a report's. Places count from the printer's
// origin, the top left corner of the area it prints on, and `page` is that area's size:
// so a line at X 0 begins at the left margin and nothing is lost at the paper's edge.
class PrinterCanvas {
public:
    explicit PrinterCanvas(QSize page = a4Twips());

    int CurrentX = 0;
    int CurrentY = 0;
    double FontSize = 8.25;
    bool FontBold = false;

    // The text at the present place, then the next line at the left margin.
    void Print(const QString& text);
    // The picture at X, Y in its natural size.
    void PaintPicture(const QImage& picture, int x, int y);
    // The pages drawn so far; the canvas starts afresh.
    LaidOutReport EndDoc();

private:
    LaidOutReport m_out;
};

} // namespace velmora::printing
