#pragma once

#include <QString>

namespace velmora::desktop {

enum LinkKind : quint8 { WebLink = 0, MailLink = 1 };

// The address handed to the desktop: a web address gets "http://" unless it begins with
// exactly that, a mail address gets "mailto:", any other kind stays as it is.
QString LinkTarget(const QString& target, quint8 kind);

// Opens the address with the desktop's browser or mail program; the outcome isn't looked at.
void OpenLink(const QString& target, quint8 kind);

} // namespace velmora::desktop
