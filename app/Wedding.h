#pragma once

#include <QDate>
#include <QString>

namespace velmora {

struct WeddingState;
class SettingsFile;
class UserStore;

// Writes the Options section and, anew, the UserGroups section of the settings file.
void SaveOptions(const WeddingState& state);

// True when `path`, trimmed, names an existing plain file.
bool FileExists(const QString& path);

// Sets DaysLeft to the days from `today` to the wedding, never below 0, and returns it.
QString DaysToWedding(WeddingState& state, const QDate& today = QDate::currentDate());

// Moves the settings of earlier versions from the per-user store into the settings file.
void MigrateSettings(WeddingState& state, const UserStore& store);

// The wedding's names and limits, then the groups, from the settings file, as the main
// window reads them at load; runs MigrateSettings between the two when a name is empty.
void ReadWeddingOptions(WeddingState& state, const UserStore& store);

} // namespace velmora

namespace velmora {
// The wedding's folder from the current directory, with exactly one separator at its end.
QString AppPathFor(const QString& currentDirectory);
} // namespace velmora
