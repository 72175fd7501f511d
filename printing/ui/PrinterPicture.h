#pragma once

#include <QPixmap>

namespace velmora::ui {

// The print icon of the windows that print themselves (the ledger, a table's plan): the
// desktop theme's printer, or one drawn here where the theme has none.
QPixmap printerPicture(int side);

} // namespace velmora::ui
