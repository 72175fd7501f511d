#pragma once

#include "app/Prompts.h"

#include <QPrinter>

#include <memory>

namespace velmora::ui {

// A printer set up as the user chose it in the print dialog: a real queue, or a PDF file
// when the choice names an output file. Every printout of the program goes through here.
std::unique_ptr<QPrinter> printerFor(const PrinterRequest& choice);

} // namespace velmora::ui
