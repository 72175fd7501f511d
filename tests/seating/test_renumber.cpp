#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>

using namespace velmora;

class RenumberTest : public QObject {
    Q_OBJECT

    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;

private slots:
    void init() { m_wedding = std::make_unique<test::TestWedding>(); }
    void cleanup() { m_program.stop(); }

    // Table 1 has 5 people, table 2 has 4, one of them in the group the list shows alone.
    void renumberingTableOne_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("question"); // 0 none, else the answer given
        QTest::addColumn<QString>("tables"); // of the five guests afterwards
        QTest::addColumn<QString>("counts"); // the map's, tables 1 to 4
        const char* untouched = "1 1 2 2 0";
        for (const char* refused : {"", "שלוש", "0", "-3", "1e9", "300", "21", "0.5"})
            QTest::newRow(*refused ? refused : "cancel") << refused << 0 << untouched << "5 4 0 0";
        QTest::newRow("free: moved, no question") << "4" << 0 << "4 4 2 2 0" << "0 4 0 5";
        QTest::newRow("3.5 rounds to even 4") << "3.5" << 0 << "4 4 2 2 0" << "0 4 0 5";
        QTest::newRow("text behind the number") << " 3 ליד הבמה" << 0 << "3 3 2 2 0" << "0 4 5 0";
        QTest::newRow("2.5 rounds to even 2: swap") << "2.5" << int(PromptAnswer::Yes) << "2 2 1 1 0" << "4 5 0 0";
        QTest::newRow("taken, no") << "2" << int(PromptAnswer::No) << untouched << "5 4 0 0";
        QTest::newRow("onto itself, yes") << "1" << int(PromptAnswer::Yes) << untouched << "5 4 0 0";
    }
    void renumberingTableOne()
    {
        QFETCH(QString, answer);
        QFETCH(int, question);
        QFETCH(QString, tables);
        QFETCH(QString, counts);
        m_wedding->createWedding(20, 15);
        const QStringList families{"אלון", "בר", "גל", "דהן", "הלל"};
        const int people[] = {2, 3, 3, 1, 1}, table[] = {1, 1, 2, 2, 0};
        for (int i = 0; i < 5; ++i)
            m_wedding->addInvitation(test::invitation(families[i], "x", people[i], 1, table[i] ? table[i] : QVariant(),
                                                      "050", i == 3 ? "2" : "1"));
        QVERIFY(m_program.start(m_wedding->folder()));
        ui::TableMapWindow& map = m_program.map();
        m_program.chooseGroup(2);
        map.setTablePlace(4, QPointF(3000, 1500));
        map.SaveTablePositions();
        const std::vector<QPointF> places = map.itemPositions();
        const QByteArray before = test::fileBytes(m_wedding->state.databaseFile());

        m_program.prompts.expectInput(QStringLiteral("בבקשה החלף את מספר השולחן?"), answer, QStringLiteral("עדכון"));
        if (!answer.isEmpty() && tables == u"1 1 2 2 0" && !question)
            m_program.prompts.expectMessage(PromptIcon::None, QStringLiteral("20 מספר השולחן צריך להיות מ 1 עד"));
        if (question)
            m_program.prompts.expectQuestion(QStringLiteral("שולחן היעד אינו ריק, האם להחליף שולחנות?"),
                                             PromptAnswer(question), QStringLiteral("עדכון שולחנות"));
        map.selectTable(1);
        map.popupAction(QStringLiteral("popUpdateTableNum"))->trigger();
        QVERIFY(m_program.prompts.verifyDone());

        QStringList stored, shown;
        for (const QString& family : families)
            stored << QString::number(m_wedding->value(family, QStringLiteral("x"), QStringLiteral("TABLE_NO")).toInt());
        for (int table = 1; table <= 4; ++table)
            shown << QString::number(map.SeatedCount(table));
        QCOMPARE(stored.join(u' '), tables);
        QCOMPARE(shown.join(u' '), counts);
        QCOMPARE(map.itemPositions(), places); // places belong to numbers, not to guests
        if (tables == u"1 1 2 2 0" && question != int(PromptAnswer::Yes))
            QVERIFY(test::fileBytes(m_wedding->state.databaseFile()) == before);
        // The list, still showing one group, has the guest's table as it now is.
        QCOMPARE(m_program.main().listModel().rowCount(), 1);
        QCOMPARE(m_program.main().listModel().cellText(1, 6), tables.split(u' ')[3]);
    }
};

VELMORA_TEST_MAIN(RenumberTest)
#include "test_renumber.moc"
