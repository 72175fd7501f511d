#pragma once

#include <QString>

namespace velmora {

// Many of the program's texts were written for a left-to-right paragraph: they begin with
// their closing mark ("?האם…", ":קבוצת…", "...הגדרות") or with a number, and are kept so,
// character for character. Such a line reads right only left to right; a line that begins
// with a Hebrew letter ("רשימת המוזמנים ריקה.") only right to left. So each line's
// direction follows its first character (blanks and other neutral signs passed over).
Qt::LayoutDirection paragraphDirection(QStringView line);

// A text as it is shown: CrLf, or a lone CR, ends a line; each line that reads left to right
// is embedded so (LRE … PDF), which a right-to-left window, a menu and a window manager's
// title all honour, and so is a file's path inside a right-to-left line. The visible
// characters stay as given; the marks are invisible.
QString displayedText(const QString& text);

} // namespace velmora
