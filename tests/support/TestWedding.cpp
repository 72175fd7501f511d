#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Wedding.h"
#include "guests/Removal.h"
#include "store/Schema.h"

#include <QFile>
#include <QSettings>
#include <QTest>

namespace velmora::test {

void clearUserStore() { QSettings(QStringLiteral("Velmora"), QStringLiteral("Velmora")).clear(); }

QVariantMap invitation(const QString& family, const QString& first, int people, int confirm, const QVariant& table,
                       const QString& phones, const QString& group)
{
    return {{"FAMILY_NAME", family}, {"FIRST_NAME", first}, {"INV_NUM", people}, {"CONFIRM", confirm},
            {"REMARK", QString()}, {"PHONES", phones}, {"LIST_GROUP", group}, {"TABLE_NO", table}};
}

QString iniValue(const QString& file, const char* section, const char* key)
{
    return ReadIniValue(file, QString::fromLatin1(section), QString::fromLatin1(key), QStringLiteral("<none>"));
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

Failure failureIn(const std::function<void()>& step)
{
    try {
        step();
    } catch (const Failure& failure) {
        return failure;
    }
    return Failure(0, {});
}

int failureOf(const std::function<void()>& step) { return failureIn(step).number(); }

TestWedding::TestWedding()
{
    state.AppPath = AppPathFor(m_dir.path());
    state.CrLf = QStringLiteral("\r\n");
    state.AllGuests = QStringLiteral("כל האורחים");
    state.CurGroup = state.AllGuests;
    state.CoupleName = QStringLiteral("נועה ואיתי");
    state.HisFamily = QStringLiteral("משפחת כהן");
    state.HerFamily = QStringLiteral("משפחת לוי");
}

void TestWedding::createDatabase()
{
    PendingFailure pending;
    store::Database db = store::Database::create(state.databaseFile());
    store::appendTable(db, store::ListTable, store::listFields(), pending);
    store::appendTable(db, store::BudgetTable, store::budgetFields(), pending);
    if (pending)
        QTest::qFail(qPrintable(pending.failure().text()), __FILE__, __LINE__);
}

void TestWedding::addInvitation(const QVariantMap& fields)
{
    store::Recordset rs = open().openRecordset(QStringLiteral("select * from VELMORA_LIST"));
    rs.addNew();
    rs.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("x"));
    rs.setValue(QStringLiteral("FAMILY_NAME"), QStringLiteral("x"));
    rs.setValue(QStringLiteral("CONFIRM"), 0);
    for (auto it = fields.begin(); it != fields.end(); ++it)
        rs.setValue(it.key(), it.value());
    rs.update();
}

void TestWedding::createWedding(quint8 maxTables, quint8 maxChairs)
{
    clearUserStore();
    createDatabase();
    state.MaxTables = maxTables;
    state.MaxChairs = maxChairs;
    SaveOptions(state);
}

store::Recordset TestWedding::row(const QString& family, const QString& first) const
{
    return open().openRecordset(guests::PairSql(family, first));
}

QVariant TestWedding::value(const QString& family, const QString& first, const QString& field) const
{
    return row(family, first).value(field);
}

store::Database TestWedding::open() const { return store::Database::open(state.databaseFile()); }
int TestWedding::count(const QString& sql) const { return open().openRecordset(sql).recordCount(); }

} // namespace velmora::test
