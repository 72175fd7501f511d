#pragma once

#include <QString>

namespace velmora::test {

// A printed PDF read by poppler: its text without right-to-left marks; its pages (-1: unreadable).
QString pdfText(const QString& path);
int pdfPages(const QString& path);

} // namespace velmora::test
