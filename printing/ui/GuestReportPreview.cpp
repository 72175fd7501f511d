#include "printing/ui/GuestReportPreview.h"

#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "printing/GuestReport.h"
#include "printing/ui/ReportPreview.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmora::ui {

ReportPreview* PrintReport(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid,
                           const QString& listTitle, QWidget* parent)
{
    printing::GuestReport built = printing::buildGuestReport(state, grid, listTitle);
    const QString name = built.report.name;
    if (parent) {
        for (ReportPreview* earlier : parent->findChildren<ReportPreview*>(name, Qt::FindDirectChildrenOnly))
            earlier->close();
    }
    const std::shared_ptr<printing::RecordSet> records = built.report.dataSource;
    auto* preview = new ReportPreview(prompts, std::move(built.report), parent);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(preview, &ReportPreview::closing, preview,
                     [&state, records] { printing::releaseReport(state, records); });
    try {
        preview->pages();
    } catch (const Failure& failure) {
        built.lastFailure = failure;
    }
    if (const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        preview->resize(std::min(area.width(), 1000), area.height() * 9 / 10);
    }
    preview->show();
    if (built.lastFailure)
        prompts.warning(built.lastFailure->text());
    return preview;
}

} // namespace velmora::ui
