#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Settings.h"
#include "app/SettingsKeys.h"
#include "app/ui/MainWindow.h"
#include "seating/ui/TableMapWindow.h"
#include "telephony/DevicePort.h"
#include "telephony/Dialer.h"
#include "telephony/DialerClock.h"
#include "telephony/PortNames.h"
#include "telephony/SerialPort.h"
#include "telephony/ui/DialerWindow.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <QTableView>
#include <QTimer>

#include <array>
#include <functional>
#include <map>

#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace velmora;
using telephony::DialerPhase;

namespace {

const QString Idle = QStringLiteral("To dial a number, click the Dial button");
const QString PickUp = QStringLiteral("Please pick up the phone and either press Enter or click OK");

// What one COM port does.
struct PortScript {
    bool opens = true;      // false: no device, or in use
    bool modem = false;     // answers the probe at once and the dial after dialAnswerMs
    int dialAnswerMs = 300; // -1: never
    bool reopens = true;    // false: lost between the search and the dial
    bool hangUpFails = false;
};
using Ports = std::array<PortScript, 4>;

void expectQuit(test::ScriptedPrompts& prompts, PromptAnswer answer)
{
    prompts.expectBox(PromptIcon::Critical, QStringLiteral("Quiting dialer will terminat the call!"),
                      QStringLiteral("Warning..."), PromptButtons::OkCancel, PromptAnswer::Ok, answer);
}

Ports modemOn(int port, int dialAnswerMs = 300)
{
    Ports ports;
    ports[size_t(port - 1)] = {.modem = true, .dialAnswerMs = dialAnswerMs};
    return ports;
}

// A Hayes modem as scripted: it echoes each command and answers "OK" as the clock goes on.
class ScriptedPort : public telephony::SerialPort {
public:
    Ports ports;
    QStringList log; // "open 1", "1 ATV1Q0\r" (a write), "close 1", "refused 2"
    std::multimap<qint64, QByteArray> coming;
    QByteArray arrived;

    void setCommPort(int number) override { m_port = number; }
    void setSettings(const QString& settings) override { QCOMPARE(settings, QStringLiteral("9600,N,8,1")); }
    void open() override
    {
        PortScript& script = ports[size_t(m_port - 1)];
        log << (script.opens ? "open " : "refused ") + QString::number(m_port);
        if (!script.opens)
            throw Failure(8002, QStringLiteral("Invalid port number"));
        script.opens = script.reopens;
        m_open = true;
        arrived.clear();
        coming.clear();
    }
    void close() override { m_open = false; log << "close " + QString::number(m_port); }
    bool isOpen() const override { return m_open; }
    int inBufferCount() override { return int(arrived.size()); }
    void clearInBuffer() override { arrived.clear(); }
    void output(const QByteArray& text) override
    {
        log << QStringLiteral("%1 %2").arg(m_port).arg(QString::fromLatin1(text));
        const PortScript& script = ports[size_t(m_port - 1)];
        if (text == telephony::HangUpCommand && script.hangUpFails)
            throw Failure(8021, QStringLiteral("The modem is gone"));
        if (!script.modem)
            return;
        coming.emplace(m_now + 5, text);
        if (text == telephony::ProbeCommand)
            coming.emplace(m_now + 20, QByteArrayLiteral("\r\nOK\r\n"));
        else if (text.startsWith("ATDT") && script.dialAnswerMs >= 0)
            coming.emplace(m_now + script.dialAnswerMs, QByteArrayLiteral("\r\nOK\r\n"));
    }
    QByteArray input() override { return std::exchange(arrived, {}); }

    void advance(qint64 now)
    {
        m_now = now;
        for (; m_open && !coming.empty() && coming.begin()->first <= now; coming.erase(coming.begin()))
            arrived += coming.begin()->second;
    }
    // The writes after the search.
    QStringList calls() const
    {
        QStringList writes = log.filter(QRegularExpression(QStringLiteral("^\\d ")));
        writes.removeIf([](const QString& write) { return write.endsWith(u"ATV1Q0\r"); });
        return writes;
    }

private:
    int m_port = 1;
    bool m_open = false;
    qint64 m_now = 0;
};

// Time passes only in the dialer's waits; what the user does happens at set moments.
class ScriptedClock : public telephony::DialerClock {
public:
    explicit ScriptedClock(ScriptedPort& port) : m_port(port) {}

    std::multimap<qint64, std::function<void()>> actions;
    bool ending = false;

