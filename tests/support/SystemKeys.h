#pragma once

#include <QGuiApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace velmora::test {

// The text a real keyboard sends along with a key, as the X11 window system gives it.
inline QString systemText(int key)
{
    switch (key) {
    case Qt::Key_Tab: return QStringLiteral("\t");
    case Qt::Key_Backspace: return QStringLiteral("\b");
    case Qt::Key_Delete: return QStringLiteral("\x7f");
    case Qt::Key_Return: case Qt::Key_Enter: return QStringLiteral("\r");
    case Qt::Key_Escape: return QStringLiteral("\x1b");
    }
    // The blank, digits, Latin and Hebrew letters and signs: the key code is the character.
    return key >= 0x20 && key < 0x1000 ? QString(QChar(key)) : QString();
}

// One key as the window system delivers it: to the focus window, then its focus widget, with its text.
inline void pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::sendKeyEvent(QTest::Click, QGuiApplication::focusWindow(), Qt::Key(key), systemText(key), modifiers);
}

// Shows a window and makes it the active one, so that keys reach it as from the keyboard.
inline bool activate(QWidget* window)
{
    window->show();
    window->activateWindow();
    const bool active = QTest::qWaitForWindowActive(window);
    if (!active)
        QTest::qFail("the window never became active", __FILE__, __LINE__);
    return active;
}

} // namespace velmora::test
