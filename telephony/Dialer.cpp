#include "telephony/Dialer.h"

#include "app/WeddingState.h"
#include "telephony/DialerClock.h"
#include "telephony/SerialPort.h"

namespace velmora::telephony {

namespace {
const QString WarningTitle = QStringLiteral("Warning...");
} // namespace

Dialer::Dialer(WeddingState& state, Prompts& prompts, SerialPort& port, DialerClock& clock, QObject* parent)
    : QObject(parent), m_state(state), m_prompts(prompts), m_port(port), m_clock(clock), m_status(idleStatus())
{
}

QString Dialer::idleStatus()
{
    return QStringLiteral("To dial a number, click the Dial button");
}

QString Dialer::DialDigits(const QString& numberText)
{
    QString digits;
    for (const QChar c : numberText.trimmed().left(MaxNumberLength)) {
        if (c >= u'0' && c <= u'9')
            digits += c;
    }
    return digits;
}

void Dialer::setStatus(const QString& status)
{
    m_status = status;
    emit lookChanged();
}

void Dialer::setControlsIdle(bool idle)
{
    m_controlsIdle = idle;
    emit lookChanged();
}

void Dialer::say(const QString& text, PromptIcon icon)
{
    MessageRequest request;
    request.icon = icon;
    request.text = text;
    request.leftToRight = true;
    m_prompts.show(request);
}

void Dialer::Activate(const QString& numberText)
{
    if (!m_state.DialerFree || !m_state.DialPending)
        return;
    m_state.DialPending = false;
    RelDialer();
    Dial(numberText);
}

void Dialer::Dial(const QString& numberText)
{
    if (m_running) {
        // Only a cancelled call can still be running with the buttons on: it ends now and
        // this one starts after it.
        m_queued = numberText;
        m_abandon = true;
        m_clock.wake();
        return;
    }
    m_running = true;
    std::optional<QString> next = numberText;
    while (next) {
        const QString text = *next;
        m_queued.reset();
        m_abandon = false;
        runDial(text);
        next = m_queued;
    }
    m_abandon = false;
    m_running = false;
}

void Dialer::runDial(const QString& numberText)
{
    setControlsIdle(false);
    m_dialCancel = false;
    m_state.DialerFree = false;
    const QString digits = DialDigits(numberText);
    if (digits.isEmpty()) {
        m_phase = DialerPhase::Invalid;
        m_prompts.beep();
        say(QStringLiteral("The phone number is not valid."));
        cancelSteps();
        return;
    }
    DialModem(digits);
    RelDialer();
    if (m_pending && !m_abandon)
        say(QString::number(m_pending.failure().number()) + u' ' + m_pending.failure().text(), PromptIcon::Warning);
    m_pending.clear();
}

void Dialer::DialModem(const QString& digits)
{
    const QString dialString = QStringLiteral("ATDT") + digits + u';' + u'\r';
    m_phase = DialerPhase::Searching;
    setStatus(QStringLiteral("Searching for modem..."));
    const quint8 port = FindModem();
    if (m_abandon)
        return; // nobody waits for an answer any more
    if (port == 0) {
        say(QStringLiteral("No modem detected"));
        m_pending.clear();
        cancelSteps();
        return;
    }
    const QString com = QStringLiteral("COM") + QString::number(port);
    try {
        m_port.setCommPort(port);
        m_port.setSettings(PortSettings);
        m_port.open();
    } catch (const Failure&) {
        say(com + QStringLiteral(" is not available.") + u'\r'
            + QStringLiteral("Change the CommPort property to another port."));
        return;
    }
    m_pending.attempt([&] { m_port.clearInBuffer(); });
    m_phase = DialerPhase::Dialling;
    setStatus(QStringLiteral("Dialing... ") + dialString + QStringLiteral(" [") + com + u']');
    m_pending.attempt([&] { m_port.output(dialString.toLatin1()); });

    // No time limit: a modem that never answers waits for Cancel.
    QByteArray reply;
    bool cancelled = false;
    for (;;) {
        int waiting = 0;
        m_pending.attempt([&] { waiting = m_port.inBufferCount(); });
        if (waiting > 0) {
            m_pending.attempt([&] { reply += m_port.input(); });
            if (reply.contains("OK"))
                break;
        }
        if (m_dialCancel || m_abandon) {
            m_dialCancel = false;
            cancelled = true;
            break;
        }
        if (!m_clock.wait(DialPassMs)) {
            m_abandon = true; // the program is ending
            cancelled = true;
            break;
        }
    }
    // A window closed meanwhile asks nobody to pick up, even if the modem has answered.
    if (!cancelled && !m_abandon) {
        // The box holds the line with the modem until the user has the handset.
        m_phase = DialerPhase::Prompt;
        m_prompts.beep();
        say(QStringLiteral("Please pick up the phone and either press Enter or click OK"));
    }
    m_phase = DialerPhase::HangingUp;
    m_pending.attempt([&] { m_port.output(HangUpCommand); });
    m_pending.attempt([&] { m_port.close(); });
}

quint8 Dialer::FindModem()
{
    QByteArray gathered;
    for (int port = 1; port <= 4 && !m_abandon; ++port) {
        try {
            m_port.setCommPort(port);
            m_port.setSettings(PortSettings);
            m_port.open();
        } catch (const Failure&) {
            continue; // no device, or in use: the next one
        }
        try {
            m_port.output(ProbeCommand);
        } catch (const Failure&) {
            // nothing will answer: the wait below finds no "OK"
        }
        waitProbe();
        try {
            gathered += m_port.input();
        } catch (const Failure&) {
        }
        try {
            m_port.close();
        } catch (const Failure&) {
        }
        if (!m_abandon && gathered.contains("OK\r\n"))
            return quint8(port);
    }
    return 0;
}

void Dialer::waitProbe()
{
    // One second by the clock, whatever wakes the wait meanwhile.
    const qint64 until = m_clock.now() + ProbeWaitMs;
    for (qint64 now = m_clock.now(); now < until && !m_abandon; now = m_clock.now()) {
        if (!m_clock.wait(int(until - now)))
            m_abandon = true;
    }
}

void Dialer::cancelSteps()
{
    setStatus(QStringLiteral("Cancel..."));
    m_dialCancel = true;
    setControlsIdle(true);
    setStatus(QString());
    m_state.DialerFree = true;
    if (m_pending) {
        say(m_pending.failure().text(), PromptIcon::Warning);
        m_pending.clear();
    }
}

void Dialer::Cancel()
{
    cancelSteps();
    m_clock.wake();
}

void Dialer::RelDialer()
{
    m_phase = DialerPhase::Idle;
    setControlsIdle(true);
    m_state.DialerFree = true;
    setStatus(idleStatus());
}

bool Dialer::Close()
{
    if (!m_state.DialerFree) {
        MessageRequest question;
        question.icon = PromptIcon::Critical;
        question.title = WarningTitle;
        question.text = QStringLiteral("Quiting dialer will terminat the call!");
        question.buttons = PromptButtons::OkCancel;
        question.defaultButton = PromptAnswer::Ok;
        question.leftToRight = true;
        if (m_prompts.show(question) != PromptAnswer::Ok)
            return false;
        m_state.DialerFree = true;
        m_dialCancel = true;
    }
    if (m_running) {
        // Hung up and closed as if cancelled, without a word from a window that is gone.
        m_abandon = true;
        m_queued.reset();
        m_clock.wake();
    }
    return true;
}

} // namespace velmora::telephony
