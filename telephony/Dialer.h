#pragma once

#include "app/PendingFailure.h"
#include "app/Prompts.h"

#include <QObject>
#include <QString>

#include <optional>

namespace velmora {
struct WeddingState;
}

namespace velmora::telephony {

class DialerClock;
class SerialPort;

// Where a call stands.
enum class DialerPhase { Idle, Invalid, Searching, Dialling, Prompt, HangingUp };

// Hayes commands, each ending in a carriage return.
inline const QByteArray ProbeCommand = QByteArrayLiteral("ATV1Q0\r");
inline const QByteArray HangUpCommand = QByteArrayLiteral("ATH\r");

// The dialer's work behind its window: finds the modem on COM1 to COM4, dials, asks the user
// to pick up the handset and hangs the modem up, leaving the line to the handset. Every wait
// runs through the clock, so the window stays alive and Cancel or a close is seen within it.
class Dialer : public QObject {
    Q_OBJECT

public:
    static constexpr int ProbeWaitMs = 1000;
    static constexpr int DialPassMs = 50;
    static constexpr int MaxNumberLength = 255;

    Dialer(WeddingState& state, Prompts& prompts, SerialPort& port, DialerClock& clock, QObject* parent = nullptr);

    // What the window shows: the status line, and whether the idle controls (number, Dial,
    // Quit) are on; Cancel is on when they are off.
    const QString& status() const { return m_status; }
    bool controlsIdle() const { return m_controlsIdle; }
    DialerPhase phase() const { return m_phase; }
    bool dialCancel() const { return m_dialCancel; }

    // The window became active: a number chosen in the list is dialled at once.
    void Activate(const QString& numberText);
    // The Dial button: the whole call, returning when it is over.
    void Dial(const QString& numberText);
    // The Cancel button.
    void Cancel();
    // The window is asked to close; false when it stays.
    bool Close();
    void RelDialer();
    // The COM number whose device answers the probe, 0 when none does.
    quint8 FindModem();
    void DialModem(const QString& digits);

    // The digits of a number text, in order, from its first 255 characters.
    static QString DialDigits(const QString& numberText);
    static QString idleStatus();

signals:
    void lookChanged();

private:
    void runDial(const QString& numberText);
    void cancelSteps();
    void setStatus(const QString& status);
    void setControlsIdle(bool idle);
    // The dialer's boxes are in English, laid out left to right.
    void say(const QString& text, PromptIcon icon = PromptIcon::None);
    void waitProbe();

    WeddingState& m_state;
    Prompts& m_prompts;
    SerialPort& m_port;
    DialerClock& m_clock;
    PendingFailure m_pending;
    QString m_status;
    bool m_controlsIdle = true;
    DialerPhase m_phase = DialerPhase::Idle;
    bool m_dialCancel = false;
    // A call is on the way out of Dial(); a new one waits for it in m_queued.
    bool m_running = false;
    // The call under way is to end at once and quietly: its window closed, or a new dial
    // follows a cancelled one whose search still runs.
    bool m_abandon = false;
    std::optional<QString> m_queued;
};

} // namespace velmora::telephony
