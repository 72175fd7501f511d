#include "printing/ReportConnection.h"

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

} // namespace velmora::printing
