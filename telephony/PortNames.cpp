#include "telephony/PortNames.h"

#include "app/Settings.h"
#include "app/SettingsKeys.h"
#include "app/TextNumbers.h"

#include <QRegularExpression>
#include <QSerialPortInfo>

#include <algorithm>
#include <tuple>
#include <vector>

namespace velmora::telephony {

QStringList modemDeviceOrder(const QStringList& devices)
{
    static const QRegularExpression family(QStringLiteral("^/dev/tty(ACM|USB|S)(\\d+)$"));
    struct Ranked {
        int family;
        qlonglong number;
        QString path;
    };
    std::vector<Ranked> ranked;
    for (const QString& device : devices) {
        const auto match = family.match(device);
        if (!match.hasMatch())
            continue;
        const QString kind = match.captured(1);
        const int rank = kind == u"ACM" ? 0 : kind == u"USB" ? 1 : 2;
        ranked.push_back({rank, match.captured(2).toLongLong(), device});
    }
    std::sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) {
        return std::tie(a.family, a.number, a.path) < std::tie(b.family, b.number, b.path);
    });
    QStringList ordered;
    for (const Ranked& entry : ranked) {
        if (!ordered.contains(entry.path))
            ordered << entry.path;
    }
    return ordered;
}

CommDevices commDevices(const QStringList& discovered, const CommDevices& named)
{
    QStringList free = modemDeviceOrder(discovered);
    for (const QString& device : named)
        free.removeAll(device);
    CommDevices devices;
    for (size_t port = 0; port < devices.size(); ++port) {
        if (!named[port].isEmpty())
            devices[port] = named[port];
        else if (!free.isEmpty())
            devices[port] = free.takeFirst();
    }
    return devices;
}

CommDevices currentCommDevices()
{
    QStringList discovered;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        discovered << info.systemLocation();
    const UserStore store;
    CommDevices named;
    for (int port = 1; port <= CommPortCount; ++port)
        named[size_t(port - 1)] = Trim(store.read(keys::DialerDevice, port));
    return commDevices(discovered, named);
}

} // namespace velmora::telephony
