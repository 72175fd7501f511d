#pragma once

#include <QKeyEvent>

#include <algorithm>

namespace velmora::ui {

// Whether a key press types a character into a field: all that a field's key filter judges.
// A real key press carries text for Tab ("\t"), Delete ("\x7f"), Escape and Ctrl combinations
// too, though they type nothing and so pass every filter; Backspace ("\b") counts as typed.
inline bool TypesCharacter(const QKeyEvent* key)
{
    const QString text = key->text();
    return text == u"\b" || (!text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); }));
}

} // namespace velmora::ui
