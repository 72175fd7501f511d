#include "guests/Options.h"

#include "app/TextNumbers.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"

#include <cmath>

namespace velmora::guests {

OptionsForm OptionsFromState(const WeddingState& state)
{
    OptionsForm form;
    form.couple = state.CoupleName;
    form.hisFamily = state.HisFamily;
    form.herFamily = state.HerFamily;
    form.weddingDate = state.WeddingDate;
    form.maxTables = QString::number(state.MaxTables);
    form.maxChairs = QString::number(state.MaxChairs);
    form.groups = QStringList{state.CoupleName, state.HisFamily, state.HerFamily};
    for (qsizetype position = 3; position < state.NumOfGroups && position < state.UserGroups.size(); ++position)
        form.groups << state.UserGroups[position];
    return form;
}

std::optional<QString> CheckOptions(const WeddingState& state, const OptionsForm& form, const SeatedCountFn& seatedCount)
{
    if (Trim(form.couple).isEmpty() || Trim(form.hisFamily).isEmpty() || Trim(form.herFamily).isEmpty())
        return QStringLiteral("כל השדות חייבים להיות מלאים");
    if (!IsNumeric(form.maxTables) || !IsNumeric(form.maxChairs))
        return QStringLiteral("הערך אינו מספר חוקי");
    const double tables = LeadingNumber(form.maxTables);
    const double chairs = LeadingNumber(form.maxChairs);
    if (tables > 100)
        return QStringLiteral("לא ניתן להגדיר יותר מ-100 שולחנות");
    if (chairs > 15)
        return QStringLiteral("לא ניתן להגדיר יותר מ-15 כסאות לשולחן");
    if (chairs < 1 || tables < 1)
        return QStringLiteral("חובה להזין לפחות שולחן אחד וכיסא אחד");
    for (int table = 1; table <= state.MaxTables; ++table) {
        if (seatedCount(table) > chairs)
            return QStringLiteral("לא ניתן לבטל כסאות לשולחן שמושבים בהם אורחים");
    }
    for (int table = 1; table <= state.MaxTables; ++table) {
        if (table > tables && seatedCount(table) > 0)
            return QStringLiteral("לא ניתן לבטל שולחנות שמושבים בהם מוזמנים");
    }
    return std::nullopt;
}

std::optional<QString> CheckGroupName(const QStringList& groups, const QString& name, int replacing)
{
    const QString trimmed = Trim(name);
    if (trimmed.isEmpty())
        return QStringLiteral("לא ניתן להגדיר קבוצה ריקה");
    for (qsizetype i = 0; i < groups.size(); ++i) {
        if (i != replacing && groups[i] == trimmed)
            return QStringLiteral("קבוצה דומה כבר קיימת במאגר");
    }
    return std::nullopt;
}

void ApplyOptions(WeddingState& state, const OptionsForm& form)
{
    state.CoupleName = Trim(form.couple);
    state.HisFamily = Trim(form.hisFamily);
    state.HerFamily = Trim(form.herFamily);
    QStringList groups = form.groups;
    while (groups.size() < 3)
        groups << QString();
    groups[0] = state.CoupleName;
    groups[1] = state.HisFamily;
    groups[2] = state.HerFamily;
    groups = groups.mid(0, 255);
    state.NumOfGroups = quint8(groups.size());
    state.UserGroups = groups;
    // Halves go to the even neighbour.
    state.MaxTables = quint8(std::nearbyint(LeadingNumber(form.maxTables)));
    state.MaxChairs = quint8(std::nearbyint(LeadingNumber(form.maxChairs)));
    state.WeddingDate = form.weddingDate;
    SaveOptions(state);
}

} // namespace velmora::guests
