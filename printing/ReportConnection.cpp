#include "printing/ReportConnection.h"

#include "app/PendingFailure.h"
#include "app/WeddingState.h"

namespace velmora::printing {

void ReportConnection::open(const QString& connectionString)
{
    QString path;
    for (const QString& part : connectionString.split(u';')) {
        if (part.startsWith(QLatin1String("DBQ="), Qt::CaseInsensitive))
            path = part.mid(4);
    }
    m_db = store::Database::open(path);
}

void ReportConnection::close()
{
    if (m_db.isOpen())
        m_db.close();
    m_db = {};
}

std::shared_ptr<RecordSet> newReportRows(WeddingState& state, PendingFailure& pending,
                                         const std::function<void(RecordSet&)>& fields)
{
    state.ReportConn = std::make_shared<ReportConnection>();
    state.ReportRs = std::make_shared<RecordSet>();
    const auto records = state.ReportRs;
    pending.attempt([&] {
        state.ReportConn->open(QStringLiteral("Driver=Microsoft Access Driver (*.mdb);DBQ=") + state.AppPath
                               + QStringLiteral("Velmora.mdb"));
    });
    fields(*records);
    pending.attempt([&] { records->open(); });
    return records;
}

} // namespace velmora::printing
