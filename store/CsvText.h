#pragma once

// Comma-separated text as spreadsheets write and read it: RFC 4180 quoting, UTF-8 with a
// byte-order mark on the way out; on the way in UTF-8 (with or without the mark),
// UTF-16 with its mark or Windows-1255, separated by commas, semicolons or tabs.

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmora {
class Prompts;
}

namespace velmora::store {

// Files larger than this aren't guest lists: they are refused before being read.
inline constexpr qint64 CsvMaxBytes = 16 * 1024 * 1024;

enum class CsvEncoding { Utf8, Utf8Bom, Utf16, Windows1255 };

struct CsvTable {
    CsvEncoding encoding = CsvEncoding::Utf8;
    QChar separator = u',';
    std::vector<QStringList> rows; // empty lines left out
    std::vector<int> lines;        // the line of the file each row begins on, from 1
};

// One row of output: every field quoted when it holds the separator, a quote, a line break
// or blanks at its ends; lines end in CR LF.
void AppendCsvRow(QByteArray& out, const QStringList& cells, QChar separator = u',');
// The byte-order mark a spreadsheet needs to read the file as UTF-8.
QByteArray CsvBom();

// The text of the bytes, by the mark or by whether they are valid UTF-8.
QString DecodeCsv(const QByteArray& bytes, CsvEncoding& encoding);
// The separator of the first line that has one outside quotes; a comma when none has.
QChar DetectSeparator(const QString& text);

// Reads text into rows, or gives the message that says why it can't.
struct CsvParse {
    std::optional<CsvTable> table;
    QString error;
};
CsvParse ParseCsv(const QByteArray& bytes);
// Reads the file whole, refusing an empty, a binary or an oversized one with a message.
CsvParse ReadCsvFile(const QString& path);

// Writes the bytes in place of the file, or keeps the file as it was and gives the reason.
std::optional<QString> WriteWholeFile(const QString& path, const QByteArray& bytes);

// Asks where to save, proposing `fileName` in `folder`, and writes the bytes there; a
// failed write is told and leaves what was there before. True when written.
bool SaveCsvFile(Prompts& prompts, const QString& fileName, const QString& folder, const QByteArray& bytes);

} // namespace velmora::store
