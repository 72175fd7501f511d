#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Twips.h"
#include "app/ui/MainWindow.h"
#include "telephony/Dialer.h"
#include "telephony/DialerClock.h"
#include "telephony/SerialPort.h"
#include "telephony/ui/DialerWindow.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <array>
#include <functional>
#include <map>

using namespace velmora;
using telephony::DialerPhase;

namespace {

const QString Idle = QStringLiteral("To dial a number, click the Dial button");
const QString PickUp = QStringLiteral("Please pick up the phone and either press Enter or click OK");
const QString NoModem = QStringLiteral("No modem detected");
const QString Invalid = QStringLiteral("The phone number is not valid.");

// What one COM port does.
struct PortScript {
    bool opens = true;    // false: no device, or in use
    bool modem = false;   // answers the probe and the dial
    int dialAnswerMs = 300; // -1: the dial is never answered
    bool reopens = true;  // false: the port is lost between the search and the dial
    bool hangUpFails = false;
};
using Ports = std::array<PortScript, 4>;

Ports modemOn(int port, int dialAnswerMs = 300)
{
    Ports ports;
    ports[size_t(port - 1)].modem = true;
    ports[size_t(port - 1)].dialAnswerMs = dialAnswerMs;
    return ports;
}

class ScriptedClock;

// A Hayes modem as scripted: echoes each command, answers "OK" to the probe at once and to
// the dial after a while, both delivered as the clock goes on.
class ScriptedPort : public telephony::SerialPort {
public:
    Ports ports;
    QStringList log; // "open 1", "write 1 ATV1Q0\r", "close 1"
    std::multimap<qint64, QByteArray> coming;
    QByteArray arrived;
    qint64 now = 0;

    void setCommPort(int number) override { m_port = number; }
    int commPort() const override { return m_port; }
    void setSettings(const QString& settings) override { QCOMPARE(settings, QStringLiteral("9600,N,8,1")); }
    void open() override
    {
        PortScript& script = ports[size_t(m_port - 1)];
        if (!script.opens) {
            log << QStringLiteral("refused %1").arg(m_port);
            throw Failure(8002, QStringLiteral("Invalid port number"));
        }
        script.opens = script.reopens;
        m_open = true;
        arrived.clear();
        coming.clear();
        log << QStringLiteral("open %1").arg(m_port);
    }
    void close() override
    {
        m_open = false;
        log << QStringLiteral("close %1").arg(m_port);
    }
    bool isOpen() const override { return m_open; }
    int inBufferCount() override { return int(arrived.size()); }
    void clearInBuffer() override { arrived.clear(); }
    void output(const QByteArray& text) override
    {
        log << QStringLiteral("write %1 %2").arg(m_port).arg(QString::fromLatin1(text));
        const PortScript& script = ports[size_t(m_port - 1)];
        if (text == telephony::HangUpCommand && script.hangUpFails)
            throw Failure(8021, QStringLiteral("The modem is gone"));
        if (!script.modem)
            return;
        coming.emplace(now + 5, text); // the echo
        if (text == telephony::ProbeCommand)
            coming.emplace(now + 20, QByteArrayLiteral("\r\nOK\r\n"));
        else if (text.startsWith("ATDT") && script.dialAnswerMs >= 0)
            coming.emplace(now + script.dialAnswerMs, QByteArrayLiteral("\r\nOK\r\n"));
    }
    QByteArray input() override { return std::exchange(arrived, {}); }

    void advance(qint64 to)
    {
        now = to;
        while (m_open && !coming.empty() && coming.begin()->first <= now) {
            arrived += coming.begin()->second;
            coming.erase(coming.begin());
        }
    }
    QStringList writes() const { return log.filter(QStringLiteral("write")); }

private:
    int m_port = 1;
    bool m_open = false;
};

// Time that passes only in the dialer's waits; what the user does happens at set moments.
class ScriptedClock : public telephony::DialerClock {
public:
    explicit ScriptedClock(ScriptedPort& port) : m_port(port) {}

    std::multimap<qint64, std::function<void()>> actions;
    bool ending = false;