    qint64 now() override { return m_now; }
    bool wait(int milliseconds) override
    {
        if (++m_waits > 10000)
            return QTest::qFail("the dialer never stopped waiting", __FILE__, __LINE__), false;
        m_woken = false;
        const qint64 until = m_now + milliseconds;
        while (!m_woken && !actions.empty() && actions.begin()->first <= until) {
            m_port.advance(m_now = std::max(m_now, actions.begin()->first));
            const auto action = actions.begin()->second;
            actions.erase(actions.begin());
            action();
        }
        if (!m_woken)
            m_port.advance(m_now = until);
        return !ending;
    }
    void wake() override { m_woken = true; }

private:
    ScriptedPort& m_port;
    qint64 m_now = 0;
    int m_waits = 0;
    bool m_woken = false;
};

// Scripted prompts that also look at the dialer when each box comes up.
class WatchedPrompts : public test::ScriptedPrompts {
public:
    std::function<void()> onShow;
    PromptAnswer show(const MessageRequest& request) override
    {
        if (!request.leftToRight) // the dialer speaks English
            QTest::qFail(qPrintable(QStringLiteral("laid out right to left: ") + request.text), __FILE__, __LINE__);
        if (onShow)
            onShow();
        return ScriptedPrompts::show(request);
    }
};

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

class DialerTest : public QObject {
    Q_OBJECT

private:
    WeddingState m_state;
    WatchedPrompts m_prompts;
    std::unique_ptr<ScriptedPort> m_port;
    std::unique_ptr<ScriptedClock> m_clock;
    std::unique_ptr<ui::DialerWindow> m_window;

    telephony::Dialer& dialer() { return m_window->dialer(); }
    void dial(const QString& number)
    {
        m_window->txtNumber->setText(number);
        QTest::mouseClick(m_window->cmdDial, Qt::LeftButton);
    }
    void at(qint64 time, std::function<void()> action) { m_clock->actions.emplace(time, std::move(action)); }

    // A row of the states table: what the window shows.
    void expectLook(DialerPhase phase, bool free, const QString& status, bool idleControls)
    {
        QCOMPARE(dialer().phase(), phase);
        QCOMPARE(m_state.DialerFree, free);
        QCOMPARE(m_window->txtStatus->text(), status);
        QCOMPARE(QList<bool>({m_window->txtNumber->isEnabled(), m_window->cmdDial->isEnabled(), m_window->cmdQuit->isEnabled(),
                              !m_window->cmdCancel->isEnabled()}), QList<bool>(4, idleControls));
    }

private slots:
    void init()
    {
        m_state = WeddingState();
        m_state.DialerFree = true;
        m_port = std::make_unique<ScriptedPort>();
        m_clock = std::make_unique<ScriptedClock>(*m_port);
        m_window = std::make_unique<ui::DialerWindow>(m_state, m_prompts, *m_port, *m_clock);
        m_window->show();
    }

    void cleanup()
    {
        m_window.reset();
        m_prompts.onShow = nullptr;
        m_prompts.verifyDone();
    }

