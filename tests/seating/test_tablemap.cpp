#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/Wedding.h"
#include "app/Twips.h"
#include "app/ui/MainWindow.h"
#include "seating/TableIcons.h"
#include "seating/TablePlan.h"
#include "seating/ui/TableMapWindow.h"
#include "seating/ui/TableWindow.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <QTreeView>

#include <map>

using namespace velmora;

namespace {

const QString Overflow = QStringLiteral("ארעה שגיאה ביצירת השולחן");
const QRect StartPlace(2520, 360, 1575, 495);

// A picture file: one colour, with a red square at (150, 80) when it is large enough.
QString writePicture(const QString& path, QSize size, const char* format = "PNG")
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(QColor(0, 160, 0));
    QPainter(&picture).fillRect(150, 80, 10, 10, Qt::red);
    picture.save(path, format);
    return path;
}

QPoint scrolled(const QAbstractScrollArea* view)
{
    return QPoint(view->horizontalScrollBar()->value(), view->verticalScrollBar()->value());
}

// Where a table must be drawn, in the viewport: its place from the list's top left corner.
QRect expectedCell(const ui::TableMapWindow& map, int table)
{
    const QPointF twips = map.tablePlace(table);
    const QPoint at(int(std::lround(twipsToPixelsF(twips.x()))), int(std::lround(twipsToPixelsF(twips.y()))));
    return QRect(at - scrolled(map.mapView()), ui::TableMapView::cellSize());
}

// The table's own icon, pixel for pixel, at its expected place on the screen.
bool iconDrawnAt(const ui::TableMapWindow& map, int table, const QRect& cell)
{
    const QImage shot = map.mapView()->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect icon = ui::TableMapView::iconRect().translated(cell.topLeft());
    return shot.copy(icon) == seating::tableNumberIcon(table, 32).convertToFormat(QImage::Format_RGB32);
}

} // namespace

class TableMapTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    WeddingState& m_state = m_program.state;
    test::ScriptedPrompts& m_prompts = m_program.prompts;

    ui::TableMapWindow& start(bool shown = false)
    {
        m_program.start(m_wedding->folder());
        ui::TableMapWindow& map = m_program.map();
        if (shown)
            test::activate(&map);
        return map;
    }

    void setTables(int tables)
    {
        m_wedding->state.MaxTables = quint8(tables);
        SaveOptions(m_wedding->state);
    }

    QString ini(const char* key) const { return test::iniValue(m_state.iniFile(), "TablesMap", key); }
    QPoint centre(ui::TableMapWindow& map, int table) { return expectedCell(map, table).center(); }

    // What a screen reader reads of every table in a view, and a table chosen through it.
    void readAndChoose(ui::TableMapWindow& map, QAbstractItemView* view, int table)
    {
        QAccessibleTableInterface* list = QAccessible::queryAccessibleInterface(view)->tableInterface();
        QVERIFY(list && list->rowCount() == map.itemCount());
        for (int row = 0; row < map.itemCount(); ++row)
            QCOMPARE(list->cellAt(row, 0)->text(QAccessible::Name),
                     QStringLiteral("שולחן מס' %1, %2").arg(row + 1).arg(map.itemText(row + 1)));
        QAccessibleInterface* chosen = list->cellAt(table - 1, 0);
        chosen->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(chosen->state().selected && !list->cellAt(table == 1 ? 1 : 0, 0)->state().selected);
        QVERIFY(m_state.CurTable == table && map.toolButton(5)->isEnabled() == (map.SeatedCount(table) > 0));
    }

    seating::TablePlan load(int table, int chairs)
    {
        m_wedding->state.CurTable = quint8(table);
        m_wedding->state.CurTableChairs = quint8(chairs);
        return seating::LoadTablePlan(m_wedding->state, m_prompts);
    }

    // A real drag with the mouse, in two moves.
    void drag(ui::TableMapWindow& map, int table, QPoint by)
    {
        QWidget* viewport = map.mapView()->viewport();
        const QPoint grab = centre(map, table);
        QTest::mousePress(viewport, Qt::LeftButton, {}, grab);
        QTest::mouseMove(viewport, grab + by / 2);
        QTest::mouseMove(viewport, grab + by);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, grab + by);
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(20, 15);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 2, 4, QString())); // not coming, still counted
        m_wedding->addInvitation(test::invitation("לוי", "רון", 3, 0, 4, QString()));
        m_wedding->addInvitation(test::invitation("גבאי", "שי", 9, 1, 7, QString()));
        m_wedding->addInvitation(test::invitation("טל", "אור", 1, 1, QVariant(), QString())); // not seated
        m_wedding->addInvitation(test::invitation("בר", "גיל", 1, 1, 0, QString()));          // nor this one
        m_wedding->addInvitation(test::invitation("רחוק", "מאוד", 4, 1, 30, QString()));    // above MaxTables
    }

    void cleanup() { m_program.finish(); }

    void theMapShowsCountsWhateverTheListShows()
    {
        ui::TableMapWindow& map = start(true);
        QCOMPARE(map.itemText(1), QStringLiteral("שולחן של 0"));
        QCOMPARE(map.itemNames(4), QString()); // names only in the detailed list
        readAndChoose(map, map.mapView(), 7);

        ui::MainWindow& main = m_program.main();
        main.action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        main.action(QStringLiteral("mnuIgnoreCnfNotOk"))->trigger();
        m_program.chooseGroup(2);
        QCOMPARE(main.grid()->model()->rowCount(), 1); // the empty row
        QCOMPARE(map.itemText(4), QStringLiteral("שולחן של 5"));

        m_prompts.expectMapSaveQuestion();
        map.ChangeTableViewMode(2);
        QCOMPARE(map.itemNames(4), QStringLiteral("כהן דנה , לוי רון , "));
        readAndChoose(map, map.detailList(), 3);
        map.InitTableSetting(); // always back to the map
        QVERIFY(map.toolButton(7)->isChecked() && m_state.TableViewMode == 1);

        // Table 7 holds 9: the refresh says so once, and the table won't open.
        m_state.MaxChairs = 8;
        for (int time = 0; time < 2; ++time)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 8 איש בשולחן"));
        map.InitTableView(1);
        map.selectTable(7);
        map.ViewTable();
        QVERIFY(!map.tableWindow());
    }

    void whatIsHighlightedIsWhatTheCommandsActOn()
    {
        ui::TableMapWindow& map = start(true);
        QWidget* viewport = map.mapView()->viewport();
        QTest::mouseClick(viewport, Qt::LeftButton, {}, centre(map, 2));
        QCOMPARE(m_state.CurTable, quint8(2));
        for (QAction* command : {map.toolButton(5), map.popupAction(QStringLiteral("popTableSitView")),
                                 map.popupAction(QStringLiteral("popUpdateTableNum"))})
            QVERIFY(!command->isEnabled());
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".שולחן ריק מאנשים"));
        map.ViewTable(); // the menu entry is off, but the double click still asks

        // The right button chooses the table under it, then opens the pop-up for it.
        QTest::mouseClick(viewport, Qt::RightButton, {}, centre(map, 7));
        QContextMenuEvent menu(QContextMenuEvent::Mouse, centre(map, 7), viewport->mapToGlobal(centre(map, 7)));
        QApplication::sendEvent(viewport, &menu);
        QVERIFY(map.popupMenu()->isVisible() && m_state.CurTable == 7);
        map.popupAction(QStringLiteral("popTableSitView"))->trigger();
        map.popupMenu()->close();
        QCOMPARE(map.tableWindow()->table(), 7);

        QTest::mouseClick(viewport, Qt::LeftButton, {}, centre(map, 4)); // a double click's first press
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, centre(map, 4));
        QCOMPARE(map.tableWindow()->table(), 4); // a fresh window for the new table

        // Coming into the list by Tab forgets the table, and its highlight.
        map.mapView()->clearFocus();
        map.mapView()->setFocus(Qt::TabFocusReason);
        QCOMPARE(m_state.CurTable, quint8(0));
        QVERIFY(!map.mapView()->selectionModel()->hasSelection() && !map.toolButton(5)->isEnabled());
        map.ViewTable();
        QCOMPARE(map.tableWindow()->table(), 4);
    }

    void iconsAreDrawnAtTheirPlaces_data()
    {
        QTest::addColumn<int>("tables"); // many over a scrolled picture
        QTest::newRow("few tables, no picture") << 3;
        QTest::newRow("100 tables over a picture") << 100;
    }

    void iconsAreDrawnAtTheirPlaces()
    {
        QFETCH(int, tables);
        const bool picture = tables > 3;
        setTables(tables);
        for (int i = 0; i < tables; ++i) // all in the right part of the garden: nothing at the left edge
            WriteIniValue(m_wedding->state.iniFile(), "TablesMap", QStringLiteral("TableNum-%1").arg(i + 1),
                          QStringLiteral("%1, %2").arg(3000 + i % 6 * 1200).arg(1500 + i / 6 * 900));
        if (picture)
            WriteIniValue(m_wedding->state.iniFile(), "TablesMap", "GardenMapBackground",
                          writePicture(m_wedding->folder() + QStringLiteral("/garden.png"), QSize(1200, 900)));
        ui::TableMapWindow& map = start(true);
        ui::TableMapView* view = map.mapView();
        view->setFont(QFont(QStringLiteral("DejaVu Sans"), 11)); // the list lays its items out afresh
        const QPoint scroll = picture ? QPoint(100, 50) : QPoint();
        view->horizontalScrollBar()->setValue(scroll.x());
        view->verticalScrollBar()->setValue(scroll.y());
        QCOMPARE(scrolled(view), scroll);
        int seen = 0;
        for (int table = 1; table <= tables; ++table) {
            const QRect cell = expectedCell(map, table);
            QCOMPARE(view->visualRect(view->model()->index(table - 1, 0)), cell);
            if (view->viewport()->rect().contains(cell) && ++seen)
                QVERIFY2(iconDrawnAt(map, table, cell), qPrintable(QString::number(table)));
        }
        QVERIFY(seen >= std::min(tables, 20));
        const QImage shot = view->viewport()->grab().toImage();
        QCOMPARE(shot.pixelColor(QPoint(155, 85) - scroll), QColor(picture ? Qt::red : Qt::white));
    }

    void aDraggedTableMovesByTheDraggedDistanceAndStaysOnTop()
    {
        // Table 5 is the leftmost; table 6 lies where it is dragged to.
        WriteIniValue(m_wedding->state.iniFile(), "TablesMap", "TableNum-5", "300, 3000");
        WriteIniValue(m_wedding->state.iniFile(), "TablesMap", "TableNum-6", "1050, 3525");
        ui::TableMapWindow& map = start(true);
        const std::vector<QPointF> before = map.itemPositions();
        drag(map, 5, QPoint(40, 30));
        QCOMPARE(map.tablePlace(5), QPointF(300 + 600, 3000 + 450));
        QCOMPARE(expectedCell(map, 5).topLeft(), QPoint(20 + 40, 200 + 30));
        QVERIFY(iconDrawnAt(map, 5, expectedCell(map, 5)));
        std::vector<QPointF> after = map.itemPositions();
        after[4] = before[4];
        QVERIFY(after == before && m_state.CurTable == 5 && map.TablePositionsChanged()); // no other table moved
        // A refresh puts back what is stored; a table never stored stays where put, above the one under it.
        drag(map, 7, expectedCell(map, 6).topLeft() + QPoint(10, 5) - expectedCell(map, 7).topLeft());
        const QPointF dropped = map.tablePlace(7);
        map.InitTableView(m_state.TableViewMode);
        QVERIFY(map.tablePlace(5) == QPointF(300, 3000) && map.tablePlace(7) == dropped);
        QVERIFY(iconDrawnAt(map, 7, expectedCell(map, 7)));

        m_prompts.expectMapSaveQuestion(PromptAnswer::Ok); // switching to the list with changes asks
        map.toolButton(8)->trigger();
        QCOMPARE(ini("TableNum-7"), QStringLiteral("1200, 3600")); // where table 6's icon is, and 10 by 5 pixels on
        map.close(); // in the list view nothing is asked
    }

    void placesAreKeptAndComparedAsText()
    {
        ui::TableMapWindow& map = start();
        QVERIFY(map.TablePositionsChanged()); // nothing stored on a first run
        map.setTablePlace(3, QPointF(1500, 2250.5));
        map.SaveTablePositions();
        QVERIFY(ini("TableNum-3") == QStringLiteral("1500, 2250.5") && !map.TablePositionsChanged());
        map.setTablePlace(3, QPointF(1515, 2250.5));
        QVERIFY(map.TablePositionsChanged()); // one stored table moved is a change
        map.setTablePlace(3, QPointF(1500, 2250.5));
        m_program.stop();

        // Back at the next start; more tables have no key, fewer leave theirs in the file.
        setTables(30);
        ui::TableMapWindow& more = start();
        QVERIFY(more.tablePlace(3) == QPointF(1500, 2250.5) && more.TablePositionsChanged());
        m_prompts.expectMapSaveQuestion(); // hidden map: the question is asked all the same
        m_program.main().close();
        m_program.windows.reset();
    }

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
        m_wedding = std::make_unique<test::TestWedding>(); // a wedding of its own
        m_wedding->createWedding(20, 15);
        const QStringList families{"אלון", "בר", "גל", "דהן", "הלל"};
        const int people[] = {2, 3, 3, 1, 1}, table[] = {1, 1, 2, 2, 0};
        for (int i = 0; i < 5; ++i)
            m_wedding->addInvitation(test::invitation(families[i], "x", people[i], 1, table[i] ? table[i] : QVariant(),
                                                      "050", i == 3 ? "2" : "1"));
        ui::TableMapWindow& map = start();
        m_program.chooseGroup(2);
        map.setTablePlace(4, QPointF(3000, 1500));
        map.SaveTablePositions();
        const std::vector<QPointF> places = map.itemPositions();
        const QByteArray before = test::fileBytes(m_wedding->state.databaseFile());

        m_prompts.expectInput(QStringLiteral("בבקשה החלף את מספר השולחן?"), answer, QStringLiteral("עדכון"));
        if (!answer.isEmpty() && tables == u"1 1 2 2 0" && !question)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("20 מספר השולחן צריך להיות מ 1 עד"));
        if (question)
            m_prompts.expectQuestion(QStringLiteral("שולחן היעד אינו ריק, האם להחליף שולחנות?"), PromptAnswer(question),
                                     QStringLiteral("עדכון שולחנות"));
        map.selectTable(1);
        map.popupAction(QStringLiteral("popUpdateTableNum"))->trigger();
        QVERIFY(m_prompts.verifyDone());

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

    void theGardenPictureAndTheDefaultLayout()
    {
        ui::TableMapWindow& map = start(true);
        const QScrollBar* down = map.mapView()->verticalScrollBar();
        const QString big = writePicture(m_state.AppPath + QStringLiteral("big.png"), QSize(2000, 1500));
        const QString small = writePicture(m_state.AppPath + QStringLiteral("garden.gif"), QSize(1, 1));
        const QString words = m_state.AppPath + QStringLiteral("words.gif");
        test::writeFile(words, "no picture");
        m_prompts.expectOpenFile(std::nullopt).expectOpenFile(m_state.AppPath + QStringLiteral("nowhere.gif"));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".קובץ לא נמצא"));
        map.toolButton(2)->trigger(); // cancelled: nothing at all
        map.toolButton(2)->trigger();
        QCOMPARE(ini("GardenMapBackground"), QStringLiteral("<none>"));
        for (const auto& [chosen, height] : {std::pair{QStringLiteral("  ") + big, 1500}, {small, 1}, {words, 1}}) {
            m_prompts.expectOpenFile(chosen);
            map.toolButton(2)->trigger();
            QCOMPARE(ini("GardenMapBackground"), chosen.trimmed()); // kept, picture or not
            QCOMPARE(map.mapView()->backgroundPicture().height(), height);
            QCOMPARE(down->maximum() > 1000, height > 1000); // a smaller picture, a smaller area
        }

        // The default layout forgets every place and the path; the picture stays on screen.
        map.setTablePlace(2, QPointF(30000, 30000));
        map.SaveTablePositions();
        QVERIFY(down->maximum() > 1000);
        const QString warning = QStringLiteral("פעולה זו תאפס את מפת השולחנות\r\n?למיקומי בררת המחדל של המערכת");
        for (PromptAnswer answer : {PromptAnswer::Cancel, PromptAnswer::Ok})
            m_prompts.expectBox(PromptIcon::Warning, warning, QStringLiteral("אזהרת מערכת"), PromptButtons::OkCancel,
                                PromptAnswer::Ok, answer);
        map.toolButton(3)->trigger();
        QCOMPARE(ini("TableNum-2"), QStringLiteral("30000, 30000"));
        map.popupAction(QStringLiteral("popSetDefaultMap"))->trigger();
        QCOMPARE(ini("TableNum-2") + ini("GardenMapBackground"), QStringLiteral("<none><none>"));
        QVERIFY(map.tablePlace(2) != QPointF(30000, 30000) && down->maximum() == 0);
        QCOMPARE(map.mapView()->backgroundPicture().height(), 1);
        m_prompts.expectMapSaveQuestion();
        map.ChangeTableViewMode(2); // the list takes it off
        QVERIFY(map.mapView()->backgroundPicture().isNull());
    }

    // 1 to 15 chairs: none on another or off the window; where the layout turns, exact places.
    void layouts()
    {
        const QRect window(0, 0, 6615, 4560);
        const std::map<std::pair<int, int>, QRect> places = {
            {{1, 0}, {2400, 360, 1575, 495}},  {{3, 2}, {4680, 1800, 1575, 495}}, {{8, 4}, {2400, 3240, 1575, 495}},
            {{9, 0}, {2400, 360, 1575, 495}},  {{9, 4}, {3480, 3360, 1575, 495}}, {{10, 9}, {1440, 240, 1575, 495}},
            {{9, 7}, {240, 1800, 1575, 495}},  {{10, 0}, {3480, 240, 1575, 495}}, {{11, 5}, {2520, 3120, 1575, 495}},
            {{12, 11}, {720, 600, 1575, 495}}, {{14, 13}, {840, 360, 1575, 495}},
            {{15, 0}, {3360, 240, 1455, 495}}, {{15, 14}, {1800, 240, 1335, 495}}}; // 15: narrowed
        for (int seats = 1; seats <= 15; ++seats) {
            seating::TablePlan plan;
            for (int person = 0; person < seats; ++person)
                plan.SeatInvitation(m_prompts, QString::number(person), 1, 1);
            plan.ArrangeChairs(m_prompts, seats);
            QCOMPARE(int(plan.chairs().size()), seats);
            for (size_t i = 0; i < plan.chairs().size(); ++i) {
                const QRect a = plan.chairs()[i].place;
                const QString where = QStringLiteral("%1 seats, chair %2").arg(seats).arg(i);
                QVERIFY2(window.contains(a), qPrintable(where));
                for (size_t j = i + 1; j < plan.chairs().size(); ++j)
                    QVERIFY2(!a.intersects(plan.chairs()[j].place), qPrintable(where));
                if (places.count({seats, int(i)}))
                    QCOMPARE(a, places.at({seats, int(i)}));
            }
        }
    }

    void chairsAgainstTheMapsCount_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("placed"); // chairs moved to the layout; the rest stay at the start
        QTest::newRow("map counts the same") << 7 << QString() << 7;
        QTest::newRow("map counts more: what exists is placed") << 9 << Overflow << 7;
        QTest::newRow("map counts 15: chair 14 missing") << 15 << Overflow << 7;
        QTest::newRow("map counts fewer: the rest pile at the start") << 5 << QString() << 5;
        QTest::newRow("over 15: nothing moves") << 16 << QStringLiteral("מספר המושבים לשולחן גבוה מהמותר") << 0;
    }

    // One chair a person in stored order, coloured by the answer, in the map count's layout as far as both go.
    void chairsAgainstTheMapsCount()
    {
        QFETCH(int, count);
        QFETCH(QString, message);
        QFETCH(int, placed);
        // Table 5: four coming, someone at another table, two with no answer, one not coming.
        m_wedding->addInvitation(test::invitation("אברהם", "דן", 4, 1, 5));
        m_wedding->addInvitation(test::invitation("שכן", "בשולחן", 1, 3, 6));
        m_wedding->addInvitation(test::invitation("ברק", "טל", 2, 0, 5));
        m_wedding->addInvitation(test::invitation("גולן", "עדי", 1, 2, 5));
        if (!message.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, message);
        const seating::TablePlan plan = load(5, count);
        QCOMPARE(int(plan.chairs().size()), 7);
        const std::vector<QPoint> layout = seating::chairLayout(count);
        const QString first = QStringLiteral("אברהם\r\nדן"), second = QStringLiteral("ברק\r\nטל");
        const QStringList texts{first, first, first, first, second, second, QStringLiteral("גולן\r\nעדי")};
        for (int i = 0; i < 7; ++i) {
            const seating::Chair& chair = plan.chairs()[size_t(i)];
            QVERIFY(chair.text == texts[i] && chair.visible);
            QCOMPARE(chair.place.topLeft(), i < placed ? layout[size_t(i)] : StartPlace.topLeft());
        }
        // No answer looks like not sure; not coming keeps chair 0's colour as it was made.
        QCOMPARE(QList<QColor>({plan.chairs()[0].colour, plan.chairs()[4].colour, plan.chairs()[6].colour}),
                 QList<QColor>({seating::ConfirmedChair, seating::UnsureChair, seating::ConfirmedChair}));
        QCOMPARE(plan.chairs()[0].place.width(), count == 15 ? 1455 : 1575);
    }

    void anEmptyGuestListLeavesOneFreeChair()
    {
        m_wedding = std::make_unique<test::TestWedding>(); // no guests at all
        m_wedding->createWedding(20, 15);
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("רשימת המוזמנים ריקה."));
        const seating::TablePlan plan = load(3, 4);
        QCOMPARE(int(plan.chairs().size()), 1);
        QVERIFY(plan.chairs()[0].text == seating::FreeChair && plan.chairs()[0].place == StartPlace);
    }

    // A full table: twelve coming, three unsure.
    void theWindowShowsTheTableOpenedFromTheMap()
    {
        const int people = 15;
        m_wedding->addInvitation(test::invitation("כהן", "רב", 12, 1, 9));
        m_wedding->addInvitation(test::invitation("לוי", "שלושה", 3, 0, 9));
        QVERIFY(m_program.start(m_wedding->folder()));
        ui::TableMapWindow& map = m_program.map();
        const QRect screen = map.screen()->availableGeometry();
        map.move(screen.bottomRight() - QPoint(40, 40)); // the plan opens beside the map, whole on the screen
        map.selectTable(9);
        map.ViewTable();
        ui::TableWindow* window = map.tableWindow();
        QVERIFY(window && QTest::qWaitForWindowExposed(window));
        QVERIFY(screen.contains(window->frameGeometry()) && window->frameGeometry().intersects(map.frameGeometry()));
        QCOMPARE(window->findChild<QLabel*>(QStringLiteral("lblNumOfPpl"))->text(),
                 QStringLiteral("שולחן של 15 מוזמנים"));

        // The table is a circle centred in its box, not an ellipse filling it.
        const QImage drawn = window->grab().toImage();
        QCOMPARE(drawn.pixelColor(twipsToPixels(2160 + 2175 / 2), twipsToPixels(1200 + 60)), QColor(0xC0, 0xC0, 0xFF));
        QCOMPARE(drawn.pixelColor(twipsToPixels(2160 + 90), twipsToPixels(1200 + 1695 / 2)),
                 window->palette().color(QPalette::Window));

        const std::vector<QPoint> layout = seating::chairLayout(people);
        const auto& boxes = window->chairBoxes();
        QCOMPARE(int(boxes.size()), people);
        for (int i = 0; i < people; ++i) {
            ui::ChairBox* box = boxes[size_t(i)];
            QVERIFY(box->isVisible());
            QCOMPARE(box->geometry().topLeft(), QPoint(twipsToPixels(layout[size_t(i)].x()), twipsToPixels(layout[size_t(i)].y())));
            const QColor shown = box->grab().toImage().pixelColor(4, box->height() / 2);
            QCOMPARE(shown, i < 12 ? seating::ConfirmedChair : seating::UnsureChair);
        }

        // Typing in a chair beeps and changes nothing.
        ui::ChairBox* chair = boxes[1];
        QCOMPARE(chair->text(), QStringLiteral("כהן\nרב"));
        chair->setFocus(Qt::MouseFocusReason);
        m_prompts.expectBeep().expectBeep().expectBeep();
        for (Qt::Key key : {Qt::Key_A, Qt::Key_Backspace, Qt::Key_Escape})
            QTest::keyClick(chair, key);
        QCOMPARE(chair->text(), QStringLiteral("כהן\nרב"));
        window->close();
    }
};

VELMORA_TEST_MAIN(TableMapTest)
#include "test_tablemap.moc"