    qint64 now() override { return m_now; }
    bool wait(int milliseconds) override
    {
        if (++m_waits > 10000) {
            QTest::qFail("the dialer never stopped waiting", __FILE__, __LINE__);
            return false;
        }
        m_woken = false;
        const qint64 until = m_now + milliseconds;
        while (!m_woken && !actions.empty() && actions.begin()->first <= until) {
            setNow(std::max(m_now, actions.begin()->first));
            const auto action = actions.begin()->second;
            actions.erase(actions.begin());
            action();
        }
        if (!m_woken)
            setNow(until);
        return !ending;
    }
    void wake() override { m_woken = true; }

private:
    void setNow(qint64 now)
    {
        m_now = now;
        m_port.advance(now);
    }

    ScriptedPort& m_port;
    qint64 m_now = 0;
    int m_waits = 0;
    bool m_woken = false;
};

// Scripted prompts that also note where the dialer stood when each box came up.
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

    // The states table: what the window shows in each state.
    void expectLook(DialerPhase phase, bool free, const QString& status, bool idleControls)
    {
        QCOMPARE(dialer().phase(), phase);
        QCOMPARE(m_state.DialerFree, free);
        QCOMPARE(m_window->txtStatus->text(), status);
        QCOMPARE(m_window->txtNumber->isEnabled(), idleControls);
        QCOMPARE(m_window->cmdDial->isEnabled(), idleControls);
        QCOMPARE(m_window->cmdQuit->isEnabled(), idleControls);
        QCOMPARE(m_window->cmdCancel->isEnabled(), !idleControls);
    }
    void expectPickUp() { m_prompts.expectBeep().expectMessage(PromptIcon::None, PickUp); }

private slots:
    void init()
    {
        m_state = WeddingState();
        m_state.DialerFree = true;
        m_port = std::make_unique<ScriptedPort>();
        m_clock = std::make_unique<ScriptedClock>(*m_port);
        m_window = std::make_unique<ui::DialerWindow>(m_state, m_prompts, *m_port, *m_clock);
        m_window->show();
        m_prompts.onShow = nullptr;
    }

    void cleanup()
    {
        m_window.reset();
        m_prompts.verifyDone();
    }

