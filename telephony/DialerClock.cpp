#include "telephony/DialerClock.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace velmora::telephony {

qint64 EventLoopClock::now()
{
    return QDeadlineTimer::current().deadline();
}

bool EventLoopClock::wait(int milliseconds)
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer); // a coarse timer may fire a little early
    bool ours = false; // the loop ended by our timer or wake(), not by the program's exit
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        ours = true;
        loop.quit();
    });
    QEventLoop* outerLoop = m_loop;
    bool* outerWoken = m_woken;
    m_loop = &loop;
    m_woken = &ours;
    timer.start(std::max(0, milliseconds));
    // exec() returns at once, not 0, once the application has been told to exit.
    const int result = loop.exec();
    m_loop = outerLoop;
    m_woken = outerWoken;
    return result == 0 && ours;
}

void EventLoopClock::wake()
{
    if (!m_loop)
        return;
    *m_woken = true;
    m_loop->quit();
}

} // namespace velmora::telephony
