#include "ScriptedPrompts.h"

#include <QTest>

namespace velmora::test {

namespace {

// Outside a test function there is nothing to fail: say it loudly instead.
void failTest(const QString& message)
{
    if (QTest::currentTestFunction())
        QTest::qFail(qPrintable(message), __FILE__, __LINE__);
    else
        qCritical("%s", qPrintable(message));
}

// A file, colour or printer dialog's answer; none when the script cancels it.
template <typename T>
PromptResult<T> answered(const std::optional<T>& value)
{
    return value ? PromptResult<T>{*value, {}} : PromptResult<T>::cancelled();
}

QString describe(const RecordedPrompt& p)
{
    static const char* const kinds[] = {"message", "input", "open-file", "save-file", "colour", "printer", "beep"};
    return QStringLiteral("%1 [icon %2, buttons %3, default %4] \"%5\": \"%6\"")
        .arg(QLatin1String(kinds[int(p.kind)])).arg(int(p.icon)).arg(int(p.buttons)).arg(int(p.defaultButton))
        .arg(p.title, p.text);
}

} // namespace

ScriptedPrompts& ScriptedPrompts::add(Step step)
{
    m_script.push_back(std::move(step));
    return *this;
}

ScriptedPrompts& ScriptedPrompts::expectMessage(PromptIcon icon, const QString& text, const QString& title)
{
    return expectBox(icon, text, title, PromptButtons::Ok, PromptAnswer::Ok, PromptAnswer::Ok);
}

ScriptedPrompts& ScriptedPrompts::expectQuestion(const QString& text, PromptAnswer answer, const QString& title,
                                                 PromptButtons buttons, PromptAnswer defaultButton)
{
    return expectBox(PromptIcon::Question, text, title, buttons, defaultButton, answer);
}

ScriptedPrompts& ScriptedPrompts::expectBox(PromptIcon icon, const QString& text, const QString& title,
                                            PromptButtons buttons, PromptAnswer defaultButton, PromptAnswer answer)
{
    return add({.expected = {.kind = PromptKind::Message, .icon = icon, .title = title, .text = text,
                             .buttons = buttons, .defaultButton = defaultButton}, .answer = answer});
}

ScriptedPrompts& ScriptedPrompts::expectMapSaveQuestion(PromptAnswer answer)
{
    return expectBox(PromptIcon::None, QStringLiteral("?האם ברצונך לשמור מיקומי מפת השולחנות ביציאה"),
                     QStringLiteral("אזהרת שמירה"), PromptButtons::OkCancel, PromptAnswer::Ok, answer);
}

ScriptedPrompts& ScriptedPrompts::expectInput(const QString& prompt, const QString& answer, const QString& title)
{
    return add({.expected = {.kind = PromptKind::Input, .title = title, .text = prompt}, .input = answer});
}

ScriptedPrompts& ScriptedPrompts::expectOpenFile(const std::optional<QString>& path)
{
    return add({.expected = {.kind = PromptKind::OpenFile}, .path = path});
}

ScriptedPrompts& ScriptedPrompts::expectSaveFile(const std::optional<QString>& path)
{
    return add({.expected = {.kind = PromptKind::SaveFile}, .path = path});
}

ScriptedPrompts& ScriptedPrompts::expectColour(const std::optional<QColor>& colour)
{
    return add({.expected = {.kind = PromptKind::Colour}, .colour = colour});
}

ScriptedPrompts& ScriptedPrompts::expectPrinter(const std::optional<PrinterRequest>& choice)
{
    return add({.expected = {.kind = PromptKind::Printer}, .printer = choice});
}

ScriptedPrompts& ScriptedPrompts::expectBeep() { return add({.expected = {.kind = PromptKind::Beep}}); }

bool ScriptedPrompts::verifyDone()
{
    if (m_script.empty())
        return true;
    QStringList unused;
    for (const Step& step : m_script)
        unused << describe(step.expected);
    m_script.clear();
    failTest(QStringLiteral("Scripted prompts never shown:\n  ") + unused.join(QStringLiteral("\n  ")));
    return false;
}

std::optional<ScriptedPrompts::Step> ScriptedPrompts::take(const RecordedPrompt& shown)
{
    m_history.push_back(shown);
    if (m_script.empty()) {
        failTest(QStringLiteral("Unexpected prompt: ") + describe(shown));
        return std::nullopt;
    }
    Step step = m_script.front();
    m_script.pop_front();
    const RecordedPrompt& e = step.expected;
    // Dialogs are checked by kind; boxes and input boxes word for word.
    const bool same = e.kind == shown.kind
        && (e.kind > PromptKind::Input
            || (e.icon == shown.icon && e.title == shown.title && e.text == shown.text && e.buttons == shown.buttons
                && e.defaultButton == shown.defaultButton));
    if (!same)
        failTest(QStringLiteral("Prompt differs from the script.\n  expected: %1\n  shown:    %2")
                     .arg(describe(e), describe(shown)));
    return step;
}

PromptAnswer ScriptedPrompts::show(const MessageRequest& request)
{
    const auto step = take({.kind = PromptKind::Message, .icon = request.icon,
                            .title = request.title.isEmpty() ? DefaultCaption : request.title, .text = request.text,
                            .buttons = request.buttons, .defaultButton = request.defaultButton,
                            .leftToRight = request.leftToRight});
    return step ? step->answer : request.buttons == PromptButtons::Ok ? PromptAnswer::Ok : PromptAnswer::Cancel;
}

QString ScriptedPrompts::inputBox(const InputRequest& request)
{
    const auto step = take({.kind = PromptKind::Input, .title = request.title.isEmpty() ? DefaultCaption : request.title,
                            .text = request.prompt});
    return step ? step->input : QString();
}

PromptResult<QString> ScriptedPrompts::fileDialog(PromptKind kind, const FileRequest& request)
{
    m_fileRequests.push_back(request);
    const auto step = take({.kind = kind, .title = request.title, .text = request.filter});
    return answered(step ? step->path : std::nullopt);
}

PromptResult<QString> ScriptedPrompts::openFile(const FileRequest& request) { return fileDialog(PromptKind::OpenFile, request); }
PromptResult<QString> ScriptedPrompts::saveFile(const FileRequest& request) { return fileDialog(PromptKind::SaveFile, request); }

PromptResult<QColor> ScriptedPrompts::chooseColour(const QColor& /*initial*/)
{
    const auto step = take({.kind = PromptKind::Colour});
    return answered(step ? step->colour : std::nullopt);
}

PromptResult<PrinterRequest> ScriptedPrompts::choosePrinter(const PrinterRequest& /*proposal*/)
{
    const auto step = take({.kind = PromptKind::Printer});
    return answered(step ? step->printer : std::nullopt);
}

void ScriptedPrompts::beep() { take({.kind = PromptKind::Beep}); }

} // namespace velmora::test
