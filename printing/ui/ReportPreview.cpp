#include "printing/ui/ReportPreview.h"

#include "app/Failure.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/ui/QtPrompts.h"
#include "printing/PagePainter.h"
#include "printing/ui/PrinterTarget.h"

#include <QAction>
#include <QCoreApplication>
#include <QPainter>
#include <QPointer>
#include <QScopeGuard>
#include <QPrintPreviewWidget>
#include <QToolBar>

#include <cmath>

namespace velmora::ui {

namespace {

const QString PrintFailed = QStringLiteral("ארעה שגיאת הדפסה");

std::unique_ptr<QPrinter> previewPrinter()
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setFullPage(true);
    return printer;
}

bool paintRange(const printing::LaidOutReport& laidOut, QPrinter& printer)
{
    const int count = int(laidOut.pages.size());
    int from = 1;
    int to = count;
    if (printer.fromPage() > 0) {
        from = std::max(1, printer.fromPage());
        to = std::min(count, printer.toPage() > 0 ? printer.toPage() : count);
    }
    if (from > to)
        return true;
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const int copies = printer.supportsMultipleCopies() ? 1 : std::max(1, printer.copyCount());
    bool first = true;
    for (int copy = 0; copy < copies; ++copy) {
        for (int page = from; page <= to; ++page) {
            if (!first && !printer.newPage())
                return false;
            first = false;
            printing::paintPage(painter, laidOut.pages[size_t(page - 1)], printer.resolution());
        }
    }
    return painter.end() && printer.printerState() != QPrinter::Error;
}

} // namespace

QSize paperTwips(const QPrinter& printer)
{
    const QRectF mm = printer.pageLayout().fullRect(QPageLayout::Millimeter);
    return QSize(int(std::lround(mm.width() * TwipsPerInch / 25.4)), int(std::lround(mm.height() * TwipsPerInch / 25.4)));
}

bool printReport(const printing::Report& report, QPrinter& printer)
{
    printer.setFullPage(true);
    try {
        return paintRange(printing::layOut(report, paperTwips(printer)), printer);
    } catch (const Failure&) {
        return false;
    }
}

ReportPreview::ReportPreview(Prompts& prompts, printing::Report report, QWidget* parent)
    : ReportPreview(previewPrinter(), prompts, std::move(report), parent)
{
}

ReportPreview::ReportPreview(std::unique_ptr<QPrinter> printer, Prompts& prompts, printing::Report report,
                             QWidget* parent)
    : QPrintPreviewDialog(printer.get(), parent, Qt::Window), m_printer(std::move(printer)), m_prompts(prompts),
      m_report(std::move(report))
{
    setObjectName(m_report.name);
    setWindowTitle(m_report.caption);
    setModal(false);
    connect(this, &QPrintPreviewDialog::paintRequested, this, &ReportPreview::paintPages);
    // The preview's own print button would print through Qt's dialog and a recording of the
    // pages; ours goes through the program's dialog and paints the pages afresh.
    if (QAction* print = printAction(*this)) {
        print->disconnect(this);
        connect(print, &QAction::triggered, this, &ReportPreview::printFromPreview);
    }
}

QAction* ReportPreview::printAction(const QPrintPreviewDialog& dialog)
{
    // Qt names the button by its (translated) text only.
    const QString text = QCoreApplication::translate("QPrintPreviewDialog", "Print");
    for (QAction* action : dialog.findChildren<QAction*>()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

ReportPreview::~ReportPreview() = default;

void ReportPreview::setReport(printing::Report report)
{
    m_report = std::move(report);
    m_layouts.clear();
    setObjectName(m_report.name);
    setWindowTitle(m_report.caption);
    if (auto* widget = findChild<QPrintPreviewWidget*>())
        widget->updatePreview();
}

const printing::LaidOutReport& ReportPreview::layoutFor(QSize paper)
{
    const auto key = std::make_pair(paper.width(), paper.height());
    auto found = m_layouts.find(key);
    if (found == m_layouts.end())
        found = m_layouts.emplace(key, printing::layOut(m_report, paper)).first;
    return found->second;
}

const printing::LaidOutReport& ReportPreview::pages()
{
    return layoutFor(paperTwips(*m_printer));
}

void ReportPreview::paintPages(QPrinter* printer)
{
    printer->setFullPage(true);
    try {
        paintRange(layoutFor(paperTwips(*printer)), *printer);
    } catch (const Failure&) {
        // The failure was shown when the report was built; the preview stays empty.
    }
}

void ReportPreview::printFromPreview()
{
    // The print dialog and what it says stand over the preview, not over the main window.
    auto* onScreen = dynamic_cast<QtPrompts*>(&m_prompts);
    const QPointer<QWidget> owner = onScreen ? onScreen->parentWidget() : nullptr;
    if (onScreen)
        onScreen->setParentWidget(this);
    const auto restore = qScopeGuard([&] {
        if (onScreen)
            onScreen->setParentWidget(owner);
    });
    PrinterRequest proposal;
    try {
        proposal.maxPage = int(pages().pages.size());
    } catch (const Failure&) {
    }
    const PromptResult<PrinterRequest> choice = m_prompts.choosePrinter(proposal);
    if (!choice) {
        if (choice.failure.number() != CancelFailureNumber)
            m_prompts.warning(choice.failure.text());
        return;
    }
    const std::unique_ptr<QPrinter> printer = printerFor(*choice);
    if (!printReport(m_report, *printer))
        m_prompts.message(PrintFailed);
}

void ReportPreview::done(int result)
{
    if (!m_closed) {
        m_closed = true;
        emit closing();
    }
    QPrintPreviewDialog::done(result);
}

} // namespace velmora::ui
