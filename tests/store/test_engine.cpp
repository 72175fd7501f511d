#include "TestMain.h"

#include "store/Engine.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>

using namespace velmora;
using namespace velmora::store;

namespace {

FieldDef field(const char* name, FieldType type, int size = 0, bool required = false, bool allowZeroLength = false)
{
    return FieldDef{QString::fromLatin1(name), type, size, required, allowZeroLength};
}

// A small table with one field of every kind and every rule.
Database peopleDb(const QString& path)
{
    Database db = Database::create(path);
    TableDef table = db.createTableDef(QStringLiteral("PEOPLE"));
    table.appendField(field("NAME", FieldType::Text, 20, true, false));
    table.appendField(field("NOTE", FieldType::Text, 5, false, true));
    table.appendField(field("SEATS", FieldType::Byte));
    table.appendField(field("DELTA", FieldType::Integer));
    table.appendField(field("SENT", FieldType::Boolean));
    table.appendField(field("PRICE", FieldType::Currency, 0, true));
    db.appendTableDef(table);
    return db;
}

void addPerson(Database& db, const QString& name, int seats, const QVariant& price = 0)
{
    Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE"));
    rs.addNew();
    rs.setValue(QStringLiteral("NAME"), name);
    rs.setValue(QStringLiteral("SEATS"), seats);
    rs.setValue(QStringLiteral("PRICE"), price);
    rs.update();
    rs.close();
}

int failureOf(const std::function<void()>& step)
{
    try {
        step();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

QString failureText(const std::function<void()>& step)
{
    try {
        step();
    } catch (const Failure& failure) {
        return failure.text();
    }
    return {};
}

} // namespace

class EngineTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }

private slots:
    void openingRefusesWhatIsNoDatabase()
    {
        QCOMPARE(failureOf([&] { Database::open(path("missing.mdb")); }), failures::FileNotFound);

        QFile empty(path("empty.mdb"));
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        QCOMPARE(failureOf([&] { Database::open(empty.fileName()); }), failures::NotADatabase);

        QFile text(path("text.mdb"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write(QByteArray(4096, 'x'));
        text.close();
        const QString message = failureText([&] { Database::open(text.fileName()); });
        QVERIFY2(message.contains(text.fileName()), qPrintable(message));
        QCOMPARE(failureOf([&] { Database::open(text.fileName()); }), failures::NotADatabase);

        Database db = peopleDb(path("people.mdb"));
        QCOMPARE(failureOf([&] { Database::create(path("people.mdb")); }), failures::DatabaseExists);
        QCOMPARE(failureOf([&] { Database::create(path("no/such/folder/x.mdb")); }), failures::InvalidPath);

        db.close();
        QCOMPARE(failureOf([&] { db.close(); }), failures::ObjectInvalid);
        QCOMPARE(failureOf([&] { db.openRecordset(QStringLiteral("select * from PEOPLE")); }), failures::ObjectInvalid);
    }

    void tableDefinitionsReadBackWithTheirRules()
    {
        Database db = peopleDb(path("defs.mdb"));
        db.close();
        db = Database::open(path("defs.mdb"));
        QCOMPARE(db.tableDefCount(), 1);
        const TableDef table = db.tableDef(0);
        QCOMPARE(table.name(), QStringLiteral("PEOPLE"));
        QCOMPARE(table.fieldCount(), 6);
        QCOMPARE(table.field(0), field("NAME", FieldType::Text, 20, true, false));
        QCOMPARE(table.field(1), field("NOTE", FieldType::Text, 5, false, true));
        QCOMPARE(table.field(2), field("SEATS", FieldType::Byte));
        QCOMPARE(table.field(3), field("DELTA", FieldType::Integer));
        QCOMPARE(table.field(4), field("SENT", FieldType::Boolean));
        QCOMPARE(table.field(5), field("PRICE", FieldType::Currency, 0, true));
        QCOMPARE(failureOf([&] { table.field(6); }), failures::ItemNotFound);
        QCOMPARE(failureOf([&] { db.tableDef(QStringLiteral("NOPE")); }), failures::ItemNotFound);
        QCOMPARE(db.tableDef(QStringLiteral("people")).name(), QStringLiteral("PEOPLE"));

        TableDef again = db.createTableDef(QStringLiteral("PEOPLE"));
        again.appendField(field("X", FieldType::Byte));
        QCOMPARE(failureOf([&] { db.appendTableDef(again); }), failures::TableExists);
        TableDef empty = db.createTableDef(QStringLiteral("EMPTY"));
        QCOMPARE(failureOf([&] { db.appendTableDef(empty); }), failures::NoFields);
        TableDef twice = db.createTableDef(QStringLiteral("TWICE"));
        twice.appendField(field("A", FieldType::Byte));
        QCOMPARE(failureOf([&] { twice.appendField(field("a", FieldType::Integer)); }), failures::DuplicateField);
    }

    void appendingAFieldKeepsRowsWithNullInIt()
    {
        Database db = peopleDb(path("append.mdb"));
        addPerson(db, QStringLiteral("דנה"), 2);
        addPerson(db, QStringLiteral("יואב"), 3);
        TableDef table = db.tableDef(QStringLiteral("PEOPLE"));
        table.appendField(field("ADDRESS", FieldType::Text, 50, false, true));
        QCOMPARE(db.tableDef(QStringLiteral("PEOPLE")).fieldCount(), 7);
        QCOMPARE(db.tableDef(QStringLiteral("PEOPLE")).field(6), field("ADDRESS", FieldType::Text, 50, false, true));

        Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        QCOMPARE(rs.recordCount(), 2);
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            QVERIFY(rs.value(QStringLiteral("ADDRESS")).isNull());
            QVERIFY(!rs.value(QStringLiteral("NAME")).toString().isEmpty());
        }
    }

    void recordSetWalksAndCounts()
    {
        Database db = peopleDb(path("walk.mdb"));
        Recordset empty = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        QVERIFY(empty.eof());
        QCOMPARE(empty.recordCount(), 0);
        QCOMPARE(failureOf([&] { empty.moveFirst(); }), failures::NoCurrentRecord);
        QCOMPARE(failureOf([&] { empty.value(QStringLiteral("NAME")); }), failures::NoCurrentRecord);

        for (int i = 1; i <= 5; ++i)
            addPerson(db, QStringLiteral("N%1").arg(i), i);
        Recordset rs = db.openRecordset(
            QStringLiteral("select * from PEOPLE where (SEATS between 2 and 4) and NAME <> 'N3' order by SEATS DESC"));
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(rs.absolutePosition(), 0);
        QCOMPARE(rs.value(QStringLiteral("seats")).toInt(), 4);
        rs.moveNext();
        QCOMPARE(rs.absolutePosition(), 1);
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), QStringLiteral("N2"));
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(failureOf([&] { rs.moveNext(); }), failures::NoCurrentRecord);
        rs.setAbsolutePosition(0);
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), QStringLiteral("N4"));
        QCOMPARE(failureOf([&] { rs.setAbsolutePosition(2); }), failures::NoCurrentRecord);
        QCOMPARE(failureOf([&] { rs.value(QStringLiteral("MISSING")); }), failures::ItemNotFound);

        Recordset count = db.openRecordset(QStringLiteral("select count(*) as N, sum(SEATS) as S from PEOPLE"));
        QVERIFY(!count.updatable());
        QCOMPARE(count.value(QStringLiteral("N")).toInt(), 5);
        QCOMPARE(count.value(QStringLiteral("S")).toInt(), 15);
        count.close();
        QCOMPARE(failureOf([&] { count.moveFirst(); }), failures::ObjectInvalid);
        QCOMPARE(failureOf([&] { db.openRecordset(QStringLiteral("select * from NOWHERE")); }), failures::QueryError);
    }

    void quotedTextAndHebrewComeBackExactly()
    {
        Database db = peopleDb(path("hebrew.mdb"));
        const QString name = QStringLiteral("ד'אבו \"בן\" ״ג׳״");
        addPerson(db, name, 1);
        addPerson(db, QStringLiteral("\u200Fכהן"), 1);
        QString sqlName = name;
        sqlName.replace(u'\'', QStringLiteral("''"));
        Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE where NAME = '%1';").arg(sqlName));
        QCOMPARE(rs.recordCount(), 1);
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), name);
        rs = db.openRecordset(QStringLiteral("select * from PEOPLE where NAME = '\u200Fכהן'"));
        QCOMPARE(rs.recordCount(), 1);
        // Comparison is exact: case and trailing blanks count.
        addPerson(db, QStringLiteral("Cohen"), 1);
        QCOMPARE(db.openRecordset(QStringLiteral("select * from PEOPLE where NAME = 'cohen'")).recordCount(), 0);
        QCOMPARE(db.openRecordset(QStringLiteral("select * from PEOPLE where NAME = 'Cohen'")).recordCount(), 1);
    }

    void updateEnforcesEveryRuleAndStoresNothingOnFailure_data()
    {
        QTest::addColumn<QString>("fieldName");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("failure");

        QTest::newRow("required text Null") << "NAME" << QVariant() << failures::RequiredNull;
        QTest::newRow("required text empty") << "NAME" << QVariant(QString()) << failures::ZeroLength;
        QTest::newRow("text too long") << "NAME" << QVariant(QStringLiteral("123456789012345678901")) << failures::FieldTooSmall;
        QTest::newRow("optional text too long") << "NOTE" << QVariant(QStringLiteral("שישה תו")) << failures::FieldTooSmall;
        QTest::newRow("byte above 255") << "SEATS" << QVariant(256) << failures::Overflow;
        QTest::newRow("byte below 0") << "SEATS" << QVariant(-1) << failures::Overflow;
        QTest::newRow("byte from letters") << "SEATS" << QVariant(QStringLiteral("שלוש")) << failures::ConversionError;
        QTest::newRow("integer overflow") << "DELTA" << QVariant(32768) << failures::Overflow;
        QTest::newRow("required currency Null") << "PRICE" << QVariant() << failures::RequiredNull;
        QTest::newRow("currency from letters") << "PRICE" << QVariant(QStringLiteral("12a")) << failures::ConversionError;
    }

    void updateEnforcesEveryRuleAndStoresNothingOnFailure()
    {
        QFETCH(QString, fieldName);
        QFETCH(QVariant, value);
        QFETCH(int, failure);

        const QString file = path("rules.mdb");
        QFile::remove(file);
        Database db = peopleDb(file);
        addPerson(db, QStringLiteral("first"), 1, 5);

        Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        rs.addNew();
        rs.setValue(QStringLiteral("NAME"), QStringLiteral("new"));
        rs.setValue(QStringLiteral("PRICE"), 1);
        rs.setValue(fieldName, value);
        QString text;
        try {
            rs.update();
        } catch (const Failure& f) {
            QCOMPARE(f.number(), failure);
            text = f.text();
        }
        QVERIFY2(text.contains(fieldName), qPrintable(text)); // the failure names the field
        rs.cancelUpdate();

        rs.moveFirst();
        rs.edit();
        rs.setValue(QStringLiteral("SEATS"), 9);
        rs.setValue(fieldName, value);
        QCOMPARE(failureOf([&] { rs.update(); }), failure);

        Recordset check = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        QCOMPARE(check.recordCount(), 1);
        QCOMPARE(check.value(QStringLiteral("SEATS")).toInt(), 1);
        QCOMPARE(check.value(QStringLiteral("NAME")).toString(), QStringLiteral("first"));
    }

    void valuesConvertToTheFieldsType()
    {
        Database db = peopleDb(path("convert.mdb"));
        Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        rs.addNew();
        rs.setValue(QStringLiteral("NAME"), 42);
        rs.setValue(QStringLiteral("NOTE"), QString());
        rs.setValue(QStringLiteral("SEATS"), QStringLiteral(" 7 "));
        rs.setValue(QStringLiteral("DELTA"), -2.5); // half to even
        rs.setValue(QStringLiteral("SENT"), true);
        rs.setValue(QStringLiteral("PRICE"), QStringLiteral("1234.5678"));
        rs.update();
        QCOMPARE(failureOf([&] { rs.setValue(QStringLiteral("NAME"), QStringLiteral("x")); }), failures::UpdateWithoutEdit);
        QCOMPARE(failureOf([&] { rs.update(); }), failures::UpdateWithoutEdit);

        Recordset back = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        QCOMPARE(back.value(QStringLiteral("NAME")), QVariant(QStringLiteral("42")));
        QCOMPARE(back.value(QStringLiteral("NOTE")), QVariant(QString()));
        QCOMPARE(back.value(QStringLiteral("SEATS")), QVariant(7));
        QCOMPARE(back.value(QStringLiteral("DELTA")), QVariant(-2));
        QCOMPARE(back.value(QStringLiteral("SENT")), QVariant(true));
        QCOMPARE(back.value(QStringLiteral("PRICE")).value<Currency>(), Currency::fromUnits(12345678));

        back.edit();
        back.setValue(QStringLiteral("PRICE"), 0.1 + 0.2);
        back.setValue(QStringLiteral("SENT"), QStringLiteral("False"));
        back.setValue(QStringLiteral("NOTE"), QVariant());
        back.update();
        QCOMPARE(back.value(QStringLiteral("PRICE")).value<Currency>(), Currency::fromUnits(3000));
        Recordset again = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        QCOMPARE(again.value(QStringLiteral("SENT")), QVariant(false));
        QVERIFY(again.value(QStringLiteral("NOTE")).isNull());
        QCOMPARE(again.value(QStringLiteral("PRICE")).value<Currency>().toString(), QStringLiteral("0.3"));
    }

    void currencyIsExact()
    {
        QCOMPARE(Currency::parse(QStringLiteral("0.0001"))->units, 1);
        QCOMPARE(Currency::parse(QStringLiteral("-12.5"))->units, -125000);
        QCOMPARE(Currency::parse(QStringLiteral("1.23456"))->units, 12346);
        QCOMPARE(Currency::parse(QStringLiteral("922337203685477.5807"))->units, std::numeric_limits<qint64>::max());
        QVERIFY(!Currency::parse(QStringLiteral("1,000")));
        QVERIFY(!Currency::parse(QStringLiteral(".")));
        QVERIFY(!Currency::parse(QStringLiteral("9223372036854775807")));
        QCOMPARE(Currency::fromUnits(-5).toString(), QStringLiteral("-0.0005"));
        QCOMPARE(Currency::fromWhole(2500).toString(), QStringLiteral("2500"));
        Currency sum;
        for (int i = 0; i < 10; ++i)
            sum = sum + *Currency::parse(QStringLiteral("0.1"));
        QCOMPARE(sum, Currency::fromWhole(1));
    }

    void deleteAndAddNewKeepTheSetInStep()
    {
        Database db = peopleDb(path("delete.mdb"));
        for (int i = 1; i <= 3; ++i)
            addPerson(db, QStringLiteral("N%1").arg(i), i);
        Recordset rs = db.openRecordset(QStringLiteral("select * from PEOPLE"));
        rs.moveNext(); // N2
        rs.deleteCurrent();
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(failureOf([&] { rs.value(QStringLiteral("NAME")); }), failures::RecordDeleted);
        rs.moveNext();
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), QStringLiteral("N3"));
        QCOMPARE(rs.absolutePosition(), 1);

        rs.addNew();
        rs.setValue(QStringLiteral("NAME"), QStringLiteral("N4"));
        rs.setValue(QStringLiteral("PRICE"), 0);
        rs.update();
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), QStringLiteral("N3")); // stays where it was
        QCOMPARE(rs.recordCount(), 3);
        rs.moveNext();
        QCOMPARE(rs.value(QStringLiteral("NAME")).toString(), QStringLiteral("N4"));

        rs.deleteCurrent(); // the last one
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(db.openRecordset(QStringLiteral("select * from PEOPLE")).recordCount(), 2);
    }

    void aFileLockedByAnotherProcessFails()
    {
        const QString file = path("locked.mdb");
        {
            Database db = peopleDb(file);
            addPerson(db, QStringLiteral("a"), 1);
        }
        QProcess holder;
        holder.start(QStringLiteral("sqlite3"), {file});
        QVERIFY(holder.waitForStarted());
        holder.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
        QVERIFY(holder.waitForReadyRead(5000));
        QCOMPARE(failureOf([&] {
                     Database db = Database::open(file);
                     db.openRecordset(QStringLiteral("select * from PEOPLE"));
                 }),
                 failures::Locked);
        holder.write("ROLLBACK;\n.quit\n");
        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished(5000));
        QCOMPARE(Database::open(file).openRecordset(QStringLiteral("select * from PEOPLE")).recordCount(), 1);
    }
};

VELMORA_TEST_MAIN(EngineTest)
#include "test_engine.moc"
