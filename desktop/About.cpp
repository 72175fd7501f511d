#include "desktop/About.h"

#include "app/Product.h"
#include "app/Prompts.h"

#include <QProcess>
#include <QStandardPaths>

namespace velmora::desktop {

QString AboutCaption()
{
    return QStringLiteral("About ") + product::Title;
}

QString VersionText()
{
    return QStringLiteral("Version ") + product::version();
}

QString DescriptionText()
{
    return QStringLiteral("Velmora has been created to simplify the preparation stage of guest listing.\n March 2001");
}

const QStringList& SystemInfoTools()
{
    static const QStringList tools = {QStringLiteral("hardinfo"), QStringLiteral("kinfocenter"),
                                      QStringLiteral("gnome-system-monitor"), QStringLiteral("xfce4-taskmanager")};
    return tools;
}

void StartSysInfo(Prompts& prompts)
{
    for (const QString& tool : SystemInfoTools()) {
        const QString found = QStandardPaths::findExecutable(tool);
        if (!found.isEmpty() && QProcess::startDetached(found, {}))
            return;
    }
    MessageRequest request;
    request.text = QStringLiteral("System Information Is Unavailable At This Time");
    request.leftToRight = true;
    prompts.show(request);
}

} // namespace velmora::desktop
