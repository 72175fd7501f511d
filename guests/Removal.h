#pragma once

#include <QString>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::guests {

// The query that finds an invitation by its name pair; a quote in a name is doubled.
QString PairSql(const QString& familyName, const QString& firstName);

// Deletes the first row of the pair. True when it is gone; otherwise the user has been
// told why and the list should stay as it is.
bool RemoveInvitation(WeddingState& state, Prompts& prompts, const QString& familyName, const QString& firstName);

} // namespace velmora::guests
