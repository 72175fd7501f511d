#include "FullDisk.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "store/Engine.h"

#include <QFile>
#include <QFileInfo>

using namespace velmora;
using namespace velmora::store;
using test::failureIn;
using test::failureOf;

namespace {

// A small table with one field of every kind and every rule.
const std::vector<FieldDef> PeopleFields = {
    {"NAME", FieldType::Text, 20, true, false}, {"NOTE", FieldType::Text, 5, false, true},
    {"SEATS", FieldType::Byte},                  {"DELTA", FieldType::Integer},
    {"SENT", FieldType::Boolean},                {"PRICE", FieldType::Currency, 0, true},
};

Database peopleDb(const QString& path)
{
    Database db = Database::create(path);
    TableDef table = db.createTableDef(QStringLiteral("PEOPLE"));
    for (const FieldDef& field : PeopleFields)
        table.appendField(field);
    db.appendTableDef(table);
    return db;
}

void addPerson(Database& db, const QString& name, int seats, const QVariant& price = 0)
{
    Recordset rs = db.openRecordset("select * from PEOPLE");
    rs.addNew();
    rs.setValue("NAME", name);
    rs.setValue("SEATS", seats);
    rs.setValue("PRICE", price);
    rs.update();
}

QString nameAt(const Recordset& rs) { return rs.value("NAME").toString(); }

} // namespace

class EngineTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }

