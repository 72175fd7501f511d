#include "app/TextDirection.h"

#include <QList>

#include <utility>

namespace velmora {

namespace {

constexpr QChar LeftToRightEmbedding(0x202A);
constexpr QChar PopDirectionalFormatting(0x202C);

bool isClosingMark(QChar c)
{
    return QStringView(u".,:;!?\u2026").contains(c);
}

bool isQuote(QChar c)
{
    return QStringView(u"'\"\u05F3\u05F4").contains(c);
}

// A path inside a right-to-left line ("…את /home/דנה/חתונה") would show with its slashes
// moved about; each one is embedded left to right. A path begins with a slash after a blank,
// a quote or the line's start, and runs to its closing quote when quoted, else to the next
// blank, a closing mark at its end left outside.
QString withPathsEmbedded(QStringView line)
{
    QString shown;
    qsizetype from = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != u'/' || (i > 0 && !line[i - 1].isSpace() && !isQuote(line[i - 1])))
            continue;
        qsizetype end = i;
        if (i > 0 && isQuote(line[i - 1])) {
            end = line.indexOf(line[i - 1], i);
            if (end < 0)
                end = line.size();
        } else {
            while (end < line.size() && !line[end].isSpace())
                ++end;
            while (end > i + 1 && isClosingMark(line[end - 1]))
                --end;
        }
        shown += line.mid(from, i - from).toString() + LeftToRightEmbedding + line.mid(i, end - i).toString()
                 + PopDirectionalFormatting;
        from = end;
        i = end - 1;
    }
    return shown + line.mid(from).toString();
}

} // namespace

Qt::LayoutDirection paragraphDirection(QStringView line)
{
    for (const QChar c : line) {
        if (isClosingMark(c))
            return Qt::LeftToRight;
        switch (c.direction()) {
        case QChar::DirL:
        case QChar::DirEN:
        case QChar::DirAN:
            return Qt::LeftToRight;
        case QChar::DirR:
        case QChar::DirAL:
            return Qt::RightToLeft;
        default:
            break; // blanks, quotes, brackets, signs: the next character decides
        }
    }
    return Qt::RightToLeft;
}

QString displayedText(const QString& text)
{
    QString lines = text;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(u'\r', u'\n');
    QString shown;
    bool first = true;
    for (const QStringView line : QStringView(lines).split(u'\n')) {
        if (!std::exchange(first, false))
            shown += u'\n';
        if (paragraphDirection(line) == Qt::LeftToRight)
            shown += LeftToRightEmbedding + line.toString() + PopDirectionalFormatting;
        else
            shown += withPathsEmbedded(line);
    }
    return shown;
}

} // namespace velmora
