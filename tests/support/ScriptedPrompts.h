#pragma once

#include "app/Prompts.h"

#include <deque>
#include <optional>
#include <vector>

namespace velmora::test {

// What one prompt showed the user.
struct RecordedPrompt {
    PromptKind kind = PromptKind::Message;
    PromptIcon icon = PromptIcon::None;
    QString title{}; // the caption as shown: "Velmora" when none was given
    QString text{};
    PromptButtons buttons = PromptButtons::Ok;
    PromptAnswer defaultButton = PromptAnswer::Ok;
    bool leftToRight = false;
};

// The prompt double, answering from a script: an unexpected, different or missing prompt fails the test.
class ScriptedPrompts : public Prompts {
public:
    ~ScriptedPrompts() override { verifyDone(); }

    ScriptedPrompts& expectMessage(PromptIcon icon, const QString& text, const QString& title = DefaultCaption);
    ScriptedPrompts& expectQuestion(const QString& text, PromptAnswer answer, const QString& title = DefaultCaption,
                                    PromptButtons buttons = PromptButtons::YesNo, PromptAnswer defaultButton = PromptAnswer::Yes);
    ScriptedPrompts& expectBox(PromptIcon icon, const QString& text, const QString& title, PromptButtons buttons,
                               PromptAnswer defaultButton, PromptAnswer answer);
    // The map's question whether to keep the tables' places, asked when it closes.
    ScriptedPrompts& expectMapSaveQuestion(PromptAnswer answer = PromptAnswer::Cancel);
    ScriptedPrompts& expectInput(const QString& prompt, const QString& answer, const QString& title = DefaultCaption);
    // No path: the user cancels.
    ScriptedPrompts& expectOpenFile(const std::optional<QString>& path);
    ScriptedPrompts& expectSaveFile(const std::optional<QString>& path);
    ScriptedPrompts& expectColour(const std::optional<QColor>& colour);
    ScriptedPrompts& expectPrinter(const std::optional<PrinterRequest>& choice);
    ScriptedPrompts& expectBeep();

    const std::vector<RecordedPrompt>& history() const { return m_history; }
    const std::vector<FileRequest>& fileRequests() const { return m_fileRequests; }
    int pending() const { return int(m_script.size()); }
    // Fails the running test when scripted prompts were not all used; clears the script.
    bool verifyDone();

    PromptAnswer show(const MessageRequest& request) override;
    using Prompts::inputBox;
    QString inputBox(const InputRequest& request) override;
    PromptResult<QString> openFile(const FileRequest& request) override;
    PromptResult<QString> saveFile(const FileRequest& request) override;
    PromptResult<QColor> chooseColour(const QColor& initial) override;
    PromptResult<PrinterRequest> choosePrinter(const PrinterRequest& proposal) override;
    void beep() override;

private:
    struct Step {
        RecordedPrompt expected;
        PromptAnswer answer = PromptAnswer::Ok;
        QString input{};
        std::optional<QString> path{};
        std::optional<QColor> colour{};
        std::optional<PrinterRequest> printer{};
    };

    ScriptedPrompts& add(Step step);
    std::optional<Step> take(const RecordedPrompt& shown);
    PromptResult<QString> fileDialog(PromptKind kind, const FileRequest& request);

    std::deque<Step> m_script;
    std::vector<RecordedPrompt> m_history;
    std::vector<FileRequest> m_fileRequests;
};

} // namespace velmora::test
