#pragma once

#include <QString>

namespace velmora::test {

// A printed PDF read back with poppler's tools: its text in reading order, without the
// marks that wrap right-to-left runs, and its number of pages (-1 when unreadable).
QString pdfText(const QString& path);
int pdfPages(const QString& path);

} // namespace velmora::test
