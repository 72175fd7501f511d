#pragma once

#include "app/PendingFailure.h"
#include "printing/PrintDesign.h"
#include "printing/Report.h"

class QAbstractItemModel;

namespace velmora {
struct WeddingState;
}

namespace velmora::printing {

// Envelope labels (DataReport2) and seating notes (DataReport3): sheets of two across, one
// record a line of the sheet. Their bands and controls as designed, rows not yet bound.
Report envelopeLabelsDesign();
Report sittingNotesDesign();

struct SheetReport {
    Report report;
    // Failed steps are passed over; the last one is shown once the report is up.
    PendingFailure pending{PendingFailure::Keep::Last};
};

// The labels of every row the list shows now (`grid` is the list's model, in its order and
// filter), with the frame, address and colour the state holds for labels. The first label of
// a line is the right-hand one. Makes ReportRs and ReportConn anew; they stay after the
// report closes, until the next report replaces them.
SheetReport buildEnvelopeLabels(WeddingState& state, const QAbstractItemModel& grid);

// One seating note for every row the list shows now, with the frame, colour and design the
// state holds for notes; the design picture comes from the wedding's design folder. The
// first card of a line is the left-hand one. ReportRs and ReportConn as for the labels.
SheetReport buildSittingNotes(WeddingState& state, const QAbstractItemModel& grid);

} // namespace velmora::printing
