#pragma once

#include <QList>
#include <QString>

#include <memory>
#include <utility>

namespace velmora {

// The classic sectioned settings file: "[Section]" lines, "key=value" lines under them.
// Section and key names match without regard to case; values are trimmed and read to at
// most 255 characters. Text is stored as Windows-1255, as the older program wrote it, and
// lines that a write doesn't touch keep their bytes. A value that code page can't hold
// turns the file into UTF-8 with a byte-order mark, so no character is ever lost.
// Every call reads the file afresh; a write replaces the file whole (temporary file, then
// rename), so it never leaves half a file behind.

QString ReadIniValue(const QString& file, const QString& section, const QString& key, const QString& defaultValue);
bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value);
void ClearIniSection(const QString& file, const QString& section);

// Many keys of one section written in one go: one read and one replacement of the file.
bool WriteIniValues(const QString& file, const QString& section, const QList<std::pair<QString, QString>>& entries);

// Changes to several sections in one replacement of the file, so that a stop in the
// middle leaves all of them or none. A section marked `replace` loses its old keys first;
// with no entries it is simply gone.
struct IniSectionWrite {
    QString section;
    QList<std::pair<QString, QString>> entries;
    bool replace = false;
};
bool WriteIniSections(const QString& file, const QList<IniSectionWrite>& writes);

// The file as it stands now, read once, for an operation that reads many keys at a time.
class IniSnapshot {
public:
    explicit IniSnapshot(const QString& file);
    QString value(const QString& section, const QString& key, const QString& defaultValue) const;

private:
    struct Data;
    std::shared_ptr<Data> m_data;
};

inline constexpr int IniValueMaxLength = 255;

// The code page of the settings file, and of Hebrew text files that older programs wrote.
inline constexpr char HebrewCodePage[] = "windows-1255";

} // namespace velmora
