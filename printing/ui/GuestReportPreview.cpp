#include "printing/ui/GuestReportPreview.h"

#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "printing/GuestReport.h"
#include "printing/ui/ReportPreview.h"

namespace velmora::ui {

ReportPreview* PrintReport(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid,
                           const QString& listTitle, QWidget* parent)
{
    printing::GuestReport built = printing::buildGuestReport(state, grid, listTitle);
    const std::shared_ptr<printing::RecordSet> records = built.report.dataSource;
    ReportPreview* preview = replacePreview(prompts, std::move(built.report), parent);
    QObject::connect(preview, &ReportPreview::closing, preview,
                     [&state, records] { printing::releaseReport(state, records); });
    try {
        preview->pages();
    } catch (const Failure& failure) {
        built.lastFailure = failure;
    }
    showPreview(*preview, parent);
    if (built.lastFailure)
        prompts.warning(built.lastFailure->text());
    return preview;
}

} // namespace velmora::ui
