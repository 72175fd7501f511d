#include "app/IniFile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

#include <optional>
#include <vector>

namespace velmora {

namespace {

const QByteArray Utf8Bom("\xEF\xBB\xBF");
const char* const CodePage = HebrewCodePage;

struct Parsed {
    enum class Kind { Other, Section, Key };
    Kind kind = Kind::Other;
    QString name; // section or key name, trimmed
    QString value;
    bool blank = false;
};

struct Line {
    QByteArray bytes; // without its line end
    QByteArray end;   // "\r\n", "\n" or empty for a last line without one
    Parsed parsed;
};

class IniText {
public:
    bool load(const QString& path)
    {
        QFile file(path);
        if (!file.exists())
            return true;
        if (!file.open(QIODevice::ReadOnly))
            return false;
        QByteArray data = file.readAll();
        if (data.startsWith(Utf8Bom)) {
            m_utf8 = true;
            data.remove(0, Utf8Bom.size());
        }
        qsizetype start = 0;
        while (start < data.size()) {
            const qsizetype newline = data.indexOf('\n', start);
            Line line;
            if (newline < 0) {
                line.bytes = data.mid(start);
                start = data.size();
            } else {
                line.bytes = data.mid(start, newline - start);
                line.end = "\n";
                start = newline + 1;
            }
            if (line.bytes.endsWith('\r')) {
                line.bytes.chop(1);
                line.end.prepend('\r');
            }
            line.parsed = parse(line.bytes);
            m_lines.push_back(line);
        }
        return true;
    }

    bool save(const QString& path) const
    {
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return false;
        bool written = !m_utf8 || file.write(Utf8Bom) == Utf8Bom.size();
        for (const Line& line : m_lines) {
            written = written && file.write(line.bytes) == line.bytes.size();
            written = written && file.write(line.end) == line.end.size();
        }
        // commit() misses a failed write still in the buffer (a full disk): it would put
        // the short file in place of the whole one. Flush first, and keep the old file
        // when anything failed.
        if (!written || !file.flush()) {
            file.cancelWriting();
            return false;
        }
        return file.commit();
    }

    Parsed parse(const QByteArray& bytes) const
    {
        Parsed parsed;
        const QString text = decode(bytes).trimmed();
        parsed.blank = text.isEmpty();
        if (text.startsWith(u'[')) {
            const qsizetype close = text.indexOf(u']');
            parsed.kind = Parsed::Kind::Section;
            parsed.name = (close < 0 ? text.mid(1) : text.mid(1, close - 1)).trimmed();
        } else if (!text.startsWith(u';')) {
            const qsizetype equals = text.indexOf(u'=');
            if (equals > 0) {
                parsed.kind = Parsed::Kind::Key;
                parsed.name = text.left(equals).trimmed();
                parsed.value = text.mid(equals + 1).trimmed();
            }
        }
        return parsed;
    }

    // Lines [first, last) of the first section of that name: its header and its lines.
    std::optional<std::pair<size_t, size_t>> section(const QString& name, size_t from = 0) const
    {
        for (size_t i = from; i < m_lines.size(); ++i) {
            const Parsed header = m_lines[i].parsed;
            if (header.kind != Parsed::Kind::Section || !sameName(header.name, name))
                continue;
            size_t end = i + 1;
            while (end < m_lines.size() && m_lines[end].parsed.kind != Parsed::Kind::Section)
                ++end;
            return std::make_pair(i, end);
        }
        return std::nullopt;
    }

    std::optional<size_t> keyLine(std::pair<size_t, size_t> range, const QString& key) const
    {
        for (size_t i = range.first + 1; i < range.second; ++i) {
            const Parsed parsed = m_lines[i].parsed;
            if (parsed.kind == Parsed::Kind::Key && sameName(parsed.name, key))
                return i;
        }
        return std::nullopt;
    }

    std::optional<QString> value(const QString& sectionName, const QString& key) const
    {
        const auto range = section(sectionName);
        if (!range)
            return std::nullopt;
        const auto line = keyLine(*range, key);
        if (!line)
            return std::nullopt;
        return m_lines[*line].parsed.value;
    }

