#pragma once

#include "app/Prompts.h"

#include <QPointer>
#include <QWidget>

namespace velmora::ui {

// The real boxes and dialogs, laid out right to left unless a request says otherwise.
class QtPrompts : public Prompts {
public:
    explicit QtPrompts(QWidget* parent = nullptr) : m_parent(parent) {}
    void setParentWidget(QWidget* parent) { m_parent = parent; }
    QWidget* parentWidget() const { return m_parent; }

    PromptAnswer show(const MessageRequest& request) override;
    using Prompts::inputBox;
    QString inputBox(const InputRequest& request) override;
    PromptResult<QString> openFile(const FileRequest& request) override;
    PromptResult<QString> saveFile(const FileRequest& request) override;
    PromptResult<QColor> chooseColour(const QColor& initial) override;
    PromptResult<PrinterRequest> choosePrinter(const PrinterRequest& proposal) override;
    void beep() override;

private:
    // The window the user works in, so that a box from a modeless window (the budget, the
    // map) stands over it and gives the focus back to it; the main window otherwise.
    // Right after a dialog closes no window is active yet: the box then goes to the
    // window of the last prompt, which the window manager is about to activate again.
    QWidget* owner() const;

    QPointer<QWidget> m_parent;
    mutable QPointer<QWidget> m_lastOwner;
};

} // namespace velmora::ui
