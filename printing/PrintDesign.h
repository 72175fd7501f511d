#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

namespace velmora {
struct WeddingState;
}

namespace velmora::printing {

// The entry of the design list that means a note without a picture.
inline const QString NoBackground = QStringLiteral("עיצוב ללא רקע");

// The pages of the print design window, by PrintPage.
inline constexpr qint32 LabelsPage = 1;
inline constexpr qint32 NotesPage = 2;

// The folder of a wedding's designs. Designs were once kept in "design\" under the
// wedding's folder; here it is the subfolder "design" of AppPath, with this system's
// separator, so a wedding carried over keeps its pictures beside its two files.
QString DesignFolder(const QString& appPath);

// The file search behind the design list. Walks the folder of `pattern` ("<folder>/*.gif")
// in the order the file system gives, matching the wildcard without regard to case, and
// takes each entry that is not a folder and ends in the pattern's last four characters,
// again without regard to case: "a.GIF" is taken, "a.gifx" is not. Returns the count and
// leaves the names in DesignFiles; a search that finds nothing leaves DesignFiles as it was.
class DrvScan {
public:
    int ScanFiles(const QString& pattern);
    QStringList DesignFiles;
};

// The entries of the design list: "עיצוב ללא רקע", then the wedding's designs in the order
// found. NoteStyle falls back to "עיצוב ללא רקע" when it names none of them or is blank.
QStringList LoadStyles(WeddingState& state);

// Colours are 24-bit values with red in the low byte, kept as signed 32-bit numbers.
QColor colourFromValue(qint32 value);
qint32 valueFromColour(const QColor& colour);

// Reads the keys of one page into the shared state: the labels' frame, colour and address,
// or the notes' frame, colour and design. Both pages share LabelFrame and LabelColor.
void ReadPrintDesign(WeddingState& state, qint32 page);
// Stores the page's choices in section Print, in the order the labels and notes were
// always written: Label Address, Label Frame, Label Color; Note Frame, Note Color,
// Note Background.
void SavePrintDesign(const WeddingState& state, qint32 page);

// The designs that come with the program: beside the executable when run from the build,
// under share/velmora/design when installed. Empty when neither is there.
QString ShippedDesignFolder();

// Gives a wedding that has no design folder yet a copy of the shipped designs. A folder
// that exists is the user's and is left alone, even when empty. The copy is made under a
// temporary name and renamed into place whole; a failure leaves nothing behind. True when
// a folder was made.
bool InstallDesigns(const QString& appPath, const QString& shippedFolder);

} // namespace velmora::printing
