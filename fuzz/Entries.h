#pragma once

// One entry for each reader of text from outside the program. libFuzzer drives them in
// fuzz/, and the tests replay every kept input through the same functions.

#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {

// velmora.ini as the bytes stand in the file: every key read, a value written, read back.
void settingsFile(const uint8_t* data, size_t size);
// The number readers: leading number, numeric tests, money amounts, settings values.
void numbers(const uint8_t* data, size_t size);
// The stored places of the map's tables.
void tablePlaces(const uint8_t* data, size_t size);
// Values of the per-user store: window placement, column widths, old settings, ports.
void userStore(const uint8_t* data, size_t size);
// Velmora.mdb as the bytes stand in the file, opened and loaded as the program does.
void databaseFile(const uint8_t* data, size_t size);

using Entry = void (*)(const uint8_t*, size_t);
struct Target {
    const char* name; // the folder of its inputs under fuzz/corpus and its prefix in fuzz/regressions
    Entry entry;
};
inline constexpr Target Targets[] = {{"inifile", settingsFile}, {"numbers", numbers}, {"places", tablePlaces},
                                     {"userstore", userStore}, {"database", databaseFile}};

} // namespace velmora::fuzz
