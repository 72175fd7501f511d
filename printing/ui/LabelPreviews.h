#pragma once

class QAbstractItemModel;
class QWidget;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class ReportPreview;

// The envelope labels of the list as it shows now (`grid` is the list's model), with the
// label choices the state holds, opened as a preview beside `parent`. A failed step is passed
// over; the last failure's text follows in a box once the preview is up. An earlier preview
// of the labels closes first.
ReportPreview* PrintLabels(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid, QWidget* parent);

// The seating notes of the list as it shows now, with the note choices and design the state
// holds; otherwise as PrintLabels.
ReportPreview* PrintSittingNote(WeddingState& state, Prompts& prompts, const QAbstractItemModel& grid,
                                QWidget* parent);

} // namespace velmora::ui
