#pragma once

#include <QString>

namespace velmora {

// The number a text begins with: leading blanks skipped, read up to the first character
// that can't continue a number; 0 when there is none. With `exponent`, "1.5e3" reads
// 1500, as money amounts may carry one; a number too large for a double reads as infinity.
double LeadingNumber(const QString& text, bool exponent = false);

// True when the whole text, blanks around it aside, reads as one number.
bool IsNumeric(const QString& text);

// The text without the blanks at its ends; tabs and line breaks are kept.
QString Trim(const QString& text);

} // namespace velmora
