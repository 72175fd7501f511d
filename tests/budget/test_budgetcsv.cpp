#include "TestMain.h"
#include "TestWedding.h"

#include "budget/BudgetCsv.h"
#include "store/CsvText.h"
#include "store/Schema.h"

using namespace velmora;

class BudgetCsvTest : public QObject {
    Q_OBJECT

private slots:
    // Each branch with its amount as a plain number, then the total; an empty budget is zeros.
    void branchesAndTotal()
    {
        test::TestWedding wedding;
        wedding.createWedding(20);
        auto read = [&] {
            const store::CsvParse parsed = store::ParseCsv(budget::BudgetCsv(wedding.state.databaseFile()));
            return parsed.table ? parsed.table->rows : std::vector<QStringList>{};
        };
        std::vector<QStringList> rows = read();
        QCOMPARE(rows.size(), size_t(32));
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("0")}));
        QCOMPARE(rows.back(), (QStringList{QStringLiteral("ס\"כ הוצאות"), QStringLiteral("0")}));

        store::Database db = wedding.open();
        store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET"));
        rs.addNew();
        for (const store::BudgetBranch& branch : store::budgetBranches())
            rs.setValue(branch.field, QStringLiteral("1000"));
        rs.setValue(QStringLiteral("B_DRESS"), QStringLiteral("1,234.5"));
        rs.setValue(QStringLiteral("B_EXTRA"), QStringLiteral("-34.25"));
        rs.update();
        rows = read();
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("1234.5")}));
        QCOMPARE(rows[30], (QStringList{QStringLiteral("שונות"), QStringLiteral("-34.25")}));
        QCOMPARE(rows.back().last(), QStringLiteral("29200.25"));
    }
};

VELMORA_TEST_MAIN(BudgetCsvTest)
#include "test_budgetcsv.moc"
