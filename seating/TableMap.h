#pragma once

#include <QPointF>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {
class PendingFailure;
class IniSnapshot;
struct WeddingState;
}

namespace velmora::seating {

// An item's caption: "שולחן של " and the people at the table.
QString TableCaption(int people);

// The people on a table as its caption tells them: the leading number of the caption's
// last two characters (a leading blank skipped). Good for up to 99 people.
quint8 SeatedCount(const QString& caption);

// Recounts every table from the invitations that have one, whatever the list shows:
// TableInfo anew, index 0 to MaxTables. Rows of a table above MaxTables are passed over;
// a count past 255 stays at 255. True when a table holds more than MaxChairs.
bool CountTables(WeddingState& state, PendingFailure& pending);

// Table positions on the map, in twips from the map's top left corner, as the settings
// file keeps them ("left, top").
struct StoredPosition {
    QString left;
    QString top;
};
std::optional<StoredPosition> storedPosition(const IniSnapshot& ini, int table);
// A table's stored place in twips, as the map puts the table there; nothing when none is
// stored or when it isn't a place on a map (not two numbers, or farther out than any
// screen reaches: such a value would come from a damaged file).
std::optional<QPointF> storedPlace(const IniSnapshot& ini, int table);
inline constexpr double FarthestPlace = 1'000'000; // twips, about 17 metres

// A single-precision number as text, as positions are written and compared.
QString positionText(double twips);
// The item positions (tables 1 up, in twips) against the stored ones: a table without a
// stored position counts as changed.
bool TablePositionsChanged(const QString& iniFile, const std::vector<QPointF>& positions);
// The picture's path and every position, in one write of the file.
void SaveTablePositions(const QString& iniFile, const QString& gardenMapFile, const std::vector<QPointF>& positions);

} // namespace velmora::seating
