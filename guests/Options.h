#pragma once

#include "guests/Invitation.h"

#include <QDate>
#include <QStringList>

#include <optional>

namespace velmora {
struct WeddingState;
}

namespace velmora::guests {

// The options window's controls as they stand.
struct OptionsForm {
    QString couple;
    QString hisFamily;
    QString herFamily;
    QDate weddingDate;
    QString maxTables;
    QString maxChairs;
    QStringList groups; // the three main groups first
};

OptionsForm OptionsFromState(const WeddingState& state);

// Apply's checks in their order: the message of the first that fails, or nothing.
// The seats are checked against the tables as the map counts them now.
std::optional<QString> CheckOptions(const WeddingState& state, const OptionsForm& form, const SeatedCountFn& seatedCount);

// A name for the group list: refused when empty or already there (the entry at
// `replacing`, when updating, doesn't count). The message, or nothing.
std::optional<QString> CheckGroupName(const QStringList& groups, const QString& name, int replacing = -1);

// Takes the checked options into WeddingState and writes the settings file.
void ApplyOptions(WeddingState& state, const OptionsForm& form);

} // namespace velmora::guests
