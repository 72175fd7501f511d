#pragma once

#include <QByteArray>
#include <QString>

namespace velmora::telephony {

// The dialer's serial port: COM1 to COM4 at 9600 baud, no parity, 8 data bits, 1 stop bit.
inline const QString PortSettings = QStringLiteral("9600,N,8,1");

// The members of a serial port that the dialer uses. Failures are thrown as velmora::Failure.
class SerialPort {
public:
    virtual ~SerialPort() = default;

    virtual void setCommPort(int number) = 0; // 1 to 4
    // "baud,parity,data bits,stop bits", e.g. "9600,N,8,1"; applied at the next open.
    virtual void setSettings(const QString& settings) = 0;
    // Throws when the port has no device, is in use, or refuses the settings.
    virtual void open() = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;

    // Bytes that have arrived and wait to be read.
    virtual int inBufferCount() = 0;
    // Drops what has arrived.
    virtual void clearInBuffer() = 0;
    virtual void output(const QByteArray& text) = 0;
    // All that has arrived.
    virtual QByteArray input() = 0;
};

} // namespace velmora::telephony
