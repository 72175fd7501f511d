#pragma once

namespace velmora::desktop {

// The list's top row after one wheel step: one row down for a step towards the user, one
// up for a step away, whatever the size of the step. Rows count from 1 to `rows`.
int MouseWheel(int topRow, int rows, int zDelta);

} // namespace velmora::desktop
