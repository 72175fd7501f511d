#pragma once

class QTableView;

namespace velmora::desktop::ui {

// While hooked, each wheel step over the list moves it by one row and leaves the current
// row and the selection where they are.
void HookMouseWheel(QTableView& grid);
void UnhookMouseWheel(QTableView& grid);

} // namespace velmora::desktop::ui