    void theNumberTextGivesItsDigits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("digits");
        QTest::newRow("separators and a plus") << "+972 (3) 555-12.34" << "972355512" "34";
        QTest::newRow("two numbers in one cell") << "03-6412345, 050-7654321" << "036412345" "0507654321";
        QTest::newRow("Hebrew around it") << "בית 08-9441234 (ערב)" << "089441234";
        QTest::newRow("digits of other scripts") << "٠٥٠١٢٣" << "";
        QTest::newRow("255 characters") << QString(255, u'7') << QString(255, u'7');
        QTest::newRow("past 255 ignored") << QString(255, u'7') + u'8' << QString(255, u'7');
        QTest::newRow("blanks before count not") << QString(10, u' ') + QString(250, u'1') << QString(250, u'1');
    }
    void theNumberTextGivesItsDigits()
    {
        QFETCH(QString, text);
        QFETCH(QString, digits);
        QCOMPARE(telephony::Dialer::DialDigits(text), digits);
    }

    void theModemIsTheFirstPortThatAnswersTheProbe_data()
    {
        QTest::addColumn<Ports>("ports");
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<qint64>("endsAt");
        Ports none;
        QTest::newRow("no modem on any port")
            << none
            << QStringList{"open 1", "write 1 ATV1Q0\r", "close 1", "open 2", "write 2 ATV1Q0\r", "close 2",
                           "open 3", "write 3 ATV1Q0\r", "close 3", "open 4", "write 4 ATV1Q0\r", "close 4"}
            << qint64(4000);
        Ports closed;
        for (PortScript& port : closed)
            port.opens = false;
        QTest::newRow("no port opens") << closed
                                       << QStringList{"refused 1", "refused 2", "refused 3", "refused 4"}
                                       << qint64(0);
        QTest::newRow("a modem on port 3 only")
            << modemOn(3)
            << QStringList{"open 1", "write 1 ATV1Q0\r", "close 1", "open 2", "write 2 ATV1Q0\r", "close 2",
                           "open 3", "write 3 ATV1Q0\r", "close 3"}
            << qint64(3000);
        Ports busyThenModem = modemOn(4);
        busyThenModem[0].opens = busyThenModem[2].opens = false;
        QTest::newRow("ports in use are passed over")
            << busyThenModem
            << QStringList{"refused 1", "open 2", "write 2 ATV1Q0\r", "close 2", "refused 3", "open 4",
                           "write 4 ATV1Q0\r", "close 4"}
            << qint64(2000);
        Ports two = modemOn(1);
        two[2].modem = true;
        QTest::newRow("the first of two") << two << QStringList{"open 1", "write 1 ATV1Q0\r", "close 1"}
                                          << qint64(1000);
    }
    void theModemIsTheFirstPortThatAnswersTheProbe()
    {
        QFETCH(Ports, ports);
        QFETCH(QStringList, log);
        QFETCH(qint64, endsAt);
        m_port->ports = ports;
        const quint8 found = dialer().FindModem();
        QCOMPARE(m_port->log, log);
        QCOMPARE(m_clock->now(), endsAt); // a whole second on each port that opened
        const auto modem = std::find_if(ports.begin(), ports.end(), [](const PortScript& p) { return p.modem; });
        QCOMPARE(int(found), modem == ports.end() ? 0 : int(modem - ports.begin()) + 1);
    }

    void aCallDialsPicksUpAndHangsUp()
    {
        m_port->ports = modemOn(3);
        at(500, [&] { expectLook(DialerPhase::Searching, false, QStringLiteral("Searching for modem..."), false); });
        at(3100, [&] {
            expectLook(DialerPhase::Dialling, false, QStringLiteral("Dialing... ATDT035551234;\r [COM3]"), false);
        });
        expectPickUp();
        m_prompts.onShow = [&] {
            QCOMPARE(dialer().phase(), DialerPhase::Prompt);
            QVERIFY(m_window->cmdCancel->isEnabled());
            QVERIFY(m_port->isOpen()); // the modem holds the line until the user has the handset
        };
        dial(QStringLiteral("+03-555 1234"));
        QVERIFY(m_clock->actions.empty());
        QCOMPARE(m_port->log.mid(9), (QStringList{"open 3", "write 3 ATDT035551234;\r", "write 3 ATH\r", "close 3"}));
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void withoutAModemTheWindowGoesBackToIdle()
    {
        m_prompts.expectMessage(PromptIcon::None, NoModem);
        m_prompts.onShow = [&] { QCOMPARE(m_window->txtStatus->text(), QStringLiteral("Searching for modem...")); };
        dial(QStringLiteral("050-1234567"));
        QVERIFY(m_port->log.filter(QStringLiteral("ATDT")).isEmpty());
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void aNumberWithoutDigitsCanBeCorrected()
    {
        m_prompts.expectBeep().expectMessage(PromptIcon::None, Invalid);
        dial(QStringLiteral("אין טלפון"));
        expectLook(DialerPhase::Invalid, true, QString(), true);
        QVERIFY(m_port->log.isEmpty());

        m_port->ports = modemOn(1);
        expectPickUp();
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_port->writes(), (QStringList{"write 1 ATV1Q0\r", "write 1 ATDT0501234567;\r", "write 1 ATH\r"}));
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void aModemLostBeforeTheDialIsReported()
    {
        m_port->ports = modemOn(2);
        m_port->ports[1].reopens = false;
        m_prompts.expectMessage(PromptIcon::None,
                                QStringLiteral("COM2 is not available.\rChange the CommPort property to another port."));
        dial(QStringLiteral("050-1234567"));
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void aFailedStepIsReportedAfterTheCall()
    {
        m_port->ports = modemOn(1);
        m_port->ports[0].hangUpFails = true;
        expectPickUp();
        m_prompts.expectMessage(PromptIcon::Warning, QStringLiteral("8021 The modem is gone"));
        dial(QStringLiteral("050-1234567"));
        QVERIFY(!m_port->isOpen());
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void cancelDuringTheDialHangsUpAndTheNextDialStartsClean()
    {
        m_port->ports = modemOn(1, -1); // never answers
        at(1500, [&] {
            QTest::mouseClick(m_window->cmdCancel, Qt::LeftButton);
            QCOMPARE(m_window->txtStatus->text(), QString());
            QVERIFY(m_state.DialerFree);
        });
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_clock->now(), qint64(1500)); // the loop left at once
        QCOMPARE(m_port->writes().last(), QStringLiteral("write 1 ATH\r"));
        QVERIFY(!m_port->isOpen());
        QVERIFY(!dialer().dialCancel());
        expectLook(DialerPhase::Idle, true, Idle, true);

        m_port->ports = modemOn(1);
        expectPickUp();
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_port->writes().size(), 6);
    }

    void cancelDuringTheSearchIsHonouredWhenTheSearchEnds_data()
    {
        QTest::addColumn<Ports>("ports");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QStringList>("writesAfterSearch");
        QTest::newRow("modem found") << modemOn(3) << QStringList()
                                     << QStringList{"write 3 ATDT0501234567;\r", "write 3 ATH\r"};
        QTest::newRow("no modem") << Ports() << QStringList{NoModem} << QStringList();
    }
    void cancelDuringTheSearchIsHonouredWhenTheSearchEnds()
    {
        QFETCH(Ports, ports);
        QFETCH(QStringList, messages);
        QFETCH(QStringList, writesAfterSearch);
        m_port->ports = ports;
        for (const QString& message : messages)
            m_prompts.expectMessage(PromptIcon::None, message);
        at(500, [&] { QTest::mouseClick(m_window->cmdCancel, Qt::LeftButton); });
        dial(QStringLiteral("050-1234567"));
        QStringList writes = m_port->writes();
        writes.removeAll(QStringLiteral("write 1 ATV1Q0\r"));
        writes.removeAll(QStringLiteral("write 2 ATV1Q0\r"));
        writes.removeAll(QStringLiteral("write 3 ATV1Q0\r"));
        writes.removeAll(QStringLiteral("write 4 ATV1Q0\r"));
        QCOMPARE(writes, writesAfterSearch); // no pick-up message: the first pass saw the cancel
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void aDialAfterACancelledSearchEndsTheSearchAndStarts()
    {
        m_port->ports = modemOn(2);
        at(500, [&] { QTest::mouseClick(m_window->cmdCancel, Qt::LeftButton); });
        at(700, [&] { dial(QStringLiteral("03-1111111")); });
        expectPickUp();
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_port->writes(), (QStringList{"write 1 ATV1Q0\r", "write 1 ATV1Q0\r", "write 2 ATV1Q0\r",
                                                "write 2 ATDT031111111;\r", "write 2 ATH\r"}));
        QCOMPARE(m_clock->now(), qint64(700 + 2000 + 300));
        expectLook(DialerPhase::Idle, true, Idle, true);
    }

    void quittingDuringACall_data()
    {
        QTest::addColumn<qint64>("when");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("writes");
        QTest::newRow("dialling, OK") << qint64(1100) << int(PromptAnswer::Ok)
                                      << QStringList{"write 1 ATV1Q0\r", "write 1 ATDT0501234567;\r", "write 1 ATH\r"};
        QTest::newRow("searching, OK") << qint64(400) << int(PromptAnswer::Ok) << QStringList{"write 1 ATV1Q0\r"};
        QTest::newRow("dialling, Cancel")
            << qint64(1100) << int(PromptAnswer::Cancel)
            << QStringList{"write 1 ATV1Q0\r", "write 1 ATDT0501234567;\r", "write 1 ATH\r"};
    }
    void quittingDuringACall()
    {
        QFETCH(qint64, when);
        QFETCH(int, answer);
        QFETCH(QStringList, writes);
        m_port->ports = modemOn(1);
        m_prompts.expectBox(PromptIcon::Critical, QStringLiteral("Quiting dialer will terminat the call!"),
                            QStringLiteral("Warning..."), PromptButtons::OkCancel, PromptAnswer::Ok,
                            PromptAnswer(answer));
        const bool stays = PromptAnswer(answer) == PromptAnswer::Cancel;
        if (stays)
            expectPickUp();
        at(when, [&] { m_window->close(); });
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_window->isVisible(), stays);
        QCOMPARE(m_port->writes(), writes);
        QVERIFY(!m_port->isOpen());
        QVERIFY(m_state.DialerFree);
        QVERIFY(m_clock->now() <= 1300);
    }

    void keysFollowTheButtons()
    {
        m_port->ports = modemOn(1);
        at(1100, [&] {
            QTest::keyClick(m_window.get(), Qt::Key_Escape); // Quit is off during a call
            QVERIFY(m_window->isVisible());
        });
        expectPickUp();
        m_window->txtNumber->setText(QStringLiteral("050-1234567"));
        QTest::keyClick(m_window->txtNumber, Qt::Key_Return);
        QCOMPARE(m_port->writes().size(), 3);
        // Back in the number box: Enter dials the same number again.
        QCOMPARE(m_window->focusWidget(), m_window->txtNumber);
        expectPickUp();
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Return);
        QCOMPARE(m_port->writes().size(), 6);
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QVERIFY(!m_window->isVisible());
    }

    void theProgramEndingDuringACallHangsUp()
    {
        m_port->ports = modemOn(1, -1);
        at(1200, [&] { m_clock->ending = true; });
        dial(QStringLiteral("050-1234567"));
        QCOMPARE(m_port->writes().last(), QStringLiteral("write 1 ATH\r"));
        QVERIFY(!m_port->isOpen());
    }
};

