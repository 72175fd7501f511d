#include "printing/ui/ReportPreview.h"

#include "app/Failure.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/ui/QtPrompts.h"
#include "printing/PagePainter.h"
#include "printing/ui/PrinterTarget.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QScreen>
#include <QScopeGuard>
#include <QScrollBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <cmath>

namespace velmora::ui {

namespace {

const QString PrintFailed = QStringLiteral("ארעה שגיאת הדפסה");

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
    return mmToTwips(mm.size());
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

// One page of the report at a zoom, scrolled within the window; only that page is painted.
class PageView : public QAbstractScrollArea {
public:
    enum class Fit { Width, Page, None };

    explicit PageView(QWidget* parent) : QAbstractScrollArea(parent)
    {
        setObjectName(QStringLiteral("pageView"));
        setAccessibleName(QStringLiteral("עמוד"));
        viewport()->setBackgroundRole(QPalette::Dark);
        viewport()->setAutoFillBackground(true);
        setFocusPolicy(Qt::StrongFocus);
    }

    void setPage(const printing::Page* page, QSize paper)
    {
        m_page = page;
        m_paper = paper;
        verticalScrollBar()->setValue(0);
        updateRanges();
        viewport()->update();
    }

    void setFit(Fit fit)
    {
        m_fit = fit;
        updateRanges();
        viewport()->update();
    }

    void zoomBy(double factor)
    {
        m_scale = std::clamp(scale() * factor, MinScale, MaxScale);
        m_fit = Fit::None;
        updateRanges();
        viewport()->update();
    }

    // Screen pixels to a twip.
    double scale() const
    {
        const QSizeF room = QSizeF(viewport()->size()) - QSizeF(2 * Margin, 2 * Margin);
        if (m_paper.isEmpty() || room.width() <= 0 || room.height() <= 0)
            return m_scale;
        switch (m_fit) {
        case Fit::Width:
            return std::clamp(room.width() / m_paper.width(), MinScale, MaxScale);
        case Fit::Page:
            return std::clamp(std::min(room.width() / m_paper.width(), room.height() / m_paper.height()), MinScale,
                              MaxScale);
        case Fit::None:
            break;
        }
        return m_scale;
    }

    // Where the paper stands in the view.
    QRectF paperRect() const
    {
        const QSizeF size = QSizeF(m_paper) * scale();
        const QSize room = viewport()->size();
        const int hMax = horizontalScrollBar()->maximum();
        // Right to left, a wide page shows its right side first, where its lines begin.
        const int hOffset = isRightToLeft() ? hMax - horizontalScrollBar()->value() : horizontalScrollBar()->value();
        const double left = size.width() + 2 * Margin <= room.width() ? (room.width() - size.width()) / 2 : Margin - hOffset;
        const double top = size.height() + 2 * Margin <= room.height() ? (room.height() - size.height()) / 2
                                                                        : Margin - verticalScrollBar()->value();
        return QRectF(QPointF(left, top), size);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!m_page)
            return;
        QPainter painter(viewport());
        const QRectF paper = paperRect();
        painter.fillRect(paper, Qt::white);
        painter.setPen(palette().color(QPalette::Shadow));
        painter.drawRect(paper.adjusted(-1, -1, 0, 0));
        painter.translate(paper.topLeft());
        painter.setClipRect(QRectF(QPointF(), paper.size()));
        printing::paintPage(painter, *m_page, scale() * TwipsPerInch);
    }

    void resizeEvent(QResizeEvent*) override { updateRanges(); }

private:
    static constexpr int Margin = 12;
    static constexpr double MinScale = 0.01; // about 14 dots to the inch
    static constexpr double MaxScale = 0.5;

    void updateRanges()
    {
        const QSizeF size = QSizeF(m_paper) * scale();
        const QSize room = viewport()->size();
        horizontalScrollBar()->setRange(0, std::max(0, int(std::ceil(size.width())) + 2 * Margin - room.width()));
        verticalScrollBar()->setRange(0, std::max(0, int(std::ceil(size.height())) + 2 * Margin - room.height()));
        horizontalScrollBar()->setPageStep(room.width());
        verticalScrollBar()->setPageStep(room.height());
        horizontalScrollBar()->setSingleStep(20);
        verticalScrollBar()->setSingleStep(20);
    }

