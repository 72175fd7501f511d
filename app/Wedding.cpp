#include "app/Wedding.h"

#include "app/IniFile.h"
#include "app/Settings.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

quint8 byteValue(int value, quint8 fallback)
{
    return value >= 0 && value <= 255 ? quint8(value) : fallback;
}

} // namespace

void SaveOptions(const WeddingState& state)
{
    // Both sections in one write of the file: a program stopped half way must not leave
    // the options without their groups. The groups are written anew, so that a group
    // taken out leaves no key behind.
    QList<std::pair<QString, QString>> groups;
    for (int position = 0; position < state.NumOfGroups; ++position)
        groups.append({keys::Group.nameFor(position), state.UserGroups.value(position)});
    WriteIniSections(state.iniFile(),
                     {{keys::Couple.section,
                       {{keys::Couple.name, state.CoupleName},
                        {keys::HisFamily.name, state.HisFamily},
                        {keys::HerFamily.name, state.HerFamily},
                        {keys::NumOfGroups.name, QString::number(state.NumOfGroups)},
                        {keys::MaxTables.name, QString::number(state.MaxTables)},
                        {keys::MaxChairs.name, QString::number(state.MaxChairs)},
                        {keys::WeddingDate.name, values::fromDate(state.WeddingDate)}}},
                      {keys::Group.section, groups, true}});
}

bool FileExists(const QString& path)
{
    const QString trimmed = Trim(path);
    if (trimmed.isEmpty())
        return false;
    const QFileInfo info(trimmed);
    return info.exists() && info.isFile();
}

QString DaysToWedding(WeddingState& state, const QDate& today)
{
    const qint64 days = today.daysTo(state.WeddingDate);
    state.DaysLeft = days > 0 ? qint32(days) : 0;
    return QString::number(state.DaysLeft);
}

void MigrateSettings(WeddingState& state, const UserStore& store)
{
    state.OptionsPending = true;

    state.CoupleName = store.read(keys::OldCouple);
    state.HisFamily = store.read(keys::OldHisFamily);
    state.HerFamily = store.read(keys::OldHerFamily);
    state.MaxTables = byteValue(values::toNumber(store.read(keys::OldMaxTables)).value_or(100), 100);
    state.MaxChairs = byteValue(values::toNumber(store.read(keys::OldMaxChairs)).value_or(15), 15);
    state.LabelAddress = values::toFlag(store.read(keys::OldLabelAddress)).value_or(true);
    state.LabelFrame = values::toFlag(store.read(keys::OldLabelFrame)).value_or(false);
    state.LabelColor = values::toNumber(store.read(keys::OldLabelColor)).value_or(0);

    store.deleteSection(keys::OldCouple.section);
    store.deleteSection(keys::OldLabelAddress.section);

    const SettingsFile ini(state.iniFile());
    if (!state.CoupleName.isEmpty() && !state.HisFamily.isEmpty() && !state.HerFamily.isEmpty()) {
        SaveOptions(state);
        ini.setFlag(keys::LabelAddress, state.LabelAddress);
        ini.setFlag(keys::LabelFrame, state.LabelFrame);
        ini.setNumber(keys::LabelColor, state.LabelColor);
    } else {
        state.CoupleName = QStringLiteral("שמות בני הזוג");
        state.HisFamily = QStringLiteral("משפחת החתן");
        state.HerFamily = QStringLiteral("משפחת הכלה");
        SaveOptions(state);
    }
}

void ReadWeddingOptions(WeddingState& state, const UserStore& store)
{
    const SettingsFile ini(state.iniFile());
    state.CoupleName = ini.text(keys::Couple);
    state.HisFamily = ini.text(keys::HisFamily);
    state.HerFamily = ini.text(keys::HerFamily);
    state.MaxTables = byteValue(ini.number(keys::MaxTables), 100);
    state.MaxChairs = byteValue(ini.number(keys::MaxChairs), 15);
    if (state.CoupleName.isEmpty() || state.HisFamily.isEmpty() || state.HerFamily.isEmpty())
        MigrateSettings(state, store);
    state.NumOfGroups = byteValue(ini.number(keys::NumOfGroups), 0);
    state.UserGroups.clear();
    for (int position = 0; position < state.NumOfGroups; ++position)
        state.UserGroups << ini.text(keys::Group, position);
}

} // namespace velmora

namespace velmora {

QString AppPathFor(const QString& currentDirectory)
{
    QString path = QDir::toNativeSeparators(currentDirectory);
    if (!path.endsWith(QDir::separator()))
        path += QDir::separator();
    return path;
}

} // namespace velmora
