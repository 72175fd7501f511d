#pragma once

#include "app/Failure.h"
#include "printing/Report.h"

#include <optional>

class QAbstractItemModel;

namespace velmora {
struct WeddingState;
}

namespace velmora::printing {

// The printed guest list, DataReport1: its bands and controls as designed, the texts that
// never change filled in.
Report guestListDesign();

// The fixed picture at the head of every page.
QImage guestListLogo();

// The twenty fields of the report's rows, in the order they are created.
void appendGuestFields(RecordSet& records);

struct GuestReport {
    Report report;
    std::optional<Failure> lastFailure; // shown after the report
};

// Builds the report of the list exactly as it shows now: `grid` is the list's model (its
// rows, texts and struck-through marks), `listTitle` the list's title; the totals come from
// the state. Makes ReportRs and ReportConn anew. A failed step is passed over; the last
// failure is kept for the caller to show once the report is up.
GuestReport buildGuestReport(WeddingState& state, const QAbstractItemModel& grid, const QString& listTitle);

// Closes the rows of a report that closes; lets go of them and of the connection when they
// are still the ones the state holds.
void releaseReport(WeddingState& state, const std::shared_ptr<RecordSet>& records);

} // namespace velmora::printing
