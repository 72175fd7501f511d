#include "printing/PrintDesign.h"

#include "app/Settings.h"
#include "app/WeddingState.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace velmora::printing {

QString DesignFolder(const QString& appPath)
{
    return appPath + QStringLiteral("design") + QDir::separator();
}

int DrvScan::ScanFiles(const QString& pattern)
{
    const QFileInfo where(pattern);
    const QRegularExpression wildcard(
        QRegularExpression::wildcardToRegularExpression(where.fileName(), QRegularExpression::UnanchoredWildcardConversion),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpression whole(QRegularExpression::anchoredPattern(wildcard.pattern()), wildcard.patternOptions());
    const QString suffix = pattern.right(4);

    QStringList found;
    // Hidden files (".name") stay out, as this system's own listings leave them out.
    QDirIterator entries(where.path(), QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        entries.next();
        const QFileInfo entry = entries.fileInfo();
        const QString name = entry.fileName();
        if (!whole.match(name).hasMatch() || entry.isDir())
            continue;
        if (name.right(4).compare(suffix, Qt::CaseInsensitive) == 0)
            found.append(name);
    }
    if (!found.isEmpty())
        DesignFiles = found;
    return int(found.size());
}

QStringList LoadStyles(WeddingState& state)
{
    QStringList entries{NoBackground};
    DrvScan scan;
    const int count = scan.ScanFiles(DesignFolder(state.AppPath) + QStringLiteral("*.gif"));
    bool listed = false;
    for (int i = 0; i < count; ++i) {
        entries.append(scan.DesignFiles[i]);
        listed = listed || scan.DesignFiles[i] == state.NoteStyle;
    }
    if (!listed || state.NoteStyle.trimmed().isEmpty())
        state.NoteStyle = NoBackground;
    return entries;
}

QColor colourFromValue(qint32 value)
{
    const auto bits = quint32(value);
    return QColor(int(bits & 0xFF), int((bits >> 8) & 0xFF), int((bits >> 16) & 0xFF));
}

qint32 valueFromColour(const QColor& colour)
{
    const QColor rgb = colour.toRgb();
    return qint32(rgb.red() | (rgb.green() << 8) | (rgb.blue() << 16));
}

void ReadPrintDesign(WeddingState& state, qint32 page)
{
    const SettingsFile settings(state.iniFile());
    if (page == NotesPage) {
        state.LabelFrame = settings.flag(keys::NoteFrame);
        state.LabelColor = settings.number(keys::NoteColor);
        state.NoteStyle = settings.text(keys::NoteBackground);
    } else {
        state.LabelFrame = settings.flag(keys::LabelFrame);
        state.LabelColor = settings.number(keys::LabelColor);
        state.LabelAddress = settings.flag(keys::LabelAddress);
    }
}

void SavePrintDesign(const WeddingState& state, qint32 page)
{
    const SettingsFile settings(state.iniFile());
    if (page == NotesPage) {
        settings.setFlag(keys::NoteFrame, state.LabelFrame);
        settings.setNumber(keys::NoteColor, state.LabelColor);
        settings.setText(keys::NoteBackground, state.NoteStyle);
    } else {
        settings.setFlag(keys::LabelAddress, state.LabelAddress);
        settings.setFlag(keys::LabelFrame, state.LabelFrame);
        settings.setNumber(keys::LabelColor, state.LabelColor);
    }
}

QString ShippedDesignFolder()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    for (const QString& candidate : {programFolder + QStringLiteral("/design"),
                                     programFolder + QStringLiteral("/../share/velmora/design")}) {
        if (QFileInfo(candidate).isDir())
            return QDir::cleanPath(candidate);
    }
    return {};
}

bool InstallDesigns(const QString& appPath, const QString& shippedFolder)
{
    const QString target = QDir::cleanPath(DesignFolder(appPath));
    if (shippedFolder.isEmpty() || QFileInfo::exists(target) || QFileInfo(target).isSymLink())
        return false;
    QTemporaryDir staging(appPath + QStringLiteral(".design-XXXXXX"));
    if (!staging.isValid())
        return false;
    const QDir shipped(shippedFolder);
    for (const QString& name : shipped.entryList({QStringLiteral("*.gif")}, QDir::Files)) {
        if (!QFile::copy(shipped.filePath(name), staging.filePath(name)))
            return false;
    }
    if (!QDir().rename(staging.path(), target))
        return false;
    staging.setAutoRemove(false);
    return true;
}

} // namespace velmora::printing
