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
#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableView>

using namespace velmora;
using F = guests::ImportField;
using Kind = guests::ImportRow::Kind;

namespace {

// The dialog's captions as the header: each names its own field.
QStringList header()
{
    QStringList cells;
    for (int f = 0; f < guests::ImportFieldCount; ++f)
        cells << guests::ImportFieldCaption(F(f));
    return cells;
}

// A good row, "כהן רון" of two people, with some fields changed.
QStringList row(std::initializer_list<std::pair<F, QString>> changes)
{
    QStringList cells{"כהן", "רון", "", "", "2"}; // People is the fifth field
    cells.resize(guests::ImportFieldCount);
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

QVariantMap with(QVariantMap map, const QVariantMap& more)
{
    map.insert(more);
    return map;
}

// A wedding of 20 tables of 10 chairs where "לוי דנה", eight people, sit at table 5.
void prepare(test::TestWedding& wedding)
{
    wedding.createWedding(20, 10);
    wedding.addInvitation(with(test::invitation("לוי", "דנה", 8, 0, 5, "050", "2"), {{"REMARK", "ותיקה"}}));
}

} // namespace

Q_DECLARE_METATYPE(QList<QStringList>)

class GuestListTest : public QObject {
    Q_OBJECT

private slots:
    void rowsCellsAndTotalsAsShown()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation(with(test::invitation("כהן", "דנה", 2, 1, 3), {{"INV_STATUS", true}, {"PRESENT_TYPE", 1},
                                                                        {"PRESENT", "500"}, {"ADDRESS", "הרצל 5, חיפה"}}));
        wedding.addInvitation(with(test::invitation("לוי", "רון", 3, 2), {{"PRESENT_TYPE", 0}, {"PRESENT", "250.5 בצ'ק"}}));
        wedding.addInvitation(with(test::invitation("גבאי", "שי", 1, 3), {{"PRESENT_TYPE", 2}, {"PRESENT", "מצעים"}}));
        wedding.addInvitation(with(test::invitation("ברק", "גיל", 4, 0), {{"PRESENT_TYPE", 0}, {"PRESENT", "100.5"}}));
        wedding.addInvitation(with(test::invitation("טל", "אור", 2, 2), {{"PRESENT", "300"}})); // kind unknown: no money
        test::ScriptedPrompts prompts;
        guests::GuestListModel model;
        QAbstractItemModelTester tester(&model);

        const auto outcome = guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(!outcome.endProgram && outcome.hasRows && outcome.dialEnabled);
        QCOMPARE(outcome.caption, QStringLiteral("רשימה של כל האורחים"));
        QCOMPARE(model.rowCount(), 5);
        const QStringList shown[] = {
            {"כהן", "דנה", "050", "2", "", "מגיע", "3", "נשלחה", "הרצל 5, חיפה", "₪500"},
            {"לוי", "רון", "050", "3", "", "לא", "", "", "", "₪250.5 בצ'ק"},
            {"גבאי", "שי", "050", "1", "", "??", "", "", "", "מצעים"},
            {"ברק", "גיל", "050", "4", "", "", "", "", "", "₪100.5"},
            {"טל", "אור", "050", "2", "", "לא", "", "", "", "300"}};
        for (int row = 0; row < 5; ++row)
            for (int column = 0; column < guests::ColumnCount; ++column)
                QCOMPARE(model.cellText(row + 1, column), shown[row][column]);

        // Money gifts only, by leading number, rounded half to even after each addition:
        // 500, then 750.5 -> 750, then 850.5 -> 850.
        QCOMPARE(QStringList(outcome.panels.begin(), outcome.panels.end()),
                 QStringList({"", "מתנות ₪850", "אישרו שלא מגיעים  5", "ממתינים לאישור  5", "אישרו שמגיעים  2",
                              "מס' ההזמנות  5", ""}));

