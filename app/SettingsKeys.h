#pragma once

#include <QString>

// Every section, key and default of the settings file and of the per-user store, in one
// place. A key whose name ends in '-' takes a number behind it ("Group-3", "TableNum-12").
namespace velmora::keys {

struct Key {
    QString section;
    QString name;
    QString defaultValue;

    QString nameFor(int number) const { return name + QString::number(number); }
};

// Callers compare against this marker; it is never written.
inline const QString NoValue = QStringLiteral("<no value>");

// velmora.ini
inline const Key Couple{QStringLiteral("Options"), QStringLiteral("Couple"), {}};
inline const Key HisFamily{QStringLiteral("Options"), QStringLiteral("His Family"), {}};
inline const Key HerFamily{QStringLiteral("Options"), QStringLiteral("Her Family"), {}};
inline const Key NumOfGroups{QStringLiteral("Options"), QStringLiteral("NumOfGroups"), QStringLiteral("0")};
inline const Key MaxTables{QStringLiteral("Options"), QStringLiteral("Max Tables"), QStringLiteral("100")};
inline const Key MaxChairs{QStringLiteral("Options"), QStringLiteral("Max Chairs"), QStringLiteral("15")};
inline const Key WeddingDate{QStringLiteral("Options"), QStringLiteral("Wedding Date"), {}}; // default: today
inline const Key Group{QStringLiteral("UserGroups"), QStringLiteral("Group-"), {}};
inline const Key LabelFrame{QStringLiteral("Print"), QStringLiteral("Label Frame"), QStringLiteral("False")};
inline const Key LabelColor{QStringLiteral("Print"), QStringLiteral("Label Color"), QStringLiteral("0")};
inline const Key LabelAddress{QStringLiteral("Print"), QStringLiteral("Label Address"), QStringLiteral("True")};
inline const Key NoteFrame{QStringLiteral("Print"), QStringLiteral("Note Frame"), QStringLiteral("False")};
inline const Key NoteColor{QStringLiteral("Print"), QStringLiteral("Note Color"), QStringLiteral("0")};
inline const Key NoteBackground{QStringLiteral("Print"), QStringLiteral("Note Background"), QStringLiteral("עיצוב ללא רקע")};
inline const Key GardenMapBackground{QStringLiteral("TablesMap"), QStringLiteral("GardenMapBackground"), {}};
inline const Key TableNum{QStringLiteral("TablesMap"), QStringLiteral("TableNum-"), NoValue};

// UserStore
inline const Key Window{QStringLiteral("Settings"), QStringLiteral("Window"), {}}; // default: as built
inline const Key MainLeft{QStringLiteral("Settings"), QStringLiteral("MainLeft"), {}};
inline const Key MainTop{QStringLiteral("Settings"), QStringLiteral("MainTop"), {}};
inline const Key MainWidth{QStringLiteral("Settings"), QStringLiteral("MainWidth"), {}};
inline const Key MainHeight{QStringLiteral("Settings"), QStringLiteral("MainHeight"), {}};
inline const Key ColWidth{QStringLiteral("TableSettings"), QStringLiteral("ColWidth-"), NoValue};
// A serial device the user names for a COM number of the dialer: "COM3=/dev/ttyUSB7".
inline const Key DialerDevice{QStringLiteral("Dialer"), QStringLiteral("COM"), {}};

// Settings of earlier versions, in UserStore, moved into velmora.ini once.
inline const Key OldCouple{QStringLiteral("Options"), QStringLiteral("Couple"), {}};
inline const Key OldHisFamily{QStringLiteral("Options"), QStringLiteral("His Family"), {}};
inline const Key OldHerFamily{QStringLiteral("Options"), QStringLiteral("Her Family"), {}};
inline const Key OldMaxTables{QStringLiteral("Options"), QStringLiteral("Max Tables"), QStringLiteral("100")};
inline const Key OldMaxChairs{QStringLiteral("Options"), QStringLiteral("Max Chairs"), QStringLiteral("15")};
inline const Key OldLabelAddress{QStringLiteral("Print"), QStringLiteral("Label Address"), QStringLiteral("True")};
inline const Key OldLabelFrame{QStringLiteral("Print"), QStringLiteral("Label Frame"), QStringLiteral("False")};
inline const Key OldLabelColor{QStringLiteral("Print"), QStringLiteral("Label Color"), QStringLiteral("0")};

} // namespace velmora::keys
