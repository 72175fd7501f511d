#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace velmora::test {

// Acts on the next modal window as soon as it is up; reports whether one came.
class NextModal {
public:
    explicit NextModal(std::function<void(QWidget*)> act) : m_act(std::move(act))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                m_timer.stop();
                m_seen = true;
                m_act(modal);
            }
        });
        m_timer.start(10);
    }
    bool seen() const { return m_seen; }

private:
    std::function<void(QWidget*)> m_act;
    QTimer m_timer;
    bool m_seen = false;
};

} // namespace velmora::test
