#include "TestMain.h"

#include <QDir>

namespace velmora::test {

void isolateEnvironment(const QTemporaryDir& home)
{
    const QString root = home.path();
    QDir().mkpath(root + QStringLiteral("/config"));
    QDir().mkpath(root + QStringLiteral("/runtime"));
    QFile::setPermissions(root + QStringLiteral("/runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("HOME", root.toUtf8());
    qputenv("XDG_CONFIG_HOME", (root + QStringLiteral("/config")).toUtf8());
    qputenv("XDG_RUNTIME_DIR", (root + QStringLiteral("/runtime")).toUtf8());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace velmora::test
