#pragma once

#include <QDialog>

#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::telephony {
class Dialer;
class DialerClock;
class SerialPort;
}

namespace velmora::ui {

// frmDialer: the modem dialer, modeless, in English and laid out left to right. The work is
// done by telephony::Dialer; the window shows its look and passes on the clicks.
class DialerWindow : public QDialog {
    Q_OBJECT

public:
    DialerWindow(WeddingState& state, Prompts& prompts, telephony::SerialPort& port, telephony::DialerClock& clock,
                 QWidget* mainWindow = nullptr);
    ~DialerWindow() override;

    // The main window's one dialer, made on first use; with this machine's ports and the
    // real clock unless others are given.
    static DialerWindow& shared(WeddingState& state, Prompts& prompts, QWidget& mainWindow,
                                telephony::SerialPort* port = nullptr, telephony::DialerClock* clock = nullptr);

    telephony::Dialer& dialer() { return *m_dialer; }
    // A fresh window: its top left corner on the centre of the main window.
    void load();
    // Runs the activation of the window once the events in hand are done.
    void activateSoon();

    QLabel* txtStatus;
    QLineEdit* txtNumber;
    QPushButton* cmdDial;
    QPushButton* cmdCancel;
    QPushButton* cmdQuit;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void reject() override;

private:
    void showLook();

    std::unique_ptr<telephony::SerialPort> m_ownPort;
    std::unique_ptr<telephony::DialerClock> m_ownClock;
    telephony::Dialer* m_dialer;
    // The main window is closing, which ends the program; the question about the call was asked.
    bool m_programEnding = false;
    bool m_askedAtEnd = false;
};

// The main window's DialNum: dials the phones of the current row in the dialer window, or
// says that a call is running.
void DialNum(WeddingState& state, Prompts& prompts, QWidget& mainWindow, const QString& phones);

} // namespace velmora::ui