        // Grid row 2 (model row 1) is even and not coming: every cell grey, struck, tinted.
        for (int c = 0; c < guests::ColumnCount; ++c) {
            const QModelIndex cell = model.index(1, c);
            QCOMPARE(cell.data(Qt::BackgroundRole).value<QColor>(), guests::GuestListModel::evenRowBackground());
            QCOMPARE(cell.data(Qt::ForegroundRole).value<QColor>(), guests::GuestListModel::notComingText());
            QVERIFY(cell.data(Qt::FontRole).value<QFont>().strikeOut());
            QVERIFY(!model.index(0, c).data(Qt::BackgroundRole).isValid() && !model.index(0, c).data(Qt::FontRole).isValid());
        }
        QVERIFY(!wedding.state.WeddingDb.isOpen());

        // The totals are those of the rows shown.
        guests::ListView hidden{true, true, {}};
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, QStringLiteral("FAMILY_NAME"), hidden);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(QList<qint64>({wedding.state.PresentTotal, wedding.state.GuestsNotComing}), QList<qint64>({500, 0}));
    }

    void aNullInAPlainColumnIsReportedOnce()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation({{"FAMILY_NAME", "א"}, {"FIRST_NAME", "א"}, {"CONFIRM", 1}});
        wedding.addInvitation({{"FAMILY_NAME", "ב"}, {"FIRST_NAME", "ב"}, {"CONFIRM", 1}, {"INV_NUM", 2}});
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Warning, QStringLiteral("שימוש לא חוקי בערך Null."));
        guests::GuestListModel model;
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QCOMPARE(model.rowCount(), 2); // the rows are still shown, their cells empty
        QCOMPARE(model.cellText(1, 2) + u'|' + model.cellText(2, 3), "|2");
        QCOMPARE(wedding.state.GuestsConfirmed, 2);
    }

    // English headings as other programs write them; the list's own word wins over an English one.
    void guessesColumns()
    {
        const guests::ColumnMap map = guests::GuessColumns({"E-mail", "Phone", "First Name", "LAST_NAME", "Table #", "טלפון"});
        QCOMPARE(QList<int>(map.begin(), map.end()), QList<int>({3, 2, 5, -1, -1, -1, -1, -1, 4, -1, -1, -1}));
    }

    // Every row is judged by the invitation dialog's checks, in their order (each limit is
    // checked with the dialog), and by what the file's own columns and the store refuse.
    void verdicts_data()
    {
        QTest::addColumn<QList<QStringList>>("rows");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("reason");
        auto add = [](const char* name, const QList<QStringList>& rows, const char* reason, Kind kind = Kind::Refused) {
            QTest::newRow(name) << rows << int(kind) << QString::fromUtf8(reason);
        };
        const char* full = "לא ניתן להושיב יותר מ- 10 איש בשולחן";
        add("accepted", {row({{F::Gift, "₪100"}, {F::Table, "5"}})}, "", Kind::Add);
        add("no family name, no people, no table: the first check speaks", {row({{F::FamilyName, "  "}, {F::People, "0"},
            {F::Table, "99"}})}, "השדות שם משפחה\\פרטי אינם יכולים להיות ריקים.");
        add("cash gift in words", {row({{F::Gift, "מאה"}, {F::GiftKind, "מזומן"}})}, "השדה מתנה חייב להיות מספרי.");
        add("seated but not coming", {row({{F::Table, "3"}, {F::Answer, "לא"}})}, "הושבת אורח שלא מגיע לשולחן אינה אפשרית");
        add("table full", {row({{F::Table, "5"}, {F::People, "3"}})}, full);
        add("the file's own rows fill the table",
            {row({{F::Table, "7"}, {F::People, "6"}}), row({{F::FirstName, "גל"}, {F::Table, "7"}, {F::People, "6"}})}, full);
        add("more people than a byte", {row({{F::People, "256"}})}, "השדה מס' מוזמנים מוגבל ל-255 איש.");
        add("unknown group", {row({{F::Group, "דודים"}})}, "הקבוצה של ההזמנה אינה קיימת.");
        add("unknown answer", {row({{F::Answer, "אולי"}})}, "השדה אישור אינו מוכר: אולי");
        add("unknown gift kind", {row({{F::GiftKind, "זהב"}})}, "השדה סוג מתנה אינו מוכר: זהב");
        add("ragged row", {row({}) << QString() << "x"}, "בשורה 14 תאים, יותר מ-12 העמודות של הקובץ.");
        add("header again", {header()}, "שורת כותרות חוזרת.");
        add("duplicate", {row({{F::FamilyName, " לוי"}, {F::FirstName, "דנה"}})}, "קיימת כבר הזמנה זהה ברשימה.", Kind::Skip);
    }
    void verdicts()
    {
        QFETCH(QList<QStringList>, rows);
        test::TestWedding wedding;
        prepare(wedding);
        guests::GuestImport import(wedding.state);
        store::Recordset list = wedding.open().openRecordset(QStringLiteral("select * from VELMORA_LIST"));
        import.readList(list);
        const auto verdicts = import.check(file({rows.begin(), rows.end()}), guests::GuessColumns(header()), true,
                                           guests::Duplicates::Skip);
        QCOMPARE(verdicts.size(), size_t(rows.size()));
        QTEST(verdicts.back().reason, "reason");
        QTEST(int(verdicts.back().kind), "kind");
    }

    // A pair the list or the file already has is skipped or updates that row, as chosen;
    // an update counts its own people out of the table before the chair test, and keeps
    // what the file has no column for.
    void duplicates_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("people");
        QTest::addColumn<QList<int>>("counts"); // added, updated, skipped, refused
        QTest::addColumn<QString>("phones");    // לוי's, כהן's
        QTest::newRow("skip") << int(guests::Duplicates::Skip) << "2" << QList<int>{1, 0, 2, 0} << "050 053";
        QTest::newRow("update") << int(guests::Duplicates::Update) << "9" << QList<int>{1, 2, 0, 0} << "052 054";
        QTest::newRow("skip, over the chairs") << int(guests::Duplicates::Skip) << "9" << QList<int>{1, 0, 1, 1} << "050 053";
    }
    void duplicates()
    {
        QFETCH(int, mode);
        QFETCH(QString, people);
        test::TestWedding wedding;
        prepare(wedding);
        const QStringList head = {"Last name", "First name", "Phone", "People", "Table"};
        const store::CsvTable table =
            file({{"לוי", "דנה", "052", people, "5"}, {"כהן", "רון", "053", "1"}, {"כהן", "רון", "054", "1"}}, head);
        const guests::ImportCounts done = guests::ImportGuests(wedding.state, table, guests::GuessColumns(head), true,
                                                               guests::Duplicates(mode));
        QTEST((QList<int>{done.add, done.update, done.skip, done.refused}), "counts");
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_LIST")), 2);
        auto field = [&](const char* last, const char* first, const char* f) { return wedding.value(last, first, f).toString(); };
        QTEST(field("לוי", "דנה", "PHONES") + u' ' + field("כהן", "רון", "PHONES"), "phones");
        QCOMPARE(field("לוי", "דנה", "LIST_GROUP") + field("לוי", "דנה", "REMARK"), QStringLiteral("2ותיקה"));
    }

    // Out as shown and back in: the second wedding shows the same list, cell for cell.
    void roundTrip()
    {
        test::TestWedding from, to;
        from.createWedding(20, 10);
        from.addInvitation(with(test::invitation("כהן, \"הגדול\"", "רון", 3, 1, 4, "+972-50-1234567"),
                                {{"REMARK", "אמר, \"בטח\"\nיבוא"}, {"INV_STATUS", true}, {"ADDRESS", "הרצל 1\nחיפה"},
                                 {"PRESENT_TYPE", 1}, {"PRESENT", "150"}}));
        from.addInvitation(
            with(test::invitation("לוי", "דנה", 2, 2, {}, "03-1234567"), {{"PRESENT_TYPE", 2}, {"PRESENT", "סט כוסות"}}));
        from.addInvitation(test::invitation("אבו", "סמיר", 1, 0, {}, "=1+1"));
        test::ScriptedPrompts prompts;
        guests::GuestListModel shown, back;
        guests::InitList(from.state, prompts, shown, from.state.AllGuests, QStringLiteral("FAMILY_NAME"), {});
        const QByteArray out = guests::ListCsv(shown);
        QVERIFY(out.startsWith("\xEF\xBB\xBF" "שם משפחה,שם פרטי,טלפונים,כמות,"));
        QVERIFY(out.contains(",150\r\n") && !out.contains("₪") && out.contains(",'=1+1,"));

        to.createWedding(20, 10);
        const store::CsvParse parsed = store::ParseCsv(out);
        QVERIFY(parsed.table);
        QCOMPARE(guests::ImportGuests(to.state, *parsed.table, guests::GuessColumns(parsed.table->rows.front()), true,
                                      guests::Duplicates::Skip).add, 3);
        guests::InitList(to.state, prompts, back, to.state.AllGuests, QStringLiteral("FAMILY_NAME"), {});
        QCOMPARE(back.rows().size(), shown.rows().size());
        for (size_t r = 0; r < shown.rows().size(); ++r)
            QCOMPARE(back.rows()[r].cells, shown.rows()[r].cells);
        QCOMPARE(to.value("לוי", "דנה", "PRESENT_TYPE").toInt(), 2);
        QVERIFY(to.value("אבו", "סמיר", "PRESENT").isNull());
    }

    // From the Tools menu, the window shows each row's fate; a write that fails half-way
    // stores nothing, the same import goes through once there is room, and the list and the
    // map follow.
    void fromTheToolsMenuAllOrNothing()
    {
        test::TestWedding wedding;
        prepare(wedding);
        QByteArray text = store::CsvBom();
        store::AppendCsvRow(text, header());
        for (int i = 0; i < 400; ++i)
            store::AppendCsvRow(text, row({{F::FirstName, "אורח " + QString::number(i)}, {F::Remark, QString(40, u'ה')},
                                           {F::Table, i == 0 ? "7" : ""}}));
        store::AppendCsvRow(text, row({{F::Table, "21"}}));
        const QString path = wedding.folder() + QStringLiteral("/list.csv");
        QVERIFY(!store::WriteWholeFile(path, text));
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        program.prompts.expectOpenFile(path)
            .expectMessage(PromptIcon::None, QStringLiteral("ארעה שגיאה ביבוא הרשימה; אף הזמנה לא נשמרה.\r\nאין די מקום פנוי בדיסק."))
            .expectMessage(PromptIcon::Information, QStringLiteral("היבוא הסתיים. הזמנות שנוספו: 400; הזמנות שעודכנו: 0."));
        test::NextModal shown([&](QWidget* modal) {
            auto* window = static_cast<ui::ImportWindow*>(modal);
            // A failed check leaves no window open.
            const auto closed = qScopeGuard([window] { if (window->isVisible()) window->reject(); });
            QAbstractItemModelTester tester(window->grid->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
            window->chkHeader->click(); // the header as a row: refused for its count of people
            QCOMPARE(window->lblSummary->text(), QStringLiteral("ייווספו: 400; יעודכנו: 0; ידולגו: 0; נדחו: 2"));
            window->chkHeader->click();
            QCOMPARE(window->lblSummary->text(), QStringLiteral("ייווספו: 400; יעודכנו: 0; ידולגו: 0; נדחו: 1"));
            QCOMPARE(window->grid->model()->index(400, 0).data().toString(), "נדחתה: מספר השולחן אינו קיים במערכת.");
            const QByteArray before = test::fileBytes(wedding.state.databaseFile());
            {
                const test::FullDisk disk(before.size() + 4096);
                window->cmdImport->click();
            }
            QVERIFY(window->isVisible());
            QCOMPARE(test::fileBytes(wedding.state.databaseFile()), before);
            window->cmdImport->click();
        });
        program.main().action(QStringLiteral("mnuImportListCsv"))->trigger();
        QVERIFY(shown.seen());
        QCOMPARE(program.main().listModel().rows().size(), size_t(401));
        QCOMPARE(program.map().SeatedCount(7), 2);
        program.finish();
    }
};

VELMORA_TEST_MAIN(GuestListTest)
#include "test_guestlist.moc"
