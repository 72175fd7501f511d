#include "store/ExportImport.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "store/FileCopy.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace velmora::store {

namespace {

constexpr int FileExistsFailure = 58;

bool isDatabase(const QString& fileName)
{
    return fileName.compare(DatabaseFileName, Qt::CaseInsensitive) == 0;
}

FileRequest dialogFor(const QString& fileName, const QString& filter, const QString& folder)
{
    FileRequest request;
    request.fileName = fileName;
    request.filter = filter;
    request.initialDir = folder;
    return request;
}

// A dialog that didn't give a path: a cancel is quiet, anything else is shown.
bool chosen(const PromptResult<QString>& result, Prompts& prompts, QString& folder)
{
    if (result) {
        folder = QFileInfo((*result).trimmed()).absolutePath();
        return true;
    }
    if (result.failure.number() != CancelFailureNumber)
        prompts.warning(result.failure.text());
    return false;
}

} // namespace

QString ExportFilter(const QString& fileName)
{
    return isDatabase(fileName) ? QStringLiteral("Microsoft Database (*.mdb)|*.mdb")
                                : QStringLiteral("Windows Ini - File (*.ini)|*.ini");
}

QString ImportFilter(const QString& fileName)
{
    return ExportFilter(fileName) + QStringLiteral("|Backup File (*.old)|*.old");
}

bool ExportFile(const WeddingState& state, Prompts& prompts, const QString& fileName, PendingFailure& pending,
                QString& folder)
{
    const QString source = state.AppPath + fileName;
    FileRequest request = dialogFor(fileName, ExportFilter(fileName), folder);
    request.confirmOverwrite = false; // the question below is the one asked
    const PromptResult<QString> target = prompts.saveFile(request);
    if (!chosen(target, prompts, folder))
        return false;

    try {
        copyFile(source, *target, false);
        return true;
    } catch (const Failure& failure) {
        if (failure.number() != FileExistsFailure) {
            pending.fail(failure);
            return true;
        }
    }
    MessageRequest question;
    question.icon = PromptIcon::Information;
    question.text = QStringLiteral("?") + *target + QStringLiteral(" האם ברצונך לשכתב");
    question.buttons = PromptButtons::YesNo;
    question.defaultButton = PromptAnswer::No;
    if (prompts.show(question) != PromptAnswer::Yes)
        return false;
    pending.attempt([&] { copyFile(source, *target, true); });
    return true;
}

bool ImportFile(WeddingState& state, Prompts& prompts, const QString& fileName, PendingFailure& pending,
                QString& folder)
{
    const PromptResult<QString> source = prompts.openFile(dialogFor(fileName, ImportFilter(fileName), folder));
    if (!chosen(source, prompts, folder))
        return false;
    if (!FileExists(*source)) {
        prompts.message(QStringLiteral(".קובץ המקור לא נמצא"));
        return false;
    }
    QDir::setCurrent(state.AppPath);

    const QString target = state.AppPath + fileName;
    std::optional<StagedCopy> incoming;
    if (!pending.attempt([&] { incoming.emplace((*source).trimmed(), target); }))
        return true;
    // The file is replaced only when its backup is whole.
    if (QFileInfo::exists(target) && !pending.attempt([&] { copyFile(target, target + BackupSuffix, true); }))
        return true;
    pending.attempt([&] { incoming->commit(true); });
    return true;
}

void ExportWedding(WeddingState& state, Prompts& prompts)
{
    PendingFailure pending;
    QString folder;
    if (!ExportFile(state, prompts, DatabaseFileName, pending, folder))
        return;
    if (!ExportFile(state, prompts, SettingsFileName, pending, folder))
        return;
    QDir::setCurrent(state.AppPath);
    if (pending)
        prompts.warning(QStringLiteral("!פעולת יצוא מבנה הנתונים נכשלה") + state.CrLf + pending.failure().text());
    else
        prompts.message(QStringLiteral(".פעולת יצוא מבנה הנתונים הצליחה"));
}

void ImportWedding(WeddingState& state, Prompts& prompts, const std::function<bool()>& reload)
{
    if (prompts.question(QStringLiteral("פעולה זו מייבאת מבנה נתונים והגדרות") + state.CrLf
                             + QStringLiteral("?של חתונה חיצונית, להמשיך"),
                         QStringLiteral("אזהרת מערכת"))
        != PromptAnswer::Yes)
        return;

    PendingFailure pending;
    // Nothing may hold the file while it is replaced.
    pending.attempt([&] {
        if (state.WeddingRs.isOpen())
            state.WeddingRs.close();
        state.WeddingRs = Recordset();
        if (state.WeddingDb.isOpen())
            state.WeddingDb.close();
    });
    QString folder;
    if (!ImportFile(state, prompts, DatabaseFileName, pending, folder))
        return;
    if (!ImportFile(state, prompts, SettingsFileName, pending, folder))
        return;
    pending.attempt([&] { state.WeddingDb = Database::open(state.databaseFile()); });
    if (!reload())
        return;
    if (pending) {
        QDir::setCurrent(state.AppPath);
        prompts.warning(QStringLiteral("!פעולת יבוא מבנה הנתונים נכשלה") + state.CrLf + pending.failure().text());
    } else {
        prompts.message(QStringLiteral(".פעולת יבוא מבנה הנתונים הצליחה"));
    }
}

} // namespace velmora::store
