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
    QPointer<QWidget> m_parent;
};

} // namespace velmora::ui
