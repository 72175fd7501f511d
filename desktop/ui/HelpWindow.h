#pragma once

#include <QDialog>

class QTextBrowser;

namespace velmora::desktop::ui {

// The program's own manual, in Hebrew, beside the main window.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);
    QTextBrowser* browser() const { return m_browser; }

private:
    QTextBrowser* m_browser = nullptr;
};

// ShowHelp of the main window: the compiled help file of the wedding's folder when a
// viewer for it is installed, otherwise the manual, one window for the whole run. Nothing
// happens when neither is there. Returns the manual's window when that is what opened.
HelpWindow* ShowHelp(QWidget& owner, const QString& helpFile);

} // namespace velmora::desktop::ui
