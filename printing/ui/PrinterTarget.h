#pragma once

#include "app/Prompts.h"

#include <QPrinter>

class QPainter;

#include <memory>
#include <optional>

namespace velmora::ui {

// A printer set up as the user chose it in the print dialog: a real queue, or a PDF file
// when the choice names an output file. Every printout of the program goes through here.
std::unique_ptr<QPrinter> printerFor(const PrinterRequest& choice);

// The print dialog, as every printout opens it first: a cancel says nothing, any other
// failure of the dialog shows its text with the warning icon; either gives no printer.
std::optional<PrinterRequest> askForPrinter(Prompts& prompts, const PrinterRequest& proposal = {});

// Painting on a printer, begun and ended; either step that fails throws a Failure naming
// the printer.
void beginPrinting(QPainter& painter, QPrinter& printer);
void endPrinting(QPainter& painter, QPrinter& printer);

} // namespace velmora::ui