    const printing::Page* m_page = nullptr;
    QSize m_paper;
    Fit m_fit = Fit::Width;
    double m_scale = 0.05;
};

ReportPreview::ReportPreview(Prompts& prompts, printing::Report report, QWidget* parent)
    : QWidget(parent, Qt::Window), m_prompts(prompts), m_report(std::move(report))
{
    setObjectName(m_report.name);
    setWindowTitle(m_report.caption);
    // The paper of the printer nobody chose yet.
    m_paper = paperTwips(QPrinter(QPrinter::HighResolution));

    auto* tools = new QToolBar(this);
    tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_view = new PageView(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tools);
    layout->addWidget(m_view, 1);

    m_print = addCommand(QStringLiteral("הדפסה..."), QKeySequence::Print, &ReportPreview::printFromPreview);
    tools->addAction(m_print);
    tools->addSeparator();
    m_first = addCommand(QStringLiteral("עמוד ראשון"), QKeySequence(Qt::Key_Home), &ReportPreview::firstPage);
    m_previous = addCommand(QStringLiteral("עמוד קודם"), QKeySequence(Qt::Key_PageUp), &ReportPreview::previousPage);
    m_next = addCommand(QStringLiteral("עמוד הבא"), QKeySequence(Qt::Key_PageDown), &ReportPreview::nextPage);
    m_last = addCommand(QStringLiteral("עמוד אחרון"), QKeySequence(Qt::Key_End), &ReportPreview::lastPage);
    tools->addAction(m_first);
    tools->addAction(m_previous);
    m_pageLabel = new QLabel(tools);
    m_pageLabel->setObjectName(QStringLiteral("pageNumber"));
    m_pageLabel->setContentsMargins(8, 0, 8, 0);
    tools->addWidget(m_pageLabel);
    tools->addAction(m_next);
    tools->addAction(m_last);
    tools->addSeparator();
    tools->addAction(addCommand(QStringLiteral("התאמה לרוחב"), QKeySequence(), &ReportPreview::fitWidth));
    tools->addAction(addCommand(QStringLiteral("עמוד שלם"), QKeySequence(), &ReportPreview::fitPage));
    tools->addAction(addCommand(QStringLiteral("הגדלה"), QKeySequence::ZoomIn, &ReportPreview::zoomIn));
    tools->addAction(addCommand(QStringLiteral("הקטנה"), QKeySequence::ZoomOut, &ReportPreview::zoomOut));
    showPage(1);
    m_view->setFocus();
}

QAction* ReportPreview::addCommand(const QString& text, const QKeySequence& keys, void (ReportPreview::*slot)())
{
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    if (!keys.isEmpty())
        action->setToolTip(text + QStringLiteral(" (") + keys.toString(QKeySequence::NativeText) + u')');
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
    return action;
}

ReportPreview::~ReportPreview() = default;

const printing::LaidOutReport& ReportPreview::pages()
{
    if (!m_laidOut)
        m_laidOut = printing::layOut(m_report, m_paper);
    return *m_laidOut;
}

const printing::LaidOutReport* ReportPreview::shown()
{
    if (m_layoutFailed)
        return nullptr;
    try {
        return &pages();
    } catch (const Failure&) {
        // The failure was shown when the report was built; the preview stays empty.
        m_layoutFailed = true;
        return nullptr;
    }
}

int ReportPreview::pageCount()
{
    const printing::LaidOutReport* laidOut = shown();
    return laidOut ? int(laidOut->pages.size()) : 0;
}

void ReportPreview::showPage(int page)
{
    const int count = pageCount();
    m_current = std::clamp(page, count > 0 ? 1 : 0, count);
    m_view->setPage(count > 0 ? &shown()->pages[size_t(m_current - 1)] : nullptr, m_paper);
    updatePageControls();
}

void ReportPreview::updatePageControls()
{
    const int count = pageCount();
    m_pageLabel->setText(QStringLiteral("עמוד %1 מתוך %2").arg(m_current).arg(count));
    m_first->setEnabled(m_current > 1);
    m_previous->setEnabled(m_current > 1);
    m_next->setEnabled(m_current < count);
    m_last->setEnabled(m_current < count);
    m_print->setEnabled(count > 0);
}

void ReportPreview::firstPage() { showPage(1); }
void ReportPreview::previousPage() { showPage(m_current - 1); }
void ReportPreview::nextPage() { showPage(m_current + 1); }
void ReportPreview::lastPage() { showPage(pageCount()); }
void ReportPreview::fitWidth() { m_view->setFit(PageView::Fit::Width); }
void ReportPreview::fitPage() { m_view->setFit(PageView::Fit::Page); }
void ReportPreview::zoomIn() { m_view->zoomBy(1.25); }
void ReportPreview::zoomOut() { m_view->zoomBy(0.8); }

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
    proposal.maxPage = pageCount();
    const std::optional<PrinterRequest> choice = askForPrinter(m_prompts, proposal);
    if (!choice)
        return;
    const std::unique_ptr<QPrinter> printer = printerFor(*choice);
    if (!printReport(m_report, *printer))
        m_prompts.message(PrintFailed);
}

void ReportPreview::closeEvent(QCloseEvent* event)
{
    if (!m_closed) {
        m_closed = true;
        emit closing();
    }
    QWidget::closeEvent(event);
}

ReportPreview* replacePreview(Prompts& prompts, printing::Report report, QWidget* parent)
{
    if (parent) {
        for (ReportPreview* earlier : parent->findChildren<ReportPreview*>(report.name, Qt::FindDirectChildrenOnly))
            earlier->close();
    }
    auto* preview = new ReportPreview(prompts, std::move(report), parent);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    return preview;
}

void showPreview(ReportPreview& preview, QWidget* parent)
{
    if (const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        preview.resize(std::min(area.width(), 1000), area.height() * 9 / 10);
    }
    preview.show();
}

} // namespace velmora::ui
