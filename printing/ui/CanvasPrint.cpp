#include "printing/ui/CanvasPrint.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "printing/PagePainter.h"
#include "printing/ui/PrinterTarget.h"

#include <QPainter>
#include <QPrinter>

namespace velmora::ui {

printing::PrinterCanvas canvasFor(const QPrinter& printer)
{
    return printing::PrinterCanvas(mmToTwips(printer.pageLayout().paintRect(QPageLayout::Millimeter).size()));
}

void printCanvasPages(const printing::LaidOutReport& pages, QPrinter& printer)
{
    // Drawing starts where the printer can print, not at the paper's edge, which most
    // printers can't reach: text at X 0 stands at the left margin.
    printer.setFullPage(false);
    QPainter painter;
    beginPrinting(painter, printer);
    for (size_t page = 0; page < pages.pages.size(); ++page) {
        if (page > 0 && !printer.newPage())
            break;
        printing::paintPage(painter, pages.pages[page], printer.resolution());
    }
    endPrinting(painter, printer);
}

void printCanvasWithDialog(Prompts& prompts, const std::function<void(printing::PrinterCanvas&)>& draw,
                           const QString& printed)
{
    const std::optional<PrinterRequest> choice = askForPrinter(prompts);
    if (!choice)
        return;
    PendingFailure passedOver;
    passedOver.attempt([&] {
        const std::unique_ptr<QPrinter> printer = printerFor(*choice);
        printing::PrinterCanvas canvas = canvasFor(*printer);
        draw(canvas);
        printCanvasPages(canvas.EndDoc(), *printer);
    });
    prompts.message(printed);
}

} // namespace velmora::ui
