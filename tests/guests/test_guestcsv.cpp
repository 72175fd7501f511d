#include "FullDisk.h"
#include "Modal.h"
#include "RunningProgram.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "guests/GuestCsv.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "app/ui/MainWindow.h"
#include "guests/ui/ImportWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

using namespace velmora;
using guests::ImportField;
using guests::ImportRow;
using Kind = guests::ImportRow::Kind;

namespace {

// The dialog's captions as the header: each names its own field.
QStringList header()
{
    QStringList cells;
    for (int f = 0; f < guests::ImportFieldCount; ++f)
        cells << guests::ImportFieldCaption(ImportField(f));
    return cells;
}

// A good row, "כהן רון" of two people, with some fields changed.
QStringList row(std::initializer_list<std::pair<ImportField, QString>> changes)
{
    QStringList cells(guests::ImportFieldCount);
    cells[0] = QStringLiteral("כהן");
    cells[1] = QStringLiteral("רון");
    cells[int(ImportField::People)] = QStringLiteral("2");
    for (const auto& [field, text] : changes)
        cells[int(field)] = text;
    return cells;
}

store::CsvTable file(std::vector<QStringList> rows, const QStringList& head = header())
{
    store::CsvTable table;
    rows.insert(rows.begin(), head);
    table.rows = std::move(rows);
    return table;
}

// A wedding of 20 tables of 10 chairs where "לוי דנה", eight people, sit at table 5.
void prepare(test::TestWedding& wedding)
{
    wedding.createWedding(20, 10);
    QVariantMap levy = test::invitation(QStringLiteral("לוי"), QStringLiteral("דנה"), 8, 0, 5, QStringLiteral("050"),
                                        QStringLiteral("2"));
    levy.insert(QStringLiteral("REMARK"), QStringLiteral("ותיקה"));
    wedding.addInvitation(levy);
}

QByteArray bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Q_DECLARE_METATYPE(QList<QStringList>)

class GuestCsvTest : public QObject {
    Q_OBJECT

private slots:
    void guessesColumns()
    {
        guests::ColumnMap expected;
        for (int f = 0; f < guests::ImportFieldCount; ++f)
            expected[size_t(f)] = f;
        QCOMPARE(guests::GuessColumns(header()), expected);
        const guests::ColumnMap english = guests::GuessColumns(
            {QStringLiteral("E-mail"), QStringLiteral("Phone"), QStringLiteral("First Name"), QStringLiteral("LAST_NAME"),
             QStringLiteral("Table #"), QStringLiteral("טלפון")});
        QCOMPARE(english[0], 3);
        QCOMPARE(english[1], 2);
        QCOMPARE(english[2], 5); // the list's own word before an English one
        QCOMPARE(english[size_t(ImportField::Table)], 4);
        QCOMPARE(english[size_t(ImportField::Address)], -1);
    }