    void setValue(const QString& sectionName, const QString& key, QString value)
    {
        // A line break in a value would split the entry in two.
        value.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
        value.replace(u'\n', u' ');
        value.replace(u'\r', u' ');
        const QString entry = key + u'=' + value;
        if (!m_utf8 && !fitsCodePage(entry))
            convertToUtf8();

        const auto range = section(sectionName);
        if (range) {
            if (const auto line = keyLine(*range, key)) {
                m_lines[*line] = makeLine(entry, m_lines[*line].end);
                return;
            }
            // After the last non-blank line of the section.
            size_t at = range->second;
            while (at > range->first + 1 && m_lines[at - 1].parsed.blank)
                --at;
            terminate(at - 1);
            m_lines.insert(m_lines.begin() + qsizetype(at), makeLine(entry, lineEnd()));
            return;
        }
        if (!fitsCodePage(sectionName) && !m_utf8)
            convertToUtf8();
        if (!m_lines.empty()) {
            terminate(m_lines.size() - 1);
            if (!m_lines.back().parsed.blank)
                m_lines.push_back(makeLine({}, lineEnd()));
        }
        m_lines.push_back(makeLine(u'[' + sectionName + u']', lineEnd()));
        m_lines.push_back(makeLine(entry, lineEnd()));
    }

    bool removeSection(const QString& name)
    {
        bool removed = false;
        while (const auto range = section(name)) {
            m_lines.erase(m_lines.begin() + qsizetype(range->first), m_lines.begin() + qsizetype(range->second));
            removed = true;
        }
        return removed;
    }

private:
    Line makeLine(const QString& text, const QByteArray& end) const
    {
        Line line{encode(text), end, {}};
        line.parsed = parse(line.bytes);
        return line;
    }

    static bool sameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

    QString decode(const QByteArray& bytes) const
    {
        if (m_utf8)
            return QString::fromUtf8(bytes);
        QStringDecoder decoder(CodePage);
        return decoder.decode(bytes);
    }

    QByteArray encode(const QString& text) const
    {
        if (m_utf8)
            return text.toUtf8();
        QStringEncoder encoder(CodePage);
        return encoder.encode(text);
    }

    static bool fitsCodePage(const QString& text)
    {
        QStringEncoder encoder(CodePage);
        const QByteArray bytes = encoder.encode(text);
        QStringDecoder decoder(CodePage);
        return !encoder.hasError() && QString(decoder.decode(bytes)) == text;
    }

    void convertToUtf8()
    {
        for (Line& line : m_lines)
            line.bytes = decode(line.bytes).toUtf8();
        m_utf8 = true;
    }

    QByteArray lineEnd() const
    {
        for (const Line& line : m_lines) {
            if (line.end.endsWith('\n'))
                return line.end;
        }
        return "\r\n";
    }

    void terminate(size_t index)
    {
        if (index < m_lines.size() && !m_lines[index].end.endsWith('\n'))
            m_lines[index].end = lineEnd();
    }

    std::vector<Line> m_lines;
    bool m_utf8 = false;
};

} // namespace

QString ReadIniValue(const QString& file, const QString& section, const QString& key, const QString& defaultValue)
{
    IniText text;
    if (!text.load(file))
        return defaultValue;
    const auto value = text.value(section, key);
    return value ? value->left(IniValueMaxLength) : defaultValue;
}

bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value)
{
    IniText text;
    if (!text.load(file))
        return false;
    text.setValue(section, key, value);
    return text.save(file);
}

bool WriteIniValues(const QString& file, const QString& section, const QList<std::pair<QString, QString>>& entries)
{
    IniText text;
    if (!text.load(file))
        return false;
    for (const auto& [key, value] : entries)
        text.setValue(section, key, value);
    return text.save(file);
}

bool WriteIniSections(const QString& file, const QList<IniSectionWrite>& writes)
{
    IniText text;
    if (!text.load(file))
        return false;
    for (const IniSectionWrite& write : writes) {
        if (write.replace)
            text.removeSection(write.section);
        for (const auto& [key, value] : write.entries)
            text.setValue(write.section, key, value);
    }
    return text.save(file);
}

struct IniSnapshot::Data {
    IniText text;
    bool loaded = false;
};

IniSnapshot::IniSnapshot(const QString& file) : m_data(std::make_shared<Data>())
{
    m_data->loaded = m_data->text.load(file);
}

QString IniSnapshot::value(const QString& section, const QString& key, const QString& defaultValue) const
{
    if (!m_data->loaded)
        return defaultValue;
    const auto value = m_data->text.value(section, key);
    return value ? value->left(IniValueMaxLength) : defaultValue;
}

void ClearIniSection(const QString& file, const QString& section)
{
    IniText text;
    if (text.load(file) && text.removeSection(section))
        text.save(file);
}

} // namespace velmora
