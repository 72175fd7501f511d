#pragma once

#include <QString>

class QAbstractItemModel;
class QWidget;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class ReportPreview;

// The routine behind "הדפסת רשימה...": the report of the list as it shows now, opened as a
// preview beside `parent`; a failure on the way follows in a box once the preview is up.
// An earlier preview of the list closes first. The rows live until the preview closes.
ReportPreview* PrintReport(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid,
                           const QString& listTitle, QWidget* parent);

} // namespace velmora::ui