    // Every row is judged by the invitation dialog's checks, in their order, and by what the
    // store itself refuses.
    void verdicts_data()
    {
        QTest::addColumn<QList<QStringList>>("rows");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("reason");
        using F = ImportField;
        const QString a21(21, u'א');
        auto one = [](const QStringList& cells) { return QList<QStringList>{cells}; };
        QTest::newRow("accepted") << one(row({{F::Gift, QStringLiteral("₪100")}, {F::Table, QStringLiteral("5")}}))
                                  << int(Kind::Add) << QString();
        QTest::newRow("no family name, no people, no table: the first check speaks")
            << one(row({{F::FamilyName, QStringLiteral("  ")}, {F::People, QStringLiteral("0")}, {F::Table, QStringLiteral("99")}}))
            << int(Kind::Refused) << QStringLiteral("השדות שם משפחה\\פרטי אינם יכולים להיות ריקים.");
        QTest::newRow("long name") << one(row({{F::FirstName, a21}})) << int(Kind::Refused)
                                   << QStringLiteral("השדות שם משפחה\\פרטי מוגבלים לגודל של 20 תווים.");
        QTest::newRow("no people") << one(row({{F::People, QString()}})) << int(Kind::Refused)
                                   << QStringLiteral("השדה מס' מוזמנים חייב להכיל מספר הגדול מאפס.");
        QTest::newRow("remark") << one(row({{F::Remark, QString(41, u'ה')}})) << int(Kind::Refused)
                                << QStringLiteral("השדה הערות מוגבל לגודל של 40 תווים.");
        QTest::newRow("phones") << one(row({{F::Phones, QString(31, u'5')}})) << int(Kind::Refused)
                                << QStringLiteral("השדה טלפונים מוגבל לגודל של 30 תווים.");
        QTest::newRow("address") << one(row({{F::Address, QString(51, u'כ')}})) << int(Kind::Refused)
                                 << QStringLiteral("השדה כתובת מוגבל לגודל של 50 תווים.");
        QTest::newRow("gift length") << one(row({{F::Gift, a21}})) << int(Kind::Refused)
                                     << QStringLiteral("השדה מתנה מוגבל לגודל של 20 תווים.");
        QTest::newRow("cash gift in words") << one(row({{F::Gift, QStringLiteral("מאה")}, {F::GiftKind, QStringLiteral("מזומן")}}))
                                            << int(Kind::Refused) << QStringLiteral("השדה מתנה חייב להיות מספרי.");
        QTest::newRow("table beyond the last") << one(row({{F::Table, QStringLiteral("21")}})) << int(Kind::Refused)
                                               << QStringLiteral("מספר השולחן אינו קיים במערכת.");
        QTest::newRow("seated but not coming") << one(row({{F::Table, QStringLiteral("3")}, {F::Answer, QStringLiteral("לא")}}))
                                               << int(Kind::Refused) << QStringLiteral("הושבת אורח שלא מגיע לשולחן אינה אפשרית");
        QTest::newRow("table full") << one(row({{F::Table, QStringLiteral("5")}, {F::People, QStringLiteral("3")}}))
                                    << int(Kind::Refused) << QStringLiteral("לא ניתן להושיב יותר מ- 10 איש בשולחן");
        QTest::newRow("the file's own rows fill the table")
            << QList<QStringList>{row({{F::Table, QStringLiteral("7")}, {F::People, QStringLiteral("6")}}),
                                  row({{F::FirstName, QStringLiteral("גל")}, {F::Table, QStringLiteral("7")}, {F::People, QStringLiteral("6")}})}
            << int(Kind::Refused) << QStringLiteral("לא ניתן להושיב יותר מ- 10 איש בשולחן");
        QTest::newRow("more people than a byte") << one(row({{F::People, QStringLiteral("256")}})) << int(Kind::Refused)
                                                 << QStringLiteral("השדה מס' מוזמנים מוגבל ל-255 איש.");
        QTest::newRow("unknown group") << one(row({{F::Group, QStringLiteral("דודים")}})) << int(Kind::Refused)
                                       << QStringLiteral("הקבוצה של ההזמנה אינה קיימת.");
        QTest::newRow("unknown answer") << one(row({{F::Answer, QStringLiteral("אולי")}})) << int(Kind::Refused)
                                        << QStringLiteral("השדה אישור אינו מוכר: אולי");
        QTest::newRow("unknown gift kind") << one(row({{F::GiftKind, QStringLiteral("זהב")}})) << int(Kind::Refused)
                                           << QStringLiteral("השדה סוג מתנה אינו מוכר: זהב");
        QTest::newRow("ragged row") << one(row({}) << QString() << QStringLiteral("x")) << int(Kind::Refused)
                                    << QStringLiteral("בשורה 14 תאים, יותר מ-12 העמודות של הקובץ.");
        QTest::newRow("header again") << one(header()) << int(Kind::Refused) << QStringLiteral("שורת כותרות חוזרת.");
        QTest::newRow("duplicate") << one(row({{F::FamilyName, QStringLiteral(" לוי")}, {F::FirstName, QStringLiteral("דנה")}}))
                                   << int(Kind::Skip) << QStringLiteral("קיימת כבר הזמנה זהה ברשימה.");
    }
    void verdicts()
    {
        QFETCH(QString, reason);
        QFETCH(int, kind);
        QFETCH(QList<QStringList>, rows);
        test::TestWedding wedding;
        prepare(wedding);
        guests::GuestImport import(wedding.state);
        store::Recordset list = wedding.open().openRecordset(QStringLiteral("select * from VELMORA_LIST"));
        import.readList(list);
        const auto verdicts = import.check(file({rows.begin(), rows.end()}), guests::GuessColumns(header()), true,
                                           guests::Duplicates::Skip);
        QCOMPARE(verdicts.size(), size_t(rows.size()));
        QCOMPARE(verdicts.back().reason, reason);
        QCOMPARE(int(verdicts.back().kind), kind);
    }

