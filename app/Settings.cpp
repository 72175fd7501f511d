#include "app/Settings.h"

#include "app/IniFile.h"

#include <QSettings>

namespace velmora {

namespace values {

QString fromFlag(bool flag)
{
    return flag ? QStringLiteral("True") : QStringLiteral("False");
}

std::optional<bool> toFlag(const QString& input)
{
    const QString text = input.trimmed();
    if (text.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    if (const auto number = toNumber(text))
        return *number != 0;
    return std::nullopt;
}

std::optional<int> toNumber(const QString& text)
{
    bool ok = false;
    const int number = text.trimmed().toInt(&ok);
    return ok ? std::optional<int>(number) : std::nullopt;
}

QString fromDate(const QDate& date)
{
    return date.toString(QStringLiteral("dd/MM/yyyy"));
}

std::optional<QDate> toDate(const QString& input)
{
    const QString text = input.trimmed();
    for (const QString& format : {QStringLiteral("d/M/yyyy"), QStringLiteral("d.M.yyyy"), QStringLiteral("yyyy-MM-dd")}) {
        const QDate date = QDate::fromString(text, format);
        if (date.isValid())
            return date;
    }
    return std::nullopt;
}

} // namespace values

QString SettingsFile::text(const keys::Key& key) const
{
    return ReadIniValue(m_path, key.section, key.name, key.defaultValue);
}

QString SettingsFile::text(const keys::Key& key, int number) const
{
    return ReadIniValue(m_path, key.section, key.nameFor(number), key.defaultValue);
}

int SettingsFile::number(const keys::Key& key) const
{
    return values::toNumber(text(key)).value_or(values::toNumber(key.defaultValue).value_or(0));
}

bool SettingsFile::flag(const keys::Key& key) const
{
    return values::toFlag(text(key)).value_or(values::toFlag(key.defaultValue).value_or(false));
}

QDate SettingsFile::date(const keys::Key& key, const QDate& defaultDate) const
{
    const QString value = ReadIniValue(m_path, key.section, key.name, QString());
    return values::toDate(value).value_or(defaultDate);
}

void SettingsFile::setText(const keys::Key& key, const QString& value) const
{
    WriteIniValue(m_path, key.section, key.name, value);
}

void SettingsFile::setText(const keys::Key& key, int number, const QString& value) const
{
    WriteIniValue(m_path, key.section, key.nameFor(number), value);
}

void SettingsFile::setNumber(const keys::Key& key, int value) const
{
    setText(key, QString::number(value));
}

void SettingsFile::setFlag(const keys::Key& key, bool value) const
{
    setText(key, values::fromFlag(value));
}

void SettingsFile::setDate(const keys::Key& key, const QDate& value) const
{
    setText(key, values::fromDate(value));
}

void SettingsFile::clearSection(const QString& section) const
{
    ClearIniSection(m_path, section);
}

UserStore::UserStore(QString organisation, QString application)
    : m_organisation(std::move(organisation)), m_application(std::move(application))
{
}

QString UserStore::read(const keys::Key& key) const
{
    return read(key, key.defaultValue);
}

QString UserStore::read(const keys::Key& key, const QString& defaultValue) const
{
    QSettings store(m_organisation, m_application);
    return store.value(key.section + u'/' + key.name, defaultValue).toString();
}

QString UserStore::read(const keys::Key& key, int number) const
{
    QSettings store(m_organisation, m_application);
    return store.value(key.section + u'/' + key.nameFor(number), key.defaultValue).toString();
}

void UserStore::write(const keys::Key& key, const QString& value) const
{
    QSettings store(m_organisation, m_application);
    store.setValue(key.section + u'/' + key.name, value);
}

void UserStore::write(const keys::Key& key, int number, const QString& value) const
{
    QSettings store(m_organisation, m_application);
    store.setValue(key.section + u'/' + key.nameFor(number), value);
}

void UserStore::deleteSection(const QString& section) const
{
    QSettings store(m_organisation, m_application);
    store.remove(section);
}

bool UserStore::hasSection(const QString& section) const
{
    QSettings store(m_organisation, m_application);
    return store.childGroups().contains(section);
}

} // namespace velmora
