#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <QTextLayout>

namespace velmora::test {

// Per line of a text laid out as widgets do, the characters drawn leftmost and rightmost ("?ה" for "?האם"),
// joined by blanks; marks and blanks pass. Qt::LayoutDirectionAuto: a window title, directed by its text.
inline QString lineEnds(const QString& shown, Qt::LayoutDirection direction, const QFont& font = QFont())
{
    QStringList ends;
    for (const QString& text : shown.split(u'\n')) {
        QTextLayout layout(text, font);
        QTextOption option;
        option.setTextDirection(direction);
        layout.setTextOption(option);
        layout.beginLayout();
        layout.createLine().setLineWidth(100000);
        layout.endLayout();
        qreal left = 1e9, right = -1e9;
        QString pair(2, u' ');
        for (int i = 0; i < text.size(); ++i) {
            if (text[i].isSpace() || text[i].category() == QChar::Other_Format)
                continue;
            const auto runs = layout.glyphRuns(i, 1);
            if (runs.isEmpty())
                continue;
            const qreal x = runs.front().boundingRect().center().x();
            if (x < left)
                left = x, pair[0] = text[i];
            if (x > right)
                right = x, pair[1] = text[i];
        }
        ends << pair;
    }
    return ends.join(u' ');
}

} // namespace velmora::test
