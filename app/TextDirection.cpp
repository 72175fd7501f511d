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
            shown += line;
    }
    return shown;
}

} // namespace velmora
