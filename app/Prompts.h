#pragma once

#include "app/Failure.h"

#include <QColor>
#include <QPageSize>
#include <QString>

#include <optional>

namespace velmora {

// Every message box, question, input box, file, colour and printer dialog and beep of the
// program goes through one Prompts object handed to the windows, so that tests can script
// the user's answers and see the exact texts.
enum class PromptKind { Message, Input, OpenFile, SaveFile, Colour, Printer, Beep };
enum class PromptIcon { None, Information, Warning, Critical, Question };
enum class PromptButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class PromptAnswer { Ok, Cancel, Yes, No };

inline const QString DefaultCaption = QStringLiteral("Velmora");

struct MessageRequest {
    PromptIcon icon = PromptIcon::None;
    QString title; // empty: "Velmora"
    QString text;  // lines may be joined with CrLf
    PromptButtons buttons = PromptButtons::Ok;
    PromptAnswer defaultButton = PromptAnswer::Ok;
    bool leftToRight = false; // the dialer's boxes are in English
};

struct InputRequest {
    QString prompt;
    QString title;
    QString defaultAnswer;
};

// Filter in the classic "Name (*.ext)|*.ext" form, pairs joined by '|'.
struct FileRequest {
    QString title;
    QString filter;
    QString fileName;   // proposed name
    QString initialDir;
    bool confirmOverwrite = true; // false: the caller asks its own question
};

// As the print dialog offers them, in QPrinter's order.
enum class PrinterDuplex { None, Auto, LongSide, ShortSide };

struct PrinterRequest {
    QString printerName; // empty: the default printer
    int copies = 1;
    int fromPage = 0; // 0: all pages
    int toPage = 0;
    int maxPage = 0;
    QString outputFile; // a file printer's target, if any
    bool landscape = false;
    QPageSize paper; // invalid: the printer's own
    PrinterDuplex duplex = PrinterDuplex::None;
    bool grayscale = false;
    bool collate = true;
};

// A chosen value, or a failure (32755 for a cancel).
template <class T>
struct PromptResult {
    std::optional<T> value;
    Failure failure;

    static PromptResult cancelled() { return {std::nullopt, Failure(CancelFailureNumber, QStringLiteral("Cancel"))}; }
    explicit operator bool() const { return value.has_value(); }
    const T& operator*() const { return *value; }
};

class Prompts {
public:
    virtual ~Prompts() = default;

    virtual PromptAnswer show(const MessageRequest& request) = 0;
    // Cancel gives the empty answer.
    virtual QString inputBox(const InputRequest& request) = 0;
    virtual PromptResult<QString> openFile(const FileRequest& request) = 0;
    virtual PromptResult<QString> saveFile(const FileRequest& request) = 0;
    virtual PromptResult<QColor> chooseColour(const QColor& initial) = 0;
    virtual PromptResult<PrinterRequest> choosePrinter(const PrinterRequest& proposal) = 0;
    virtual void beep() = 0;

    // The shapes the program uses; all end in show().
    void message(const QString& text, const QString& title = {});
    void information(const QString& text, const QString& title = {});
    void warning(const QString& text, const QString& title = {});
    void critical(const QString& text, const QString& title = {});
    PromptAnswer question(const QString& text, const QString& title = {},
                          PromptButtons buttons = PromptButtons::YesNo,
                          PromptAnswer defaultButton = PromptAnswer::Yes);
    QString inputBox(const QString& prompt, const QString& title = {}, const QString& defaultAnswer = {});
};

} // namespace velmora

namespace velmora {
// "Pictures (*.gif)|*.gif|All (*.*)|*.*" in the form Qt's file dialogs take:
// "Pictures (*.gif);;All (*)".
QString qtFileFilter(const QString& classicFilter);
} // namespace velmora
