#include "printing/ui/LabelPreviews.h"

#include "app/WeddingState.h"
#include "printing/LabelReports.h"
#include "printing/ui/ReportPreview.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmora::ui {

namespace {

ReportPreview* show(printing::SheetReport built, Prompts& prompts, QWidget* parent)
{
    if (parent) {
        const QString name = built.report.name;
        for (ReportPreview* earlier : parent->findChildren<ReportPreview*>(name, Qt::FindDirectChildrenOnly))
            earlier->close();
    }
    // The rows stay in the state after the preview closes, until the next report.
    auto* preview = new ReportPreview(prompts, std::move(built.report), parent);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    built.pending.attempt([&] { preview->pages(); });
    if (const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        preview->resize(std::min(area.width(), 1000), area.height() * 9 / 10);
    }
    preview->show();
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