    // How a call ends, by what the modem and the user do at moments of the clock: "500 cancel",
    // "700 dial <number>", "1100 close Ok|Cancel" (the program ending is in the last test).
    void aCallEndsAsTheModemAndTheUserDecide_data()
    {
        QTest::addColumn<Ports>("ports");
        QTest::addColumn<QStringList>("actions");
        QTest::addColumn<QStringList>("prompts"); // "beep", "quit Ok|Cancel", "!" before a warning's text
        QTest::addColumn<QStringList>("calls");
        auto add = [](const char* name, const Ports& ports, const QStringList& actions, const QStringList& prompts,
                      const QStringList& calls) { QTest::newRow(name) << ports << actions << prompts << calls; };
        const QStringList dialled{"1 ATDT0501234567;\r", "1 ATH\r"};
        Ports none, lost = modemOn(1), failing = modemOn(1);
        none[0].opens = none[2].opens = false; // in use, passed over
        lost[0].reopens = false;
        failing[0].hangUpFails = true;
        add("no modem", none, {}, {"No modem detected"}, {});
        add("port lost before the dial", lost, {},
            {"COM1 is not available.\rChange the CommPort property to another port."}, {});
        add("a failed step reported after the call", failing, {}, {"beep", PickUp, "!8021 The modem is gone"}, dialled);
        add("cancel while dialling", modemOn(1, -1), {"1500 cancel"}, {}, dialled);
        add("cancel while searching, then a modem: dialled and hung up at once", modemOn(3), {"500 cancel"}, {},
            {"3 ATDT0501234567;\r", "3 ATH\r"});
        add("dial again after a cancelled search: the search ends, the new call runs", modemOn(2),
            {"500 cancel", "700 dial 03-1111111"}, {"beep", PickUp}, {"2 ATDT031111111;\r", "2 ATH\r"});
        add("quit as the modem answers, OK: no pick-up asked", modemOn(1, 100), {"1100 close Ok"}, {"quit Ok"}, dialled);
        add("quit while searching, OK: no more ports, no message", {}, {"1400 close Ok"}, {"quit Ok"}, {});
        add("quit while dialling, Cancel", modemOn(1), {"1100 close Cancel"}, {"quit Cancel", "beep", PickUp}, dialled);
    }
    void aCallEndsAsTheModemAndTheUserDecide()
    {
        QFETCH(Ports, ports);
        QFETCH(QStringList, actions);
        QFETCH(QStringList, prompts);
        m_port->ports = ports;
        for (const QString& action : actions) {
            const QStringList words = action.split(u' ');
            at(words[0].toLongLong(), [this, words] {
                if (words[1] == u"cancel")
                    QTest::mouseClick(m_window->cmdCancel, Qt::LeftButton);
                else if (words[1] == u"dial")
                    dial(words[2]);
                else
                    m_window->close();
            });
        }
        bool stays = true;
        for (const QString& prompt : prompts) {
            const bool warning = prompt.startsWith(u'!');
            if (prompt == u"beep")
                m_prompts.expectBeep();
            else if (prompt.startsWith(u"quit "))
                expectQuit(m_prompts, (stays = prompt.endsWith(u"Cancel")) ? PromptAnswer::Cancel : PromptAnswer::Ok);
            else
                m_prompts.expectMessage(warning ? PromptIcon::Warning : PromptIcon::None, prompt.mid(warning ? 1 : 0));
        }
        dial(QStringLiteral("050-1234567"));
        QTEST(m_port->calls(), "calls");
        QVERIFY(!m_port->isOpen());
        QCOMPARE(m_window->isVisible(), stays);
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    // A number of no digits of ours is refused and can be mended; then the keys do what the
    // buttons do: Enter dials (Escape is off during the call), Escape quits. The search probes
    // each port that opens for a second, in order; the window shows each step, and the modem
    // holds the line until the user has the handset.
    void aNumberWithoutDigitsCanBeCorrectedThenKeysDial()
    {
        m_prompts.expectBeep().expectMessage(PromptIcon::None, QStringLiteral("The phone number is not valid."));
        dial(QStringLiteral("٠٥٠ אין טלפון"));
        expectLook(DialerPhase::Invalid, true, QString(), true);
        QVERIFY(m_port->log.isEmpty());
        QCOMPARE(telephony::Dialer::DialDigits(QString(255, u'7') + u'8'), QString(255, u'7')); // the rest ignored

        m_port->ports = modemOn(3);
        m_port->ports[0].opens = false;
        m_port->ports[3].modem = true; // the first modem found is the one used
        at(500, [&] { expectLook(DialerPhase::Searching, false, QStringLiteral("Searching for modem..."), false); });
        at(2100, [&] {
            expectLook(DialerPhase::Dialling, false, QStringLiteral("Dialing... ATDT035551234;\r [COM3]"), false);
            QTest::keyClick(m_window.get(), Qt::Key_Escape);
            QVERIFY(m_window->isVisible());
        });
        m_prompts.expectBeep().expectMessage(PromptIcon::None, PickUp);
        m_prompts.onShow = [&] {
            QCOMPARE(dialer().phase(), DialerPhase::Prompt);
            QVERIFY(m_window->cmdCancel->isEnabled() && m_port->isOpen());
        };
        m_window->txtNumber->setText(QStringLiteral("+03-555 1234"));
        QTest::keyClick(m_window->txtNumber, Qt::Key_Return);
        QVERIFY(m_clock->actions.empty());
        QCOMPARE(m_port->log, (QStringList{"refused 1", "open 2", "2 ATV1Q0\r", "close 2", "open 3", "3 ATV1Q0\r", "close 3",
                                           "open 3", "3 ATDT035551234;\r", "3 ATH\r", "close 3"}));
        expectLook(DialerPhase::Idle, true, Idle, true);
        QCOMPARE(m_window->focusWidget(), m_window->txtNumber); // ready for the next
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QVERIFY(!m_window->isVisible());
    }

    // The dialer as the main window opens it.
    void theListsNumberIsDialledAtOnceAndASecondCallWaits()
    {
        test::TestWedding wedding;
        wedding.createWedding(100);
        wedding.addInvitation(test::invitation("כהן", "דנה", 2, 1, {}, "03-6412345, 050-7654321"));
        wedding.addInvitation(test::invitation("לוי", "רון", 1, 0, {}, ""));
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        ui::MainWindow& main = program.main();
        m_port->ports = modemOn(2);
        ui::DialerWindow& window = ui::DialerWindow::shared(program.state, program.prompts, main, m_port.get(), m_clock.get());

        // Empty phones (the second row): not a word, no window.
        main.grid()->setCurrentIndex(main.listModel().index(1, 2));
        main.action(QStringLiteral("mnuDial"))->trigger();
        QVERIFY(!window.isVisible());

        // Asked for again while the search runs: the call goes on.
        main.grid()->setCurrentIndex(main.listModel().index(0, 2));
        at(1500, [&] { main.toolButton(5)->trigger(); });
        program.prompts.expectMessage(PromptIcon::None, QStringLiteral("Port is all-ready in use [03-6412345, 050-7654321]"),
                                      QStringLiteral("Warning..."));
        program.prompts.expectBeep().expectMessage(PromptIcon::None, PickUp);
        main.action(QStringLiteral("mnuDial"))->trigger();
        QVERIFY(window.isVisible() && window.layoutDirection() == Qt::LeftToRight);
        const QRect frame = main.frameGeometry(); // the dialer opens at the main window's centre
        QCOMPARE(window.frameGeometry().topLeft(), frame.topLeft() + QPoint(frame.width() / 2, frame.height() / 2));
        QCOMPARE(window.txtNumber->text(), QStringLiteral("03-6412345, 050-7654321"));
        QTRY_COMPARE(m_port->calls(), (QStringList{"2 ATDT0364123450507654321;\r", "2 ATH\r"}));

        // The program ends during a call: one question, whatever its answer, and the modem hangs up.
        at(m_clock->now() + 2100, [&] {
            m_clock->ending = true;
            program.map().SaveTablePositions();
            main.close();
            QApplication::closeAllWindows(); // as the application does when it quits
        });
        expectQuit(program.prompts, PromptAnswer::Cancel);
        window.cmdDial->click();
        QCOMPARE(m_port->calls().mid(2), (QStringList{"2 ATDT0364123450507654321;\r", "2 ATH\r"}));
        program.prompts.verifyDone();
    }

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

    // One call through a real pseudo-terminal and the program's own port and clock.
    void aCallGoesThroughARealTerminal()
    {
        test::clearUserStore();
        FakeModem modem;
        QVERIFY(!modem.device.isEmpty());
        UserStore().write(keys::DialerDevice, 1, modem.device);

        telephony::DevicePort port;
        telephony::EventLoopClock clock;
        m_window = std::make_unique<ui::DialerWindow>(m_state, m_prompts, port, clock);
        m_window->show();
        m_prompts.expectBeep().expectMessage(PromptIcon::None, PickUp);
        QElapsedTimer elapsed;
        elapsed.start();
        dial(QStringLiteral("+972 50-123 4567"));
        QVERIFY(elapsed.elapsed() >= 1000 && elapsed.elapsed() < 5000); // the probe's second, on COM1 only
        QVERIFY(!port.isOpen());
        QTRY_COMPARE(modem.received, QByteArray("ATV1Q0\rATDT972501234567;\rATH\r"));
        m_window.reset(); // before its port and clock
    }

    void aWaitEndsWhenWokenOrWhenTheProgramEnds()
    {
        telephony::EventLoopClock clock;
        const qint64 start = clock.now();
        QTimer::singleShot(10, [&] { clock.wake(); });
        QVERIFY(clock.wait(5000) && clock.now() - start < 2000);

        // Last: once the program has been told to end, no wait holds it.
        QTimer::singleShot(10, [] { QCoreApplication::exit(0); });
        QVERIFY(!clock.wait(5000));
        QVERIFY(!clock.wait(5000) && clock.now() - start < 2000); // nor any after it
    }
};

VELMORA_TEST_MAIN(DialerTest)
#include "test_dialer.moc"
