#pragma once

// The edits that velmora-edits makes, each a pure function of its place in the run, so
// that whoever stops the run at any moment knows what the wedding must hold. Edits come
// in blocks of ten: four invitations added, two updated, one removed, then the options,
// the map's places and the budget. Doing an edit twice leaves what doing it once leaves.

#include "seating/TableMap.h"

#include <QString>
#include <QStringList>

namespace velmora::edits {

enum class Kind { Add, Update, Remove, Options, Places, Budget };

inline constexpr int BlockSize = 10;
inline constexpr int PlacedTables = 12;

struct Edit {
    Kind kind;
    int block;
    int slot; // the invitation of the block it touches, for Add, Update and Remove
};

inline Edit editAt(int index)
{
    const int block = index / BlockSize;
    switch (index % BlockSize) {
    case 0: case 1: case 2: case 3: return {Kind::Add, block, index % BlockSize};
    case 4: return {Kind::Update, block, 0};
    case 5: return {Kind::Update, block, 1};
    case 6: return {Kind::Remove, block, 2};
    case 7: return {Kind::Options, block, 0};
    case 8: return {Kind::Places, block, 0};
    default: return {Kind::Budget, block, 0};
    }
}

inline QString familyName(int block) { return QStringLiteral("משפחת %1").arg(block); }
inline QString firstName(int slot) { return QStringLiteral("אורח %1").arg(slot); }
// What the edit at `index` writes into the invitation it adds or updates.
inline QString phonesOf(int index) { return QStringLiteral("050-%1").arg(index, 7, 10, QLatin1Char('0')); }
inline int peopleOf(int index) { return 1 + index % 9; }
inline QString remarkOf(int index) { return QStringLiteral("עריכה %1").arg(index); }

inline QString coupleOf(int block) { return QStringLiteral("זוג %1").arg(block); }
// The groups after the options of a block: the three main ones and one to four more.
inline QStringList groupsOf(int block)
{
    QStringList groups{coupleOf(block), QStringLiteral("משפחת החתן"), QStringLiteral("משפחת הכלה")};
    for (int k = 0; k <= block % 4; ++k)
        groups << QStringLiteral("קבוצה %1-%2").arg(block).arg(k);
    return groups;
}
// A table's place on the map after the places of a block, in twips.
inline double placeLeft(int block, int table) { return 300.0 * table + block; }
inline double placeTop(int block, int table) { return 200.0 * table + 2 * block; }
// A budget branch after the budget of a block, in whole shekels.
inline int amountOf(int block, int branch) { return 1000 * block + branch + 1; }

// What the wedding holds once the first `done` edits have run, in the lines that
// `velmora-edits FOLDER --state` prints; `firstCouple` stands until the first options.
inline QStringList stateAfter(int done, const QString& firstCouple)
{
    QStringList lines{QStringLiteral("integrity ok"), QStringLiteral("settings whole")};
    const int blocks = (done + BlockSize - 1) / BlockSize;
    auto ran = [done](int block, int offset) { return block * BlockSize + offset < done; };
    for (int block = 0; block < blocks; ++block) {
        for (int slot = 0; slot < 4; ++slot) {
            if (!ran(block, slot) || (slot == 2 && ran(block, 6)))
                continue;
            const int last = block * BlockSize + (slot < 2 && ran(block, 4 + slot) ? 4 + slot : slot);
            lines << QStringLiteral("row %1|%2|%3|%4|%5")
                         .arg(familyName(block), firstName(slot), phonesOf(last))
                         .arg(peopleOf(last))
                         .arg(remarkOf(last));
        }
    }
    auto lastBlock = [&](int offset) {
        int found = -1;
        for (int block = 0; block < blocks; ++block)
            found = ran(block, offset) ? block : found;
        return found;
    };
    const int options = lastBlock(7);
    lines << QStringLiteral("couple ") + (options < 0 ? firstCouple : coupleOf(options));
    lines << QStringLiteral("groups ") + (options < 0 ? QString() : groupsOf(options).join(u'|'));
    const int places = lastBlock(8);
    for (int table = 1; table <= PlacedTables && places >= 0; ++table)
        lines << QStringLiteral("table %1 %2, %3")
                     .arg(table)
                     .arg(seating::positionText(placeLeft(places, table)), seating::positionText(placeTop(places, table)));
    const int budget = lastBlock(9);
    for (int branch = 0; budget >= 0 && branch < 30; ++branch)
        lines << QStringLiteral("budget %1").arg(amountOf(budget, branch));
    lines.sort();
    return lines;
}

} // namespace velmora::edits
