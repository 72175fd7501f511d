#pragma once

#include <QString>

#include <functional>

namespace velmora {
class PendingFailure;
class Prompts;
struct WeddingState;
}

namespace velmora::store {

inline const QString DatabaseFileName = QStringLiteral("Velmora.mdb");
inline const QString SettingsFileName = QStringLiteral("velmora.ini");
inline const QString BackupSuffix = QStringLiteral(".old");

// The file dialog's filters, in the classic "Name (*.ext)|*.ext" form.
QString ExportFilter(const QString& fileName);
QString ImportFilter(const QString& fileName);

// `folder` is where the file dialog opens (empty: the wedding's folder); it becomes the
// folder of the file chosen, so that the second file of a pair is looked for beside the first.

// Copies AppPath + fileName to a place the user picks; asks before it overwrites.
// False when the user stopped it or a dialog failed (that failure was shown); a failed
// copy is kept in `pending` for the command to report.
bool ExportFile(const WeddingState& state, Prompts& prompts, const QString& fileName, PendingFailure& pending,
                QString& folder);

// Brings a file the user picks over AppPath + fileName, keeping the file it replaces as
// fileName + ".old". The chosen file is copied in whole before the backup is made, so a
// backup chosen to go back to is never lost; the file is replaced only once its backup
// is complete. False when the user stopped it or the source isn't there.
bool ImportFile(WeddingState& state, Prompts& prompts, const QString& fileName, PendingFailure& pending,
                QString& folder);

// mnuExportDB: the database, then the settings, and one message at the end.
void ExportWedding(WeddingState& state, Prompts& prompts);

// mnuImportDB. `reload` shows the new wedding (the list, then the map) and returns
// false when the new file ended the program.
void ImportWedding(WeddingState& state, Prompts& prompts, const std::function<bool()>& reload);

} // namespace velmora::store
