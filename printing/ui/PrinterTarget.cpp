#include "printing/ui/PrinterTarget.h"

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

} // namespace velmora::ui

namespace velmora::ui {

std::optional<PrinterRequest> askForPrinter(Prompts& prompts, const PrinterRequest& proposal)
{
    PromptResult<PrinterRequest> choice = prompts.choosePrinter(proposal);
    if (!choice && choice.failure.number() != CancelFailureNumber)
        prompts.warning(choice.failure.text());
    return std::move(choice.value);
}

} // namespace velmora::ui