    // A pair the list or the file already has is skipped or updates that row, as chosen;
    // an update counts its own people out of the table before the chair test, and keeps
    // what the file has no column for.
    void duplicates_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("people");
        QTest::addColumn<QList<int>>("counts"); // added, updated, skipped, refused
        QTest::addColumn<QString>("levyPhones");
        QTest::addColumn<QString>("cohenPhones");
        QTest::newRow("skip") << int(guests::Duplicates::Skip) << "2" << QList<int>{1, 0, 2, 0} << "050" << "053";
        QTest::newRow("update") << int(guests::Duplicates::Update) << "9" << QList<int>{1, 2, 0, 0} << "052" << "054";
        QTest::newRow("skip, over the chairs") << int(guests::Duplicates::Skip) << "9" << QList<int>{1, 0, 1, 1} << "050"
                                               << "053";
    }
    void duplicates()
    {
        QFETCH(int, mode);
        QFETCH(QList<int>, counts);
        QFETCH(QString, people);
        QFETCH(QString, levyPhones);
        QFETCH(QString, cohenPhones);
        test::TestWedding wedding;
        prepare(wedding);
        const QStringList head = {QStringLiteral("Last name"), QStringLiteral("First name"), QStringLiteral("Phone"),
                                  QStringLiteral("People"), QStringLiteral("Table")};
        const store::CsvTable table = file({{QStringLiteral("לוי"), QStringLiteral("דנה"), QStringLiteral("052"), people, QStringLiteral("5")},
                                            {QStringLiteral("כהן"), QStringLiteral("רון"), QStringLiteral("053"), QStringLiteral("1")},
                                            {QStringLiteral("כהן"), QStringLiteral("רון"), QStringLiteral("054"), QStringLiteral("1")}},
                                           head);
        const guests::ImportCounts done = guests::ImportGuests(wedding.state, table, guests::GuessColumns(head), true,
                                                               guests::Duplicates(mode));
        QCOMPARE((QList<int>{done.add, done.update, done.skip, done.refused}), counts);
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_LIST")), 2);
        QCOMPARE(wedding.value(QStringLiteral("לוי"), QStringLiteral("דנה"), QStringLiteral("PHONES")).toString(),
                 levyPhones);
        QCOMPARE(wedding.value(QStringLiteral("כהן"), QStringLiteral("רון"), QStringLiteral("PHONES")).toString(),
                 cohenPhones);
        const store::Recordset levy = wedding.row(QStringLiteral("לוי"), QStringLiteral("דנה"));
        QCOMPARE(levy.value(QStringLiteral("LIST_GROUP")).toString(), QStringLiteral("2"));
        QCOMPARE(levy.value(QStringLiteral("REMARK")).toString(), QStringLiteral("ותיקה"));
    }

    // Out as shown and back in: the second wedding shows the same list, cell for cell.
    void roundTrip()
    {
        test::TestWedding from;
        from.createWedding(20, 10);
        QVariantMap cohen = test::invitation(QStringLiteral("כהן, \"הגדול\""), QStringLiteral("רון"), 3, 1, 4,
                                             QStringLiteral("+972-50-1234567"));
        cohen.insert({{"REMARK", QStringLiteral("אמר, \"בטח\"\nיבוא")}, {"INV_STATUS", true},
                      {"ADDRESS", QStringLiteral("הרצל 1\nחיפה")}, {"PRESENT_TYPE", 1}, {"PRESENT", QStringLiteral("150")}});
        QVariantMap levy = test::invitation(QStringLiteral("לוי"), QStringLiteral("דנה"), 2, 2, {}, QStringLiteral("03-1234567"));
        levy.insert({{"PRESENT_TYPE", 2}, {"PRESENT", QStringLiteral("סט כוסות")}});
        for (const QVariantMap& guest : {cohen, levy, test::invitation(QStringLiteral("אבו"), QStringLiteral("סמיר"), 1, 0, {}, QStringLiteral("=1+1"))})
            from.addInvitation(guest);
        test::ScriptedPrompts prompts;
        guests::GuestListModel shown;
        guests::InitList(from.state, prompts, shown, from.state.AllGuests, QStringLiteral("FAMILY_NAME"), {});
        const QByteArray out = guests::ListCsv(shown);
        QVERIFY(out.startsWith("\xEF\xBB\xBF" "שם משפחה,שם פרטי,טלפונים,כמות,"));
        QVERIFY(out.contains(",150\r\n") && !out.contains("₪") && out.contains(",'=1+1,"));

        test::TestWedding to;
        to.createWedding(20, 10);
        const store::CsvParse parsed = store::ParseCsv(out);
        QVERIFY(parsed.table);
        const auto done = guests::ImportGuests(to.state, *parsed.table, guests::GuessColumns(parsed.table->rows.front()),
                                               true, guests::Duplicates::Skip);
        QCOMPARE(done.add, 3);
        guests::GuestListModel back;
        guests::InitList(to.state, prompts, back, to.state.AllGuests, QStringLiteral("FAMILY_NAME"), {});
        QCOMPARE(back.rows().size(), shown.rows().size());
        for (size_t r = 0; r < shown.rows().size(); ++r)
            QCOMPARE(back.rows()[r].cells, shown.rows()[r].cells);
        QCOMPARE(to.value(QStringLiteral("לוי"), QStringLiteral("דנה"), QStringLiteral("PRESENT_TYPE")).toInt(), 2);
        QVERIFY(to.value(QStringLiteral("אבו"), QStringLiteral("סמיר"), QStringLiteral("PRESENT")).isNull());
    }

