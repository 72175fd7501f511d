#pragma once

#include "printing/Report.h"

#include <QSize>

namespace velmora::printing {

enum class ItemKind { Text, Picture, Line, Rectangle, RoundedRectangle };

// One thing on one page, where it stands on the paper (twips from the paper's top-left
// corner). Text carries its font, colour, alignment and an optional background.
struct PlacedItem {
    ItemKind kind = ItemKind::Text;
    QRect rect;
    QString control; // the control it came from
    QString text;
    FontSpec font;
    TextAlign alignment = TextAlign::Left;
    QColor color;      // text, or line and border
    QColor background; // invalid: none
    BorderStyle borderStyle = BorderStyle::Solid;
    QImage picture;
    SizeMode sizeMode = SizeMode::Clip;
    int record = -1; // the record of a detail band
    bool fromField = false; // text of a box bound to a field, not the program's own
};

struct Page {
    std::vector<PlacedItem> items;
};

struct LaidOutReport {
    QSize paper; // twips
    std::vector<Page> pages;
};

// A4 upright, the paper of a printer nobody set otherwise.
QSize a4Twips();

// The report's pages on paper of this size: the report header once at the top of the first
// page, the page header and page footer on every page, one detail band per record and the
// report footer after the last. A band that doesn't fit the rest of a page goes on to the
// next; one that isn't kept together breaks there between its controls. An empty text box
// prints nothing. Fails when a text box is bound to a field the records don't have.
LaidOutReport layOut(const Report& report, QSize paper = a4Twips());

} // namespace velmora::printing
