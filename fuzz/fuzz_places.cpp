#include "Entries.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    velmora::fuzz::tablePlaces(data, size);
    return 0;
}
