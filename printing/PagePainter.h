#pragma once

#include "printing/ReportLayout.h"

class QPainter;

namespace velmora::printing {

// Paints one laid-out page. The painter's origin is the paper's top-left corner and its
// device has `dpi` dots to the inch. Preview, paper and PDF all go through here.
//
// Text is shaped here and painted as glyph runs: the print preview replays pages through a
// recording that reorders lines mixing Hebrew with digits when they are painted as text.
void paintPage(QPainter& painter, const Page& page, double dpi);

// The direction a line of text reads in: right to left when it begins with a Hebrew letter.
// Lines that begin with their closing mark or with a number were written for a left-to-right
// paragraph and read right only in one.
Qt::LayoutDirection textDirection(const QString& text);

} // namespace velmora::printing
