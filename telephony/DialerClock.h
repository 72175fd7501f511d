#pragma once

#include <QtGlobal>

class QEventLoop;

namespace velmora::telephony {

// How the dialer lets time pass while its window stays alive: the waits run the program's
// events, so the window repaints and its buttons work meanwhile.
class DialerClock {
public:
    virtual ~DialerClock() = default;

    // Milliseconds on a clock that only goes forward.
    virtual qint64 now() = 0;
    // Runs the program's events for this long, or until wake(). False when the program
    // is ending and the caller must stop waiting.
    virtual bool wait(int milliseconds) = 0;
    // Ends the wait under way early; the caller looks at what changed.
    virtual void wake() = 0;
};

// The real clock: a nested event loop and a timer; no busy loop.
class EventLoopClock : public DialerClock {
public:
    qint64 now() override;
    bool wait(int milliseconds) override;
    void wake() override;

private:
    QEventLoop* m_loop = nullptr;
    bool* m_woken = nullptr;
};

} // namespace velmora::telephony
