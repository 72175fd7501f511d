// Reads every field of 10,000 invitations through the engine's record set and through a
// bare sqlite3 query, and prints both times and their ratio.
#include "BenchSupport.h"

#include <QTemporaryDir>

#include <cstdio>

using namespace velmora;
using namespace velmora::store;

namespace {

constexpr int Rows = 10000;
constexpr int Rounds = 15;

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

} // namespace

int main()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Velmora.mdb"));
    bench::makeWedding(path, Rows);
    qint64 bareSum = 0, engineSum = 0;
    const double bare = bench::medianMs(Rounds, [&] { bareSum = bench::bareRead(path); });
    const double engine = bench::medianMs(Rounds, [&] { engineSum = engineRead(path); });
    std::printf("engine read of %d invitations, median of %d rounds\n", Rows, Rounds);
    std::printf("  bare sqlite3 read:   %8.2f ms\n", bare);
    std::printf("  engine record set:   %8.2f ms\n", engine);
    std::printf("  ratio engine/bare:   %8.2f  (aim: <= 1.5)\n", engine / bare);
    return bareSum == engineSum ? 0 : 1;
}
