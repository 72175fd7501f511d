#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Settings.h"
#include "app/SettingsKeys.h"
#include "app/WeddingState.h"
#include "telephony/DevicePort.h"
#include "telephony/DialerClock.h"
#include "telephony/PortNames.h"
#include "telephony/ui/DialerWindow.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace velmora;

namespace {

// A Hayes modem on the master side of a pseudo-terminal, served by the dialer's own waits:
// echoes each command, answers "OK" to it (to a dial after the number has gone out), and
// keeps all it was sent.
class FakeModem {
public:
    FakeModem()
    {
        char name[256] = {};
        // Raw from the start: the port restores these settings when it closes, and a
        // terminal that echoes would hand the modem's answers back to it as commands.
        termios raw{};
        cfmakeraw(&raw);
        if (openpty(&m_master, &m_slave, name, &raw, nullptr) == 0)
            device = QString::fromLocal8Bit(name);
        m_notifier.setSocket(m_master);
        m_notifier.setEnabled(true);
        QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] { read(); });
    }
    ~FakeModem()
    {
        m_notifier.setEnabled(false);
        ::close(m_master);
        ::close(m_slave);
    }

    QString device;
    QByteArray received;

private:
    void read()
    {
        char c = 0;
        if (::read(m_master, &c, 1) != 1)
            return;
        received += c;
        m_line += c;
        if (c != '\r')
            return;
        const QByteArray answer = std::exchange(m_line, {}) + "\r\nOK\r\n";
        QTimer::singleShot(answer.startsWith("ATD") ? 150 : 0, &m_notifier, [this, answer] {
            [[maybe_unused]] const ssize_t sent = ::write(m_master, answer.constData(), size_t(answer.size()));
        });
    }

    int m_master = -1;
    int m_slave = -1; // held open, so the master side reads on between the port's opens
    QSocketNotifier m_notifier{QSocketNotifier::Read};
    QByteArray m_line;
};

} // namespace

class ModemLineTest : public QObject {
    Q_OBJECT

private slots:
    void init() { test::clearUserStore(); }

    void comNumbersTakeTheMachinesDevicesInOrder_data()
    {
        QTest::addColumn<QStringList>("discovered");
        QTest::addColumn<QStringList>("named");
        QTest::addColumn<QStringList>("com");
        using L = QStringList;
        const L machine{"/dev/ttyS10", "/dev/ttyS2", "/dev/ttyUSB0", "/dev/ttyACM1",
                        "/dev/ttyACM0", "/dev/pts/3", "/dev/ttyS0"};
        QTest::newRow("USB modems, adapters, then serial ports by number")
            << machine << L(4) << L{"/dev/ttyACM0", "/dev/ttyACM1", "/dev/ttyUSB0", "/dev/ttyS0"};
        QTest::newRow("serial ports only, by number not by text")
            << L{"/dev/ttyS10", "/dev/ttyS2", "/dev/ttyS1"} << L(4) << L{"/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS10", ""};
        QTest::newRow("a named device takes its number, the others their turn")
            << machine << L{"", "", "/dev/ttyACM0", ""} << L{"/dev/ttyACM1", "/dev/ttyUSB0", "/dev/ttyACM0", "/dev/ttyS0"};
        QTest::newRow("a device found nowhere else") << L() << L{"/dev/pts/7", "", "", ""} << L{"/dev/pts/7", "", "", ""};
    }
    void comNumbersTakeTheMachinesDevicesInOrder()
    {
        QFETCH(QStringList, discovered);
        QFETCH(QStringList, named);
        telephony::CommDevices names;
        std::copy(named.begin(), named.end(), names.begin());
        const telephony::CommDevices devices = telephony::commDevices(discovered, names);
        QTEST(QStringList(devices.begin(), devices.end()), "com");
    }

    void aCallGoesThroughARealTerminal()
    {
        FakeModem modem;
        QVERIFY(!modem.device.isEmpty());
        UserStore().write(keys::DialerDevice, 1, modem.device);

        WeddingState state;
        state.DialerFree = true;
        test::ScriptedPrompts prompts;
        telephony::DevicePort port;
        telephony::EventLoopClock clock;
        ui::DialerWindow window(state, prompts, port, clock);
        window.show();
        prompts.expectBeep().expectMessage(PromptIcon::None, "Please pick up the phone and either press Enter or click OK");
        window.txtNumber->setText(QStringLiteral("+972 50-123 4567"));
        QElapsedTimer elapsed;
        elapsed.start();
        QTest::mouseClick(window.cmdDial, Qt::LeftButton);
        QVERIFY(elapsed.elapsed() >= 1000 && elapsed.elapsed() < 5000); // the probe's second, on COM1 only
        QVERIFY(!port.isOpen());
        QTRY_COMPARE(modem.received, QByteArray("ATV1Q0\rATDT972501234567;\rATH\r"));
        QVERIFY(prompts.verifyDone());
    }

    void aWaitEndsWhenWokenOrWhenTheProgramEnds()
    {
        telephony::EventLoopClock clock;
        const qint64 start = clock.now();
        QTimer::singleShot(10, [&] { clock.wake(); });
        QVERIFY(clock.wait(5000));
        QVERIFY(clock.now() - start < 2000);

        // Last: once the program has been told to end, no wait holds it.
        QTimer::singleShot(10, [] { QCoreApplication::exit(0); });
        QVERIFY(!clock.wait(5000));
        QVERIFY(!clock.wait(5000));
        QVERIFY(clock.now() - start < 2000);
    }
};

VELMORA_TEST_MAIN(ModemLineTest)
#include "test_modem_line.moc"
