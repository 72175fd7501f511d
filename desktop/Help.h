#pragma once

#include <QString>
#include <QStringList>

namespace velmora::desktop {

inline const QString CompiledHelpName = QStringLiteral("velmora.chm");
// The manual the program carries, in Hebrew.
inline const QString ManualUrl = QStringLiteral("qrc:/help/velmora.html");
inline const QString ManualResource = QStringLiteral(":/help/velmora.html");

// Programs of this desktop that show a compiled help file, in the order tried.
const QStringList& HelpViewers();
// The first of them found on the PATH; empty when none is installed.
QString FindHelpViewer();

// Opens a compiled help file with its viewer. False, and nothing else happens, when the
// file is missing or no viewer is installed or starts.
bool OpenHelpFile(const QString& fileName);

} // namespace velmora::desktop
