#pragma once

#include <QString>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::seating {

// The table number an answer gives: its leading number, rounded to a whole number with a
// half going to the even one; 0 when it has none or the rounded number is outside 0 to 255.
quint8 TableNumberFromAnswer(const QString& answer);

// The answer to a number outside 1 to MaxTables.
QString TableRangeMessage(int maxTables);

// Asks for the new number of table `source` and gives it that number; false when nothing
// was written (a cancel, a number out of range, or no to the swap question).
bool UpdateTableNum(WeddingState& state, Prompts& prompts, quint8 source);

// Moves the guests of `source` to `destination` in one pass over all rows of the guest
// list, whatever the main list shows; when the destination has guests, the user is asked
// first and a yes swaps the two tables. Each row is stored by itself, a failing one passed
// over without a word. False on a no: then nothing was written.
bool ChangeTableNum(WeddingState& state, Prompts& prompts, quint8 source, quint8 destination);

} // namespace velmora::seating
