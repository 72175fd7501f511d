#pragma once

#include <QString>

namespace velmora::product {

inline QString version()
{
    return QStringLiteral("%1.%2.%3").arg(VELMORA_VERSION_MAJOR).arg(VELMORA_VERSION_MINOR).arg(VELMORA_VERSION_PATCH);
}

inline const QString Title = QStringLiteral("Velmora");
inline const QString WebAddress = QStringLiteral("www.velmora.co.il");
inline const QString SupportMail = QStringLiteral("support@velmora.co.il");

} // namespace velmora::product
