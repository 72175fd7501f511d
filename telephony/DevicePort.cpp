#include "telephony/DevicePort.h"

#include "app/Failure.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace velmora::telephony {

namespace {

// Failure numbers of the port, as its users have always seen them.
enum PortError {
    InvalidPropertyValue = 380,
    InvalidPortNumber = 8002,
    PortAlreadyOpen = 8005,
    PortInUse = 8010,
    PortNotOpen = 8012,
    CannotSetSettings = 8015,
    ReadFailed = 8020,
    WriteFailed = 8021,
};

struct LineSettings {
    qint32 baud = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

LineSettings parseSettings(const QString& text)
{
    const Failure invalid(InvalidPropertyValue, QStringLiteral("Invalid property value"));
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        throw invalid;
    LineSettings settings;
    bool ok = false;
    settings.baud = parts[0].trimmed().toInt(&ok);
    if (!ok || settings.baud <= 0)
        throw invalid;
    // The letters and counts that a settings text may use, and what they mean to the port.
    static const QHash<QString, QSerialPort::Parity> parities{{"N", QSerialPort::NoParity},
                                                             {"E", QSerialPort::EvenParity},
                                                             {"O", QSerialPort::OddParity},
                                                             {"M", QSerialPort::MarkParity},
                                                             {"S", QSerialPort::SpaceParity}};
    static const QHash<QString, QSerialPort::StopBits> stops{
        {"1", QSerialPort::OneStop}, {"1.5", QSerialPort::OneAndHalfStop}, {"2", QSerialPort::TwoStop}};
    const QString parity = parts[1].trimmed().toUpper();
    const QString stop = parts[3].trimmed();
    const int dataBits = parts[2].trimmed().toInt(&ok);
    if (!parities.contains(parity) || !stops.contains(stop) || !ok || dataBits < 5 || dataBits > 8)
        throw invalid;
    settings.parity = parities[parity];
    settings.stopBits = stops[stop];
    settings.dataBits = QSerialPort::DataBits(dataBits);
    return settings;
}

} // namespace

DevicePort::DevicePort(std::function<CommDevices()> devices) : m_devices(std::move(devices)) {}

void DevicePort::setCommPort(int number)
{
    if (number < 1 || number > CommPortCount)
        throw Failure(InvalidPortNumber, QStringLiteral("Invalid port number"));
    if (m_port.isOpen())
        throw Failure(PortAlreadyOpen, QStringLiteral("Port already open"));
    m_commPort = number;
}

void DevicePort::open()
{
    if (m_port.isOpen())
        throw Failure(PortAlreadyOpen, QStringLiteral("Port already open"));
    const LineSettings settings = parseSettings(m_settings);
    const QString device = m_devices()[size_t(m_commPort - 1)];
    if (device.isEmpty())
        throw Failure(InvalidPortNumber, QStringLiteral("Invalid port number"));
    m_port.setPortName(device);
    if (!m_port.open(QIODevice::ReadWrite)) {
        const bool inUse = m_port.error() == QSerialPort::PermissionError;
        const QString reason = m_port.errorString();
        throw Failure(inUse ? PortInUse : InvalidPortNumber, device + QStringLiteral(": ") + reason);
    }
    if (!m_port.setBaudRate(settings.baud) || !m_port.setParity(settings.parity)
        || !m_port.setDataBits(settings.dataBits) || !m_port.setStopBits(settings.stopBits)) {
        const QString reason = m_port.errorString();
        m_port.close();
        throw Failure(CannotSetSettings, device + QStringLiteral(": ") + reason);
    }
}

void DevicePort::close()
{
    if (m_port.isOpen())
        m_port.close();
}

int DevicePort::inBufferCount()
{
    if (!m_port.isOpen())
        throw Failure(PortNotOpen, QStringLiteral("Operation valid only when the port is open"));
    return int(std::min<qint64>(m_port.bytesAvailable(), std::numeric_limits<int>::max()));
}

void DevicePort::clearInBuffer()
{
    if (!m_port.isOpen())
        throw Failure(PortNotOpen, QStringLiteral("Operation valid only when the port is open"));
    m_port.clear(QSerialPort::Input);
    m_port.readAll(); // what Qt had already taken from the device
}

void DevicePort::output(const QByteArray& text)
{
    if (!m_port.isOpen())
        throw Failure(PortNotOpen, QStringLiteral("Operation valid only when the port is open"));
    // Handed to the device now: the hang-up is followed at once by the close.
    m_port.clearError();
    const bool written = m_port.write(text) == text.size();
    m_port.flush();
    if (!written || m_port.error() != QSerialPort::NoError)
        throw Failure(WriteFailed, m_port.portName() + QStringLiteral(": ") + m_port.errorString());
}

QByteArray DevicePort::input()
{
    if (!m_port.isOpen())
        throw Failure(PortNotOpen, QStringLiteral("Operation valid only when the port is open"));
    m_port.clearError();
    const QByteArray arrived = m_port.readAll();
    if (m_port.error() == QSerialPort::ReadError || m_port.error() == QSerialPort::ResourceError)
        throw Failure(ReadFailed, m_port.portName() + QStringLiteral(": ") + m_port.errorString());
    return arrived;
}

} // namespace velmora::telephony
