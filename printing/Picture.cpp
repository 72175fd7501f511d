#include "printing/Picture.h"

#include "app/Failure.h"

#include <QFile>
#include <QFileInfo>

namespace velmora::printing {

namespace {

// The numbers the runtime gives a picture it can't load.
constexpr int FileNotFound = 53;
constexpr int FileAccessError = 75;
constexpr int InvalidPicture = 481;

// Whether a GIF's blocks run to its trailer. The reader shows a GIF cut short as far as it
// goes, with the rest blank, and says nothing.
bool gifComplete(const QByteArray& data)
{
    const auto byte = [&data](qsizetype at) { return at < data.size() ? int(quint8(data[at])) : -1; };
    // The sub-blocks that follow an extension or an image: each a length and as many bytes.
    const auto skipBlocks = [&](qsizetype& at) {
        for (int length = byte(at); length > 0; length = byte(at))
            at += length + 1;
        if (byte(at) < 0)
            return false;
        ++at;
        return true;
    };
    const auto colourTable = [&](int flags) { return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0; };
    qsizetype at = 13 + colourTable(byte(10)); // signature, screen descriptor, global colours
    for (;;) {
        switch (byte(at)) {
        case 0x3B: // the trailer
            return true;
        case 0x21: // an extension: its label, then its sub-blocks
            at += 2;
            if (!skipBlocks(at))
                return false;
            break;
        case 0x2C: // an image: its descriptor, local colours, code size, then its data
            if (byte(at + 9) < 0)
                return false;
            at += 10 + colourTable(byte(at + 9)) + 1;
            if (!skipBlocks(at))
                return false;
            break;
        default:
            return false;
        }
    }
}

} // namespace

QImage loadPicture(const QString& path)
{
    const QFileInfo file(path);
    if (file.isDir())
        throw Failure(FileAccessError, QStringLiteral("לא ניתן לקרוא את הקובץ '%1'.").arg(path));
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        if (!file.exists())
            throw Failure(FileNotFound, QStringLiteral("הקובץ '%1' לא נמצא.").arg(path));
        throw Failure(FileAccessError, QStringLiteral("לא ניתן לקרוא את הקובץ '%1'.").arg(path));
    }
    const QByteArray data = source.readAll();
    QImage picture = QImage::fromData(data);
    if (picture.isNull() || (data.startsWith("GIF8") && !gifComplete(data)))
        throw Failure(InvalidPicture, QStringLiteral("התמונה '%1' אינה תקינה.").arg(path));
    return picture;
}

} // namespace velmora::printing
