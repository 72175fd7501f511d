#pragma once

#include "printing/PrinterCanvas.h"

#include <functional>

class QPrinter;

namespace velmora {
class Prompts;
}

namespace velmora::ui {

// A canvas for this printer: its page is the area the printer prints on.
printing::PrinterCanvas canvasFor(const QPrinter& printer);

// Pages drawn on a canvas, painted with the printer's origin, the top left corner of its
// printable area, as their origin. A failure is thrown as a Failure.
void printCanvasPages(const printing::LaidOutReport& pages, QPrinter& printer);

// The printing command of a drawing: the printer dialog first, then `draw` on a canvas of
// the chosen printer, sent to it page by page, then `printed` in a plain box. A failing
// step is passed over without a word, and the closing message comes all the same.
void printCanvasWithDialog(Prompts& prompts, const std::function<void(printing::PrinterCanvas&)>& draw,
                           const QString& printed);

} // namespace velmora::ui
