#pragma once

#include "printing/RecordSet.h"
#include "store/Engine.h"

#include <functional>
#include <memory>

namespace velmora {
class PendingFailure;
struct WeddingState;
}

namespace velmora::printing {

// The reports' own connection to the wedding's database. No report row passes through it,
// but a report is built only beside a database that opens.
class ReportConnection {
public:
    // "Driver=...;DBQ=path": the file named by DBQ.
    void open(const QString& connectionString);
    void close();
    bool isOpen() const { return m_db.isOpen(); }

private:
    store::Database m_db;
};

// The start of every report: ReportConn and ReportRs made anew in the state, the connection
// opened on the wedding's database, the rows given their fields by `fields` and opened
// empty. A failed step goes to `pending` and is passed over.
std::shared_ptr<RecordSet> newReportRows(WeddingState& state, PendingFailure& pending,
                                         const std::function<void(RecordSet&)>& fields);

} // namespace velmora::printing
