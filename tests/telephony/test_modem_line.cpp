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
#include <QTimer>

#include <atomic>
#include <mutex>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace velmora;

namespace {

// A Hayes modem on the master side of a pseudo-terminal: echoes each command, answers
// "OK" to it (to a dial after the number has gone out), and keeps all it was sent.
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
        m_thread = std::thread([this] { run(); });
    }
    ~FakeModem()
    {
        m_stop = true;
        m_thread.join();
        ::close(m_master);
        ::close(m_slave);
    }

    QString device;

    QByteArray received() const
    {
        std::lock_guard lock(m_mutex);
        return m_received;
    }

private:
    void run()
    {
        QByteArray line;
        while (!m_stop) {
            pollfd poll{m_master, POLLIN, 0};
            char c = 0;
            if (::poll(&poll, 1, 10) <= 0 || ::read(m_master, &c, 1) != 1)
                continue;
            {
                std::lock_guard lock(m_mutex);
                m_received += c;
            }
            line += c;
            if (c != '\r')
                continue;
            if (line.startsWith("ATD"))
                std::this_thread::sleep_for(std::chrono::milliseconds(150)); // the number goes out
            const QByteArray answer = line + "\r\nOK\r\n";
            [[maybe_unused]] const ssize_t sent = ::write(m_master, answer.constData(), size_t(answer.size()));
            line.clear();
        }
    }

    int m_master = -1;
    int m_slave = -1; // held open, so the master side reads on between the port's opens
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
    mutable std::mutex m_mutex;
    QByteArray m_received;
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
        const QStringList machine{"/dev/ttyS10", "/dev/ttyS2", "/dev/ttyUSB0", "/dev/ttyACM1",
                                  "/dev/ttyACM0", "/dev/pts/3", "/dev/ttyS0"};
        QTest::newRow("USB modems, adapters, then the machine's own ports by number")
            << machine << QStringList{"", "", "", ""}
            << QStringList{"/dev/ttyACM0", "/dev/ttyACM1", "/dev/ttyUSB0", "/dev/ttyS0"};
        QTest::newRow("serial ports only, by number not by text")
            << QStringList{"/dev/ttyS10", "/dev/ttyS2", "/dev/ttyS1"} << QStringList{"", "", "", ""}
            << QStringList{"/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS10", ""};
        QTest::newRow("a named device takes its number and leaves the others' turn")
            << machine << QStringList{"", "", "/dev/ttyACM0", ""}
            << QStringList{"/dev/ttyACM1", "/dev/ttyUSB0", "/dev/ttyACM0", "/dev/ttyS0"};
        QTest::newRow("a device found nowhere else") << QStringList() << QStringList{"/dev/pts/7", "", "", ""}
                                                     << QStringList{"/dev/pts/7", "", "", ""};
    }
    void comNumbersTakeTheMachinesDevicesInOrder()
    {
        QFETCH(QStringList, discovered);
        QFETCH(QStringList, named);
        QFETCH(QStringList, com);
        telephony::CommDevices names;
        std::copy(named.begin(), named.end(), names.begin());
        const telephony::CommDevices devices = telephony::commDevices(discovered, names);
        QCOMPARE(QStringList(devices.begin(), devices.end()), com);
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
        prompts.expectBeep().expectMessage(
            PromptIcon::None, QStringLiteral("Please pick up the phone and either press Enter or click OK"));
        window.txtNumber->setText(QStringLiteral("+972 50-123 4567"));
        QElapsedTimer elapsed;
        elapsed.start();
        QTest::mouseClick(window.cmdDial, Qt::LeftButton);
        QVERIFY(elapsed.elapsed() >= 1000); // the probe's second
        QVERIFY(elapsed.elapsed() < 5000);  // found on COM1: no other port tried
        QVERIFY(!port.isOpen());
        QTRY_COMPARE(modem.received(), QByteArray("ATV1Q0\rATDT972501234567;\rATH\r"));
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