    // From the Tools menu: the file, the window, the rows stored; the list and the map follow.
    void fromTheToolsMenu()
    {
        test::TestWedding wedding;
        prepare(wedding);
        const QString path = wedding.folder() + QStringLiteral("/list.txt");
        QVERIFY(!store::WriteWholeFile(path, QStringLiteral("Last name\tFirst name\tTable\tPeople\nכהן\tרון\t7\t4\n").toUtf8()));
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        program.prompts.expectOpenFile(path).expectMessage(PromptIcon::Information,
                                                           QStringLiteral("היבוא הסתיים. הזמנות שנוספו: 1; הזמנות שעודכנו: 0."));
        test::NextModal window([](QWidget* modal) { modal->findChild<QPushButton*>(QStringLiteral("cmdImport"))->click(); });
        program.main().action(QStringLiteral("mnuImportListCsv"))->trigger();
        QVERIFY(window.seen());
        QCOMPARE(program.main().listModel().rows().size(), size_t(2));
        QCOMPARE(program.map().SeatedCount(7), 4);
        program.stop();
        program.prompts.verifyDone();
    }

    // The window shows each row's fate; a write that fails half-way stores nothing, and the
    // same import goes through once there is room.
    void windowStoresAllOrNothing()
    {
        test::TestWedding wedding;
        prepare(wedding);
        std::vector<QStringList> rows;
        for (int i = 0; i < 400; ++i)
            rows.push_back(row({{ImportField::FirstName, QStringLiteral("אורח %1").arg(i)},
                                {ImportField::Remark, QString(40, u'ה')}}));
        rows.push_back(row({{ImportField::Table, QStringLiteral("21")}}));
        test::ScriptedPrompts prompts;
        ui::ImportWindow window(wedding.state, prompts, file(rows));
        QAbstractItemModelTester tester(window.grid->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        window.show();
        window.chkHeader->click(); // the header as a row: refused for its count of people
        QCOMPARE(window.lblSummary->text(), QStringLiteral("ייווספו: 400; יעודכנו: 0; ידולגו: 0; נדחו: 2"));
        const QString reason = window.grid->model()->index(0, 0).data().toString(); // shown whole
        QVERIFY(window.grid->columnWidth(0) > window.grid->fontMetrics().horizontalAdvance(reason));
        window.chkHeader->click();
        QCOMPARE(window.lblSummary->text(), QStringLiteral("ייווספו: 400; יעודכנו: 0; ידולגו: 0; נדחו: 1"));
        QCOMPARE(window.grid->model()->index(400, 0).data().toString(),
                 QStringLiteral("נדחתה: מספר השולחן אינו קיים במערכת."));

        const QByteArray before = bytes(wedding.state.databaseFile());
        prompts.expectMessage(PromptIcon::None,
                              QStringLiteral("ארעה שגיאה ביבוא הרשימה; אף הזמנה לא נשמרה.\r\nאין די מקום פנוי בדיסק."));
        {
            const test::FullDisk disk(before.size() + 4096);
            window.cmdImport->click();
        }
        QVERIFY(window.isVisible());
        QCOMPARE(bytes(wedding.state.databaseFile()), before);
        window.cmdImport->click();
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_LIST")), 401);
    }
};

VELMORA_TEST_MAIN(GuestCsvTest)
#include "test_guestcsv.moc"
