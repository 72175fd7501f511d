#pragma once

// What the benchmarks share: a sample wedding of any size, the bare SQLite read that
// every figure is compared with, and a median of repeated runs.
#include "app/PendingFailure.h"
#include "store/Engine.h"
#include "store/SampleWedding.h"
#include "store/Schema.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QVariant>

#include <sqlite3.h>

#include <algorithm>
#include <vector>

namespace bench {

// Benchmarks run without a screen and keep their settings in a folder of their own.
inline void runHeadless(const QTemporaryDir& home)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
}

inline void makeWedding(const QString& path, int rows)
{
    using namespace velmora;
    PendingFailure pending;
    store::Database db = store::Database::create(path);
    store::appendTable(db, store::ListTable, store::listFields(), pending);
    store::appendTable(db, store::BudgetTable, store::budgetFields(), pending);
    store::SampleOptions options;
    options.invitations = rows;
    options.maxTables = 100;
    options.maxChairs = rows >= 2000 ? 255 : 15;
    store::fillSampleWedding(db, options);
}

// Every value as a program would use it: numbers as numbers, text as QString.
inline qint64 bareRead(const QString& path, const char* sql = "select * from VELMORA_LIST")
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
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

template <class Work>
double medianMs(int rounds, Work work)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace bench
