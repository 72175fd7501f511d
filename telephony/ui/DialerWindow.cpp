#include "telephony/ui/DialerWindow.h"

#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/WeddingState.h"
#include "telephony/DevicePort.h"
#include "telephony/Dialer.h"
#include "telephony/DialerClock.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora::ui {

namespace {
const auto WindowName = QStringLiteral("frmDialer");
} // namespace

DialerWindow::DialerWindow(WeddingState& state, Prompts& prompts, telephony::SerialPort& port,
                           telephony::DialerClock& clock, QWidget* mainWindow)
    : QDialog(mainWindow), m_dialer(new telephony::Dialer(state, prompts, port, clock, this))
{
    setObjectName(WindowName);
    setWindowTitle(QStringLiteral(" Phone Dialer..."));
    setLayoutDirection(Qt::LeftToRight);
    setFont(QFont(QStringLiteral("Arial"), 8));
    setModal(false);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setFixedSize(twipsToPixels(3720), twipsToPixels(1425));

    txtStatus = new QLabel(this);
    txtStatus->setObjectName(QStringLiteral("txtStatus"));
    txtStatus->setGeometry(twipsRect(480, 240, 2775, 255));
    txtStatus->setTextFormat(Qt::PlainText);

    txtNumber = new QLineEdit(this);
    txtNumber->setObjectName(QStringLiteral("txtNumber"));
    txtNumber->setGeometry(twipsRect(480, 450, 2775, 285));
    txtNumber->setMaxLength(telephony::Dialer::MaxNumberLength);
    txtNumber->setAccessibleName(QStringLiteral("Phone number"));

    auto button = [this](const char* name, const QString& text, int left) {
        auto* made = new QPushButton(text, this);
        made->setObjectName(QString::fromLatin1(name));
        made->setGeometry(twipsRect(left, 885, 852, 348));
        return made;
    };
    cmdDial = button("cmdDial", QStringLiteral("Dial"), 480);
    cmdCancel = button("cmdCancel", QStringLiteral("Cancel"), 1440);
    cmdQuit = button("cmdQuit", QStringLiteral("Quit"), 2400);
    cmdDial->setDefault(true);
    setTabOrder(txtNumber, cmdDial);
    setTabOrder(cmdDial, cmdCancel);
    setTabOrder(cmdCancel, cmdQuit);
    txtNumber->setFocus();

    connect(cmdDial, &QPushButton::clicked, this, [this] { m_dialer->Dial(txtNumber->text()); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { m_dialer->Cancel(); });
    connect(cmdQuit, &QPushButton::clicked, this, [this] { close(); });
    connect(m_dialer, &telephony::Dialer::lookChanged, this, &DialerWindow::showLook);
    showLook();
    if (mainWindow)
        mainWindow->installEventFilter(this);
}

DialerWindow::~DialerWindow() = default;

DialerWindow& DialerWindow::shared(WeddingState& state, Prompts& prompts, QWidget& mainWindow,
                                   telephony::SerialPort* port, telephony::DialerClock* clock)
{
    if (auto* made = mainWindow.findChild<DialerWindow*>(WindowName, Qt::FindDirectChildrenOnly))
        return *made;
    std::unique_ptr<telephony::SerialPort> ownPort;
    std::unique_ptr<telephony::DialerClock> ownClock;
    if (!port) {
        ownPort = std::make_unique<telephony::DevicePort>();
        port = ownPort.get();
    }
    if (!clock) {
        ownClock = std::make_unique<telephony::EventLoopClock>();
        clock = ownClock.get();
    }
    auto* window = new DialerWindow(state, prompts, *port, *clock, &mainWindow);
    window->m_ownPort = std::move(ownPort);
    window->m_ownClock = std::move(ownClock);
    return *window;
}

void DialerWindow::load()
{
    if (QWidget* main = parentWidget()) {
        const QRect frame = main->frameGeometry();
        move(frame.left() + frame.width() / 2, frame.top() + frame.height() / 2);
    }
}

void DialerWindow::activateSoon()
{
    QMetaObject::invokeMethod(
        this, [this] { m_dialer->Activate(txtNumber->text()); }, Qt::QueuedConnection);
}

void DialerWindow::showLook()
{
    txtStatus->setText(m_dialer->status());
    const bool idle = m_dialer->controlsIdle();
    const bool wasIdle = txtNumber->isEnabled();
    txtNumber->setEnabled(idle);
    cmdDial->setEnabled(idle);
    cmdQuit->setEnabled(idle);
    cmdCancel->setEnabled(!idle);
    // Back from a call the focus had gone on to Quit; Enter dials again instead.
    if (idle && !wasIdle)
        txtNumber->setFocus();
}

void DialerWindow::closeEvent(QCloseEvent* event)
{
    // At the program's end the main window closes this window and then the application
    // closes it again: the call's question is asked once, and the end hangs the call up.
    if (m_askedAtEnd) {
        event->ignore();
        return;
    }
    m_askedAtEnd = m_programEnding;
    // Not QDialog's: it would reject() instead of asking.
    if (m_dialer->Close())
        event->accept();
    else
        event->ignore();
}

bool DialerWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Close)
        m_programEnding = true;
    return QDialog::eventFilter(watched, event);
}

void DialerWindow::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        activateSoon();
}

void DialerWindow::reject()
{
    // Escape is Quit's key, and does nothing while Quit is off.
    if (cmdQuit->isEnabled())
        cmdQuit->click();
}

void DialNum(WeddingState& state, Prompts& prompts, QWidget& mainWindow, const QString& phones)
{
    state.DialNumber = phones.trimmed();
    if (state.DialNumber.isEmpty())
        return;
    if (state.DialerFree) {
        state.DialPending = true;
        DialerWindow& dialer = DialerWindow::shared(state, prompts, mainWindow);
        if (!dialer.isVisible())
            dialer.load();
        dialer.txtNumber->setText(state.DialNumber);
        dialer.show();
        dialer.raise();
        dialer.activateWindow();
        dialer.activateSoon(); // also where the window system gives it no focus
        return;
    }
    auto* dialer = mainWindow.findChild<DialerWindow*>(WindowName, Qt::FindDirectChildrenOnly);
    MessageRequest warning;
    warning.title = QStringLiteral("Warning...");
    warning.text = QStringLiteral("Port is all-ready in use [") + (dialer ? dialer->txtNumber->text() : QString())
                   + u']';
    warning.leftToRight = true;
    prompts.show(warning);
}

} // namespace velmora::ui
