#pragma once

// The edits that velmora-edits makes, each a pure function of its place in the run, so
// that whoever stops the run at any moment knows what the wedding must hold. Edits come
// in blocks of ten: four invitations added, two updated, one removed, then the options,
// the map's places and the budget. Doing an edit twice leaves what doing it once leaves.

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

} // namespace velmora::edits
