#pragma once

#include <QString>
#include <QStringList>

namespace velmora {
class Prompts;
}

namespace velmora::desktop {

QString AboutCaption();
QString VersionText();
QString DescriptionText();

// System information programs of the desktops this runs on, in the order tried.
const QStringList& SystemInfoTools();

// Starts the first system information program installed; says so when there is none.
void StartSysInfo(Prompts& prompts);

} // namespace velmora::desktop
