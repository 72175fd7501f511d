// Reads every field of 10,000 invitations through the engine's record set and through a
// bare sqlite3 query, and prints both times and their ratio.
#include "app/PendingFailure.h"
#include "store/Engine.h"
#include "store/SampleWedding.h"
#include "store/Schema.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QVariant>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace velmora;
using namespace velmora::store;

namespace {

constexpr int Rows = 10000;
constexpr int Rounds = 15;

// Every value as a program would use it: numbers as numbers, text as QString.
qint64 bareRead(const QString& path)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, "select * from VELMORA_LIST", -1, &statement, nullptr);
    qint64 checksum = 0;
    const int columns = sqlite3_column_count(statement);
    std::vector<QVariant> row(static_cast<size_t>(columns));
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int c = 0; c < columns; ++c) {
            switch (sqlite3_column_type(statement, c)) {
            case SQLITE_INTEGER:
                row[size_t(c)] = sqlite3_column_int(statement, c);
                break;
            case SQLITE_TEXT:
                row[size_t(c)] = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)),
                                                   sqlite3_column_bytes(statement, c));
                break;
            default:
                row[size_t(c)] = QVariant();
            }
        }
        checksum += row[2].toInt();
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return checksum;
}

qint64 engineRead(const QString& path)
{
    Database db = Database::open(path);
    Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
    qint64 checksum = 0;
    const auto& fields = listFields();
    for (; !rs.eof(); rs.moveNext()) {
        for (size_t f = 0; f < fields.size(); ++f) {
            const QVariant value = rs.value(fields[f].name);
            if (f == 2) // INV_NUM
                checksum += value.toInt();
        }
    }
    rs.close();
    db.close();
    return checksum;
}

template <class Read>
double medianMs(Read read, const QString& path, qint64& checksum)
{
    std::vector<double> times;
    for (int i = 0; i < Rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        checksum = read(path);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Velmora.mdb"));
    {
        PendingFailure pending;
        Database db = Database::create(path);
        appendTable(db, ListTable, listFields(), pending);
        SampleOptions options;
        options.invitations = Rows;
        options.maxTables = 100;
        options.maxChairs = 255;
        fillSampleWedding(db, options);
    }
    qint64 bareSum = 0, engineSum = 0;
    const double bare = medianMs(bareRead, path, bareSum);
    const double engine = medianMs(engineRead, path, engineSum);
    std::printf("rows: %d (median of %d rounds)\n", Rows, Rounds);
    std::printf("bare sqlite3 read:   %8.2f ms\n", bare);
    std::printf("engine record set:   %8.2f ms\n", engine);
    std::printf("ratio engine/bare:   %8.2f  (aim: <= 1.5)\n", engine / bare);
    return bareSum == engineSum ? 0 : 1;
}
