#include "store/CsvText.h"

#include "app/IniFile.h"
#include "app/Prompts.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace velmora::store {

namespace {

const QByteArray Utf8Mark("\xEF\xBB\xBF");
constexpr QChar Quote = u'"';
constexpr QChar ByteOrderMark = QChar(0xFEFF);

bool needsQuotes(const QString& cell, QChar separator)
{
    if (cell.isEmpty())
        return false;
    if (cell.front().isSpace() || cell.back().isSpace())
        return true;
    for (QChar c : cell) {
        if (c == separator || c == Quote || c == u'\n' || c == u'\r')
            return true;
    }
    return false;
}

// Text has line breaks and tabs among its characters, and little else below a blank.
bool looksBinary(const QString& text)
{
    qsizetype controls = 0;
    for (QChar c : text) {
        if (c.unicode() == 0)
            return true;
        if (c.unicode() < 0x20 && c != u'\n' && c != u'\r' && c != u'\t')
            ++controls;
    }
    return controls * 100 > text.size();
}

} // namespace

QByteArray CsvBom()
{
    return Utf8Mark;
}

void AppendCsvRow(QByteArray& out, const QStringList& cells, QChar separator)
{
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            out += char(separator.unicode());
        const QString& cell = cells[i];
        if (needsQuotes(cell, separator)) {
            out += '"';
            out += QString(cell).replace(Quote, QStringLiteral("\"\"")).toUtf8();
            out += '"';
        } else {
            out += cell.toUtf8();
        }
    }
    out += "\r\n";
}

QString DecodeCsv(const QByteArray& bytes, CsvEncoding& encoding)
{
    if (bytes.startsWith(Utf8Mark)) {
        encoding = CsvEncoding::Utf8Bom;
        return QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3);
    }
    const bool littleEndian = bytes.startsWith("\xFF\xFE");
    if (littleEndian || bytes.startsWith("\xFE\xFF")) {
        encoding = CsvEncoding::Utf16;
        QStringDecoder decoder(littleEndian ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
        return decoder.decode(bytes.mid(2));
    }
    QStringDecoder utf8(QStringConverter::Utf8);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError()) {
        encoding = CsvEncoding::Utf8;
        return text;
    }
    encoding = CsvEncoding::Windows1255;
    QStringDecoder hebrew(HebrewCodePage);
    return hebrew.decode(bytes);
}

QChar DetectSeparator(const QString& text)
{
    static constexpr std::array<QChar, 3> candidates = {u'\t', u';', u','}; // ties go to the first
    std::array<int, 3> counts{};
    bool quoted = false;
    for (QChar c : text) {
        if (c == Quote) {
            quoted = !quoted;
        } else if (!quoted && (c == u'\n' || c == u'\r')) {
            if (counts != std::array<int, 3>{})
                break;
        } else if (!quoted) {
            for (size_t k = 0; k < candidates.size(); ++k)
                counts[k] += c == candidates[k];
        }
    }
    size_t best = 0;
    for (size_t k = 1; k < candidates.size(); ++k) {
        if (counts[k] > counts[best])
            best = k;
    }
    return counts[best] > 0 ? candidates[best] : QChar(u',');
}

CsvParse ParseCsv(const QByteArray& bytes)
{
    CsvTable table;
    QString text = DecodeCsv(bytes, table.encoding);
    if (looksBinary(text))
        return {std::nullopt, QStringLiteral("הקובץ אינו קובץ טקסט: לא ניתן לקרוא ממנו רשימה.")};
    // A mark in the middle is where two files were joined; it is no character of a name.
    text.remove(ByteOrderMark);
    if (text.trimmed().isEmpty())
        return {std::nullopt, QStringLiteral("הקובץ ריק.")};
    table.separator = DetectSeparator(text);

    QStringList row;
    QString field;
    bool inQuotes = false, fieldStarted = false;
    int line = 1, rowLine = 1, quoteLine = 0;
    auto endField = [&] {
        row << field;
        field.clear();
        fieldStarted = false;
    };
    auto endRow = [&] {
        endField();
        const bool blank = std::all_of(row.begin(), row.end(), [](const QString& cell) { return cell.trimmed().isEmpty(); });
        if (!blank) {
            table.rows.push_back(row);
            table.lines.push_back(rowLine);
        }
        row.clear();
    };
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar c = text[i];
        const bool lineBreak = c == u'\n' || c == u'\r';
        if (lineBreak && c == u'\r' && i + 1 < size && text[i + 1] == u'\n')
            ++i; // CR LF is one break
        if (inQuotes) {
            if (c == Quote) {
                if (i + 1 < size && text[i + 1] == Quote) {
                    field += Quote;
                    ++i;
                } else {
                    inQuotes = false;
                }
            } else {
                field += lineBreak ? QChar(u'\n') : c;
                line += lineBreak;
            }
        } else if (c == table.separator) {
            endField();
        } else if (lineBreak) {
            endRow();
            rowLine = ++line;
        } else if (c == Quote && !fieldStarted) {
            inQuotes = fieldStarted = true;
            quoteLine = line;
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (inQuotes) {
        return {std::nullopt, QStringLiteral("בשורה %1 נפתחו מרכאות שלא נסגרו עד סוף הקובץ.").arg(quoteLine)};
    }
    if (!row.isEmpty() || fieldStarted || !field.isEmpty())
        endRow();
    if (table.rows.empty())
        return {std::nullopt, QStringLiteral("הקובץ ריק.")};
    return {std::move(table), {}};
}

CsvParse ReadCsvFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {std::nullopt, QStringLiteral("לא ניתן לקרוא את הקובץ.\n") + file.errorString()};
    if (file.size() > CsvMaxBytes) {
        return {std::nullopt, QStringLiteral("הקובץ גדול מדי לרשימת מוזמנים: יותר מ-%1 מגה-בתים.")
                                  .arg(CsvMaxBytes / (1024 * 1024))};
    }
    const QByteArray bytes = file.read(CsvMaxBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return {std::nullopt, QStringLiteral("לא ניתן לקרוא את הקובץ.\n") + file.errorString()};
    if (bytes.size() > CsvMaxBytes) // grew while being read
        return {std::nullopt, QStringLiteral("הקובץ גדול מדי לרשימת מוזמנים.")};
    return ParseCsv(bytes);
}

std::optional<QString> WriteWholeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // A buffered write that failed is only seen by flush(): commit() alone would put a cut
    // file in place of the old one.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        file.commit();
        return reason;
    }
    if (!file.commit())
        return file.errorString();
    return std::nullopt;
}

bool SaveCsvFile(Prompts& prompts, const QString& fileName, const QString& folder, const QByteArray& bytes)
{
    FileRequest request;
    request.fileName = fileName;
    request.initialDir = folder;
    request.filter = QStringLiteral("גיליון CSV (*.csv)|*.csv");
    const PromptResult<QString> target = prompts.saveFile(request);
    if (!target)
        return false;
    if (const auto reason = WriteWholeFile(*target, bytes)) {
        prompts.message(QStringLiteral("ארעה שגיאה בכתיבת הקובץ.\n") + *reason);
        return false;
    }
    return true;
}

} // namespace velmora::store