// The dialer as the main window opens it.
class DialNumTest : public QObject {
    Q_OBJECT

private slots:
    void theListsNumberIsDialledAtOnceAndASecondCallWaits()
    {
        test::TestWedding wedding;
        wedding.createWedding(100);
        wedding.addInvitation(test::invitation("כהן", "דנה", 2, 1, {}, QStringLiteral("03-6412345, 050-7654321")));
        wedding.addInvitation(test::invitation("לוי", "רון", 1, 0, {}, QString()));
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        ui::MainWindow& main = program.main();
        ScriptedPort port;
        ScriptedClock clock(port);
        port.ports = modemOn(2);
        ui::DialerWindow& window = ui::DialerWindow::shared(program.state, program.prompts, main, &port, &clock);
        QAction* mnuDial = main.action(QStringLiteral("mnuDial"));

        auto selectRow = [&](const QString& family) {
            for (int row = 0; row < main.listModel().rowCount(); ++row) {
                if (main.listModel().cellText(row + 1, 0) == family)
                    main.grid()->setCurrentIndex(main.listModel().index(row, 2));
            }
        };

        // Empty phones: not a word, no window.
        selectRow(QStringLiteral("לוי"));
        QVERIFY(!main.toolButton(5)->isEnabled());
        mnuDial->trigger();
        QVERIFY(!window.isVisible());

        // Asked for again while the search runs: the call goes on.
        selectRow(QStringLiteral("כהן"));
        clock.actions.emplace(1500, [&] { main.toolButton(5)->trigger(); });
        program.prompts.expectMessage(PromptIcon::None,
                                      QStringLiteral("Port is all-ready in use [03-6412345, 050-7654321]"),
                                      QStringLiteral("Warning..."));
        program.prompts.expectBeep().expectMessage(PromptIcon::None, PickUp);
        mnuDial->trigger();
        QVERIFY(window.isVisible());
        QCOMPARE(window.windowTitle(), QStringLiteral(" Phone Dialer..."));
        QCOMPARE(window.layoutDirection(), Qt::LeftToRight);
        QCOMPARE(window.size(), QSize(twipsToPixels(3720), twipsToPixels(1425)));
        const QRect frame = main.frameGeometry();
        QCOMPARE(window.frameGeometry().topLeft(),
                 QPoint(frame.left() + frame.width() / 2, frame.top() + frame.height() / 2));
        QCOMPARE(window.txtNumber->text(), QStringLiteral("03-6412345, 050-7654321"));
        QTRY_COMPARE(port.writes().size(), 4);
        QCOMPARE(port.writes()[2], QStringLiteral("write 2 ATDT0364123450507654321;\r"));
        QVERIFY(program.prompts.history()[0].leftToRight);
        QVERIFY(!program.state.DialPending);
        QVERIFY(program.state.DialerFree);
        QCOMPARE(program.state.DialNumber, QStringLiteral("03-6412345, 050-7654321"));
        program.prompts.verifyDone();
        window.close();
    }
};

int main(int argc, char** argv)
{
    QTemporaryDir home;
    test::isolateEnvironment(home);
    QApplication app(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    DialerTest dialer;
    DialNumTest dialNum;
    return QTest::qExec(&dialer, argc, argv) | QTest::qExec(&dialNum, argc, argv);
}

#include "test_dialer.moc"
