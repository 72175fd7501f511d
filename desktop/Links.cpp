#include "desktop/Links.h"

#include <QDesktopServices>
#include <QUrl>

namespace velmora::desktop {

QString LinkTarget(const QString& target, quint8 kind)
{
    switch (kind) {
    case WebLink:
        return target.left(7) == u"http://" ? target : QStringLiteral("http://") + target;
    case MailLink:
        return QStringLiteral("mailto:") + target;
    default:
        return target;
    }
}

void OpenLink(const QString& target, quint8 kind)
{
    QDesktopServices::openUrl(QUrl(LinkTarget(target, kind)));
}

} // namespace velmora::desktop
