#pragma once

#include "store/Engine.h"

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

} // namespace velmora::printing
