#include "printing/ui/LabelPreviews.h"

#include "app/WeddingState.h"
#include "printing/LabelReports.h"
#include "printing/ui/ReportPreview.h"

namespace velmora::ui {

namespace {

ReportPreview* show(printing::SheetReport built, Prompts& prompts, QWidget* parent)
{
    // The rows stay in the state after the preview closes, until the next report.
    ReportPreview* preview = replacePreview(prompts, std::move(built.report), parent);
    built.pending.attempt([&] { preview->pages(); });
    showPreview(*preview, parent);
    if (built.pending) {
        built.pending.report(prompts);
        // The box stands over the main window and raises it; the notes come forward again.
        preview->raise();
        preview->activateWindow();
    }
    return preview;
}

} // namespace

ReportPreview* PrintLabels(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid, QWidget* parent)
{
    return show(printing::buildEnvelopeLabels(state, grid), prompts, parent);
}

ReportPreview* PrintSittingNote(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid,
                                QWidget* parent)
{
    return show(printing::buildSittingNotes(state, grid), prompts, parent);
}

} // namespace velmora::ui
