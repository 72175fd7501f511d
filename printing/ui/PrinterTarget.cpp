#include "printing/ui/PrinterTarget.h"

#include <QPainter>

namespace velmora::ui {

std::unique_ptr<QPrinter> printerFor(const PrinterRequest& choice)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (!choice.outputFile.isEmpty()) {
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(choice.outputFile);
    } else if (!choice.printerName.isEmpty()) {
        printer->setPrinterName(choice.printerName);
    }
    if (choice.paper.isValid())
        printer->setPageSize(choice.paper);
    printer->setDuplex(QPrinter::DuplexMode(choice.duplex));
    printer->setColorMode(choice.grayscale ? QPrinter::GrayScale : QPrinter::Color);
    printer->setCollateCopies(choice.collate);
    printer->setCopyCount(choice.copies);
    printer->setPageOrientation(choice.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (choice.fromPage > 0)
        printer->setFromTo(choice.fromPage, choice.toPage);
    return printer;
}

std::optional<PrinterRequest> askForPrinter(Prompts& prompts, const PrinterRequest& proposal)
{
    PromptResult<PrinterRequest> choice = prompts.choosePrinter(proposal);
    if (!choice && choice.failure.number() != CancelFailureNumber)
        prompts.warning(choice.failure.text());
    return std::move(choice.value);
}

void beginPrinting(QPainter& painter, QPrinter& printer)
{
    if (!painter.begin(&printer))
        throw Failure(482, QStringLiteral("לא ניתן להדפיס במדפסת %1.").arg(printer.printerName()));
}

void endPrinting(QPainter& painter, QPrinter& printer)
{
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        throw Failure(482, QStringLiteral("ההדפסה במדפסת %1 נכשלה.").arg(printer.printerName()));
}

} // namespace velmora::ui
