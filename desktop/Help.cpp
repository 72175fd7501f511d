#include "desktop/Help.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace velmora::desktop {

const QStringList& HelpViewers()
{
    static const QStringList viewers = {QStringLiteral("xchm"), QStringLiteral("kchmviewer")};
    return viewers;
}

QString FindHelpViewer()
{
    for (const QString& viewer : HelpViewers()) {
        const QString found = QStandardPaths::findExecutable(viewer);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

bool OpenHelpFile(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (!file.isFile())
        return false;
    const QString viewer = FindHelpViewer();
    return !viewer.isEmpty() && QProcess::startDetached(viewer, {file.absoluteFilePath()});
}

} // namespace velmora::desktop
