#pragma once

#include "telephony/PortNames.h"
#include "telephony/SerialPort.h"

#include <QSerialPort>

#include <functional>

namespace velmora::telephony {

// A serial device of this machine behind COM1 to COM4.
class DevicePort : public SerialPort {
public:
    // Where COM numbers lead; looked up again at each open, so a modem plugged in later is found.
    explicit DevicePort(std::function<CommDevices()> devices = currentCommDevices);

    void setCommPort(int number) override;
    void setSettings(const QString& settings) override { m_settings = settings; }
    void open() override;
    void close() override;
    bool isOpen() const override { return m_port.isOpen(); }
    int inBufferCount() override;
    void clearInBuffer() override;
    void output(const QByteArray& text) override;
    QByteArray input() override;

    QString deviceName() const { return m_port.portName(); }

private:
    std::function<CommDevices()> m_devices;
    QSerialPort m_port;
    int m_commPort = 1;
    QString m_settings = PortSettings;
};

} // namespace velmora::telephony
