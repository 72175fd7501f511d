#pragma once

#include <QList>
#include <QString>

class QPrinter;
class QWidget;

namespace velmora {
class Prompts;
}

namespace velmora::ui {

// A window printed as a picture of its client area, with all its visible controls but
// `hidden` (a print icon, say): those are hidden while the picture is taken and shown
// again afterwards, also when printing fails. The picture keeps its size on paper, one
// twip on the screen to one twip on the page, from the top left of the printable area;
// a page too small for it gets it shrunk to fit. A failure is thrown as a Failure.
void printWindowPicture(QWidget& window, QPrinter& printer, const QList<QWidget*>& hidden);

// The printing command of a window: the printer dialog first (a cancel says nothing, any
// other failure of the dialog shows its text with the warning icon), then the picture on
// the chosen printer, then `printed`, or "ארעה שגיאת הדפסה" when it failed, in a plain box.
void printWindowWithDialog(QWidget& window, const QList<QWidget*>& hidden, Prompts& prompts,
                           const QString& printed);

} // namespace velmora::ui
