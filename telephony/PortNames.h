#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace velmora::telephony {

inline constexpr int CommPortCount = 4;
using CommDevices = std::array<QString, CommPortCount>; // COM1 to COM4; empty: no device

// Serial devices that may hold a modem, in the order COM numbers take them: USB modems
// (/dev/ttyACM*), USB serial adapters (/dev/ttyUSB*), then the machine's own ports
// (/dev/ttyS*), each family by its number. Other devices are left out.
QStringList modemDeviceOrder(const QStringList& devices);

// COM1 to COM4: a device the user named for a number takes it; the other numbers take the
// ordered devices that nobody named, in turn.
CommDevices commDevices(const QStringList& discovered, const CommDevices& named);

// This machine's devices for COM1 to COM4 now, with the user's names from the per-user
// store, section "Dialer", keys "COM1" to "COM4".
CommDevices currentCommDevices();

} // namespace velmora::telephony