private slots:
    // What is no database is refused; a closed one is gone; a table reads back with its rules.
    void filesAndTableDefinitions()
    {
        QCOMPARE(failureOf([&] { Database::open(path("missing.mdb")); }), failures::FileNotFound);

        for (const QByteArray& bytes : {QByteArray(), QByteArray(4096, 'x')}) {
            test::writeFile(path("junk.mdb"), bytes);
            const Failure refused = failureIn([&] { Database::open(path("junk.mdb")); });
            QVERIFY(refused.number() == failures::NotADatabase && refused.text().contains(path("junk.mdb")));
        }

        Database db = peopleDb(path("people.mdb"));
        QCOMPARE(failureOf([&] { Database::create(path("people.mdb")); }), failures::DatabaseExists);
        QCOMPARE(failureOf([&] { Database::create(path("no/such/folder/x.mdb")); }), failures::InvalidPath);

        db.close();
        QCOMPARE(failureOf([&] { db.close(); }), failures::ObjectInvalid);
        QCOMPARE(failureOf([&] { db.openRecordset("select * from PEOPLE"); }), failures::ObjectInvalid);

        db = Database::open(path("people.mdb"));
        QCOMPARE(db.tableDefCount(), 1);
        const TableDef table = db.tableDef(0);
        QCOMPARE(table.fields(), PeopleFields);
        QCOMPARE(failureOf([&] { table.field(6); }), failures::ItemNotFound);
        QCOMPARE(failureOf([&] { db.tableDef("NOPE"); }), failures::ItemNotFound);
        QCOMPARE(db.tableDef("people").name(), QStringLiteral("PEOPLE"));

        TableDef again = db.createTableDef("PEOPLE");
        again.appendField(PeopleFields[2]);
        QCOMPARE(failureOf([&] { db.appendTableDef(again); }), failures::TableExists);
        TableDef empty = db.createTableDef("EMPTY");
        QCOMPARE(failureOf([&] { db.appendTableDef(empty); }), failures::NoFields);
        empty.appendField(PeopleFields[2]);
        QCOMPARE(failureOf([&] { empty.appendField({"seats", FieldType::Integer}); }), failures::DuplicateField);
    }

    // Walks, counts, deletes and additions keep the set and its position in step.
    void recordSetWalksAndCounts()
    {
        Database db = peopleDb(path("walk.mdb"));
        Recordset empty = db.openRecordset("select * from PEOPLE");
        QVERIFY(empty.eof() && empty.recordCount() == 0);
        QCOMPARE(failureOf([&] { empty.moveFirst(); }), failures::NoCurrentRecord);
        QCOMPARE(failureOf([&] { nameAt(empty); }), failures::NoCurrentRecord);

        for (int i = 1; i <= 5; ++i)
            addPerson(db, QStringLiteral("N%1").arg(i), i);
        Recordset rs = db.openRecordset("select * from PEOPLE where SEATS between 2 and 4 and NAME <> 'N3' order by SEATS DESC");
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(rs.value("seats").toInt(), 4); // any case
        rs.moveNext();
        QVERIFY(rs.absolutePosition() == 1 && nameAt(rs) == u"N2");
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(failureOf([&] { rs.moveNext(); }), failures::NoCurrentRecord);
        rs.setAbsolutePosition(0);
        QCOMPARE(nameAt(rs), QStringLiteral("N4"));
        QCOMPARE(failureOf([&] { rs.setAbsolutePosition(2); }), failures::NoCurrentRecord);
        QCOMPARE(failureOf([&] { rs.value("MISSING"); }), failures::ItemNotFound);

        Recordset count = db.openRecordset("select count(*) as N, sum(SEATS) as S from PEOPLE");
        QVERIFY(!count.updatable() && count.value("S").toInt() == 15);
        count.close();
        QCOMPARE(failureOf([&] { count.moveFirst(); }), failures::ObjectInvalid);
        QCOMPARE(failureOf([&] { db.openRecordset("select * from NOWHERE"); }), failures::QueryError);

        rs = db.openRecordset("select * from PEOPLE where SEATS <= 3");
        rs.moveNext(); // N2
        rs.deleteCurrent();
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(failureOf([&] { nameAt(rs); }), failures::RecordDeleted);
        rs.moveNext();
        QVERIFY(nameAt(rs) == u"N3" && rs.absolutePosition() == 1);
        rs.addNew();
        rs.setValue("NAME", "N6");
        rs.setValue("PRICE", 0);
        rs.update();
        QCOMPARE(nameAt(rs), QStringLiteral("N3")); // stays where it was
        rs.moveNext();
        QCOMPARE(nameAt(rs), QStringLiteral("N6"));
        rs.deleteCurrent(); // the last one
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(db.openRecordset("select * from PEOPLE").recordCount(), 4);
    }

    void aValueIsConvertedToItsFieldOrRefusedWithNothingStored_data()
    {
        QTest::addColumn<QString>("fieldName");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("failure");
        const QVariant none;
        auto row = [](const char* name, const char* field, const QVariant& value, const QVariant& stored, int failure) {
            QTest::newRow(name) << QString::fromLatin1(field) << value << stored << failure;
        };
        const auto units = [](qint64 units) { return QVariant::fromValue(Currency::fromUnits(units)); };
        row("empty text allowed", "NOTE", QString(), QString(), 0);
        row("Null where allowed", "NOTE", none, none, 0);
        row("text into a byte", "SEATS", QStringLiteral(" 7 "), 7, 0);
        row("half to even", "DELTA", -2.5, -2, 0);
        row("text into a flag", "SENT", QStringLiteral("False"), false, 0);
        row("decimal text into money", "PRICE", QStringLiteral("1234.5678"), units(12345678), 0);
        row("a double into money", "PRICE", 0.1 + 0.2, units(3000), 0);
        row("required text Null", "NAME", none, none, failures::RequiredNull);
        row("required text empty", "NAME", QString(), none, failures::ZeroLength);
        row("text too long", "NAME", QStringLiteral("123456789012345678901"), none, failures::FieldTooSmall);
        row("optional text too long", "NOTE", QStringLiteral("שישה תו"), none, failures::FieldTooSmall);
        row("byte above 255", "SEATS", 256, none, failures::Overflow);
        row("byte below 0", "SEATS", -1, none, failures::Overflow);
        row("byte from letters", "SEATS", QStringLiteral("שלוש"), none, failures::ConversionError);
        row("integer overflow", "DELTA", 32768, none, failures::Overflow);
        row("currency from letters", "PRICE", QStringLiteral("12a"), none, failures::ConversionError);
    }

    void aValueIsConvertedToItsFieldOrRefusedWithNothingStored()
    {
        QFETCH(QString, fieldName);
        QFETCH(QVariant, value);
        QFETCH(QVariant, stored);
        QFETCH(int, failure);
        QFile::remove(path("values.mdb"));
        Database db = peopleDb(path("values.mdb"));
        addPerson(db, "first", 1, 5);
        Recordset rs = db.openRecordset("select * from PEOPLE");
        rs.addNew();
        rs.setValue("NAME", "new");
        rs.setValue("PRICE", 1);
        rs.setValue(fieldName, value);
        const Failure refused = failureIn([&] { rs.update(); });
        QCOMPARE(refused.number(), failure);
        if (!failure) {
            QCOMPARE(db.openRecordset("select * from PEOPLE where NAME <> 'first'").value(fieldName), stored);
            QCOMPARE(failureOf([&] { rs.setValue(fieldName, value); }), failures::UpdateWithoutEdit);
            return;
        }
        QVERIFY2(refused.text().contains(fieldName), qPrintable(refused.text())); // it names the field
        rs.cancelUpdate();
        rs.moveFirst();
        rs.edit();
        rs.setValue("SEATS", 9);
        rs.setValue(fieldName, value);
        QCOMPARE(failureOf([&] { rs.update(); }), failure); // an edit stores nothing either
        Recordset check = db.openRecordset("select * from PEOPLE");
        QVERIFY(check.recordCount() == 1 && check.value("SEATS").toInt() == 1);
    }

    void aRowWrittenOnAFullDiskFailsAndTheFileStaysWhole()
    {
        const QString file = path("full.mdb");
        Database db = peopleDb(file);
        addPerson(db, "before", 1);
        int stored = 1;
        Failure full(0, {});
        {
            test::FullDisk disk(QFileInfo(file).size());
            for (; stored < 500 && full.number() == 0; ++stored)
                full = failureIn([&] { addPerson(db, QString(20, QChar(u'א')), 2); });
        }
        QCOMPARE(full.number(), failures::DiskFull);
        QCOMPARE(full.text(), QStringLiteral("אין די מקום פנוי בדיסק."));
        db.close();
        db = Database::open(file);
        QCOMPARE(db.openRecordset("pragma integrity_check").value(0).toString(), QStringLiteral("ok"));
        Recordset kept = db.openRecordset("select * from PEOPLE");
        QVERIFY(kept.recordCount() == stored - 1 && nameAt(kept) == u"before");
    }
};

VELMORA_TEST_MAIN(EngineTest)
#include "test_engine.moc"
