#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace velmora {

// A failed step: the number and text that a message box shows unchanged.
class Failure : public std::exception {
public:
    Failure() = default;
    Failure(int number, QString text) : m_number(number), m_text(std::move(text)), m_what(m_text.toUtf8()) {}

    int number() const { return m_number; }
    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number = 0;
    QString m_text;
    QByteArray m_what;
};

// File, colour and printer dialogs report a cancel with this number; it is never shown.
inline constexpr int CancelFailureNumber = 32755;

} // namespace velmora
