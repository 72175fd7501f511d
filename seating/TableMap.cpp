#include "seating/TableMap.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Settings.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"

#include <algorithm>
#include <cmath>

namespace velmora::seating {

QString TableCaption(int people)
{
    return QStringLiteral("שולחן של ") + QString::number(people);
}

quint8 SeatedCount(const QString& caption)
{
    const double people = LeadingNumber(caption.right(2));
    return people > 0 && people <= 255 ? quint8(people) : 0;
}

bool CountTables(WeddingState& state, PendingFailure& pending)
{
    state.TableInfo.assign(size_t(state.MaxTables) + 1, TableRecord{});
    pending.attempt([&] {
        state.WeddingDb = store::Database::open(state.databaseFile());
        state.SqlText = QStringLiteral("select * from VELMORA_LIST where TABLE_NO > 0");
        state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText);
        store::Recordset& rs = state.WeddingRs;
        for (; !rs.eof(); rs.moveNext()) {
            const int table = rs.value(QStringLiteral("TABLE_NO")).toInt();
            if (table < 1 || table > state.MaxTables)
                continue; // no item to show it on
            TableRecord& record = state.TableInfo[size_t(table)];
            record.PeopleCount += rs.value(QStringLiteral("INV_NUM")).toInt();
            record.PeopleNames += rs.value(QStringLiteral("FAMILY_NAME")).toString() + u' '
                + rs.value(QStringLiteral("FIRST_NAME")).toString() + QStringLiteral(" , ");
        }
        rs.close();
        state.WeddingDb.close();
    });
    return std::any_of(state.TableInfo.begin() + 1, state.TableInfo.end(),
                       [&](const TableRecord& record) { return record.PeopleCount > state.MaxChairs; });
}

std::optional<StoredPosition> storedPosition(const IniSnapshot& ini, int table)
{
    const QString value = ini.value(keys::TableNum.section, keys::TableNum.nameFor(table), keys::TableNum.defaultValue);
    if (value == keys::NoValue)
        return std::nullopt;
    const qsizetype comma = value.indexOf(QStringLiteral(", "));
    if (comma < 0)
        return std::nullopt; // unreadable: as if nothing were stored
    return StoredPosition{Trim(value.left(comma)), Trim(value.mid(comma + 2))};
}

std::optional<QPointF> storedPlace(const IniSnapshot& ini, int table)
{
    const auto stored = storedPosition(ini, table);
    if (!stored)
        return std::nullopt;
    bool leftOk = false, topOk = false;
    const float left = stored->left.toFloat(&leftOk);
    const float top = stored->top.toFloat(&topOk);
    if (!leftOk || !topOk || !(std::fabs(left) <= FarthestPlace) || !(std::fabs(top) <= FarthestPlace))
        return std::nullopt;
    return QPointF(left, top);
}

QString positionText(double twips)
{
    return QString::number(double(float(twips)), 'g', 7);
}

bool TablePositionsChanged(const QString& iniFile, const std::vector<QPointF>& positions)
{
    const IniSnapshot ini(iniFile);
    for (size_t i = 0; i < positions.size(); ++i) {
        const auto stored = storedPosition(ini, int(i) + 1);
        if (!stored || positionText(positions[i].x()) != stored->left || positionText(positions[i].y()) != stored->top)
            return true;
    }
    return false;
}

void SaveTablePositions(const QString& iniFile, const QString& gardenMapFile, const std::vector<QPointF>& positions)
{
    QList<std::pair<QString, QString>> entries{{keys::GardenMapBackground.name, gardenMapFile}};
    for (size_t i = 0; i < positions.size(); ++i)
        entries.append({keys::TableNum.nameFor(int(i) + 1),
                        positionText(positions[i].x()) + QStringLiteral(", ") + positionText(positions[i].y())});
    WriteIniValues(iniFile, keys::TableNum.section, entries);
}

} // namespace velmora::seating
