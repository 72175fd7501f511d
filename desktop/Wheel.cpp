#include "desktop/Wheel.h"

namespace velmora::desktop {

int MouseWheel(int topRow, int rows, int zDelta)
{
    if (zDelta < 0 && topRow < rows)
        return topRow + 1;
    if (zDelta > 0 && topRow > 1)
        return topRow - 1;
    return topRow;
}

} // namespace velmora::desktop
