#pragma once

#include "app/SettingsKeys.h"

#include <QDate>
#include <QString>

#include <optional>

namespace velmora {

// Typed values in the text forms both stores use.
namespace values {
QString fromFlag(bool flag);              // "True" / "False"
std::optional<bool> toFlag(const QString& text);
std::optional<int> toNumber(const QString& text);
QString fromDate(const QDate& date);      // the short date form: dd/MM/yyyy
std::optional<QDate> toDate(const QString& text);
} // namespace values

// Typed access to the keys of velmora.ini. A value that doesn't read as its type gives
// the key's default.
class SettingsFile {
public:
    explicit SettingsFile(QString path) : m_path(std::move(path)) {}

    const QString& path() const { return m_path; }

    QString text(const keys::Key& key) const;
    QString text(const keys::Key& key, int number) const;
    int number(const keys::Key& key) const;
    bool flag(const keys::Key& key) const;
    QDate date(const keys::Key& key, const QDate& defaultDate) const;

    void setText(const keys::Key& key, const QString& value) const;
    void setText(const keys::Key& key, int number, const QString& value) const;
    void setNumber(const keys::Key& key, int value) const;
    void setFlag(const keys::Key& key, bool value) const;
    void setDate(const keys::Key& key, const QDate& value) const;
    void clearSection(const QString& section) const;

private:
    QString m_path;
};

// The per-user store: the window's placement, the column widths and the settings of
// earlier versions. Kept in the desktop's own settings under "Velmora".
class UserStore {
public:
    UserStore(QString organisation = QStringLiteral("Velmora"), QString application = QStringLiteral("Velmora"));

    QString read(const keys::Key& key) const;
    QString read(const keys::Key& key, const QString& defaultValue) const;
    QString read(const keys::Key& key, int number) const;
    void write(const keys::Key& key, const QString& value) const;
    void write(const keys::Key& key, int number, const QString& value) const;
    void deleteSection(const QString& section) const;
    bool hasSection(const QString& section) const;

private:
    QString m_organisation;
    QString m_application;
};

} // namespace velmora
