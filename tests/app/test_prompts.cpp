#include "Modal.h"
#include "ScriptedPrompts.h"
#include "ShownText.h"
#include "SystemKeys.h"
#include "TestMain.h"

#include "app/PendingFailure.h"
#include "app/ui/HebrewText.h"
#include "app/ui/QtPrompts.h"

#include <QInputDialog>
#include <QLibraryInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTranslator>

using namespace velmora;

class PromptsTest : public QObject {
    Q_OBJECT

private slots:
    // Texts starting with a mark or a number still read from the right, wherever they are shown.
    void everyLineReadsFromItsRightEnd_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("ends"); // for each line the characters seen at its left and right, joined by blanks
        QTest::newRow("question mark first") << QStringLiteral("?האם ברצונך לשמור מיקומי מפת השולחנות ביציאה") << "?ה";
        QTest::newRow("dots first") << QStringLiteral("...שינוי מספר שולחן") << ".ש";
        QTest::newRow("number first") << QStringLiteral("12 מספר השולחן צריך להיות מ 1 עד") << "1מ";
        QTest::newRow("mark last") << QStringLiteral("רשימת המוזמנים ריקה.") << ".ר";
        QTest::newRow("number inside") << QStringLiteral("שולחן של 12 מוזמנים") << "םש";
        QTest::newRow("lines by CrLf") << QStringLiteral("פעולה זו תאפס את מפת השולחנות\r\n?למיקומי בררת המחדל") << "תפ ?ל";
        QTest::newRow("a path keeps its slash first") << QStringLiteral("לא ניתן לפתוח את /tmp/חתונה") << "/ל";
        QTest::newRow("address under a cry") << QStringLiteral("!ארעה שגיאה קריטית\r\nwww.velmora.co.il\r\n") << "!א wl   ";
    }

    void everyLineReadsFromItsRightEnd()
    {
        QFETCH(QString, text);
        QFETCH(QString, ends);
        ui::QtPrompts prompts;
        QString shown;
        test::NextModal box([&](QWidget* modal) {
            auto* message = qobject_cast<QMessageBox*>(modal);
            message->button(QMessageBox::No)->click(); // first: a failing check below leaves no box up
            QVERIFY(message->windowTitle() == u"אזהרת מערכת" && message->icon() == QMessageBox::Question);
            auto* label = message->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            QVERIFY(!message->text().contains(u'\r') && label->layoutDirection() == Qt::RightToLeft); // a CR shows as a box
            shown = test::lineEnds(label->text(), label->layoutDirection(), label->font());
        });
        QCOMPARE(prompts.question(text, QStringLiteral("אזהרת מערכת")), PromptAnswer::No);
        QCOMPARE(shown, ends);

        test::NextModal input([&](QWidget* modal) {
            auto* dialog = qobject_cast<QInputDialog*>(modal);
            shown = test::lineEnds(dialog->labelText(), dialog->layoutDirection());
            dialog->setTextValue(QStringLiteral("12"));
            dialog->accept();
        });
        QCOMPARE(prompts.inputBox(text), QStringLiteral("12"));
        QCOMPARE(shown, ends);

        const auto shows = [&](auto&& widget) {
            ui::setHebrewText(&widget, text);
            return test::lineEnds(widget.text(), widget.layoutDirection(), widget.font());
        };
        QCOMPARE(shows(QLabel()), ends);
        QCOMPARE(shows(QPushButton()), ends);
        QMenu menu;
        ui::setHebrewText(menu.addAction(QString()), text);
        QCOMPARE(test::lineEnds(menu.actions().front()->text(), menu.layoutDirection()), ends);
        if (!text.contains(u'\n')) {
            ui::setHebrewTitle(&menu, text);
            QCOMPARE(test::lineEnds(menu.windowTitle(), Qt::LayoutDirectionAuto), ends);
        }
    }

    void aBoxStandsOverTheWindowTheUserWorksIn()
    {
        QWidget main, ledger;
        main.show();
        QVERIFY(test::activate(&ledger));
        ui::QtPrompts prompts(&main);
        QWidget* owner = nullptr;
        // The second time just after a dialog closed: no window is active yet, the main window stays behind.
        for (const char* text : {"א", "ב"}) {
            test::NextModal box([&](QWidget* modal) {
                owner = modal->parentWidget();
                qobject_cast<QMessageBox*>(modal)->button(QMessageBox::Ok)->click();
            });
            prompts.message(QString::fromUtf8(text));
            QCOMPARE(owner, &ledger);
            QApplication::setActiveWindow(nullptr);
        }
    }

    void theDialersBoxesReadLeftToRightAndACancelAnswersNothing()
    {
        ui::QtPrompts prompts;
        Qt::LayoutDirection direction = Qt::RightToLeft;
        // Their buttons stay English where standard buttons read Hebrew.
        QTranslator hebrew;
        QVERIFY(hebrew.load(QStringLiteral("qtbase_he"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
        QApplication::installTranslator(&hebrew);
        QStringList buttons;
        test::NextModal english([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            direction = box->layoutDirection();
            for (QAbstractButton* button : box->buttons())
                buttons << button->text();
            box->button(QMessageBox::Ok)->click();
        });
        QCOMPARE(prompts.show({.title = {}, .text = "Pick up the handset", .buttons = PromptButtons::OkCancel,
                               .leftToRight = true}), PromptAnswer::Ok);
        QApplication::removeTranslator(&hebrew);
        buttons.sort();
        QVERIFY(direction == Qt::LeftToRight && buttons == QStringList({"Cancel", "OK"}));

        QString proposed;
        test::NextModal cancel([&](QWidget* modal) {
            proposed = qobject_cast<QInputDialog*>(modal)->textValue();
            qobject_cast<QDialog*>(modal)->reject();
        });
        QCOMPARE(prompts.inputBox(QStringLiteral("מספר שולחן:"), {}, QStringLiteral("7")), QString());
        QCOMPARE(proposed, QStringLiteral("7"));
    }

    // A typed name that isn't there comes back for the caller to refuse; paths read left to right.
    void theFileDialogGivesBackATypedMissingName()
    {
        QTemporaryDir dir;
        bool pathsLeftToRight = true, dialogRightToLeft = false;
        test::NextModal typing([&](QWidget* dialog) {
            dialogRightToLeft = dialog->layoutDirection() == Qt::RightToLeft;
            for (const char* name : {"lookInCombo", "fileNameEdit", "listView", "treeView"}) {
                auto* shown = dialog->findChild<QWidget*>(QLatin1String(name));
                pathsLeftToRight &= shown && shown->layoutDirection() == Qt::LeftToRight;
            }
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            QTest::keyClicks(name, QStringLiteral("nowhere.gif"));
            QTimer::singleShot(1000, dialog, [dialog] { // should the dialog refuse the name itself
                if (QWidget* box = QApplication::activeModalWidget(); box && box != dialog)
                    box->close();
                QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
            });
            QTest::keyClick(name, Qt::Key_Return);
        });
        const PromptResult<QString> chosen = ui::QtPrompts().openFile({{}, "GIF Image (*.gif)|*.gif", {}, dir.path()});
        QVERIFY(typing.seen() && dialogRightToLeft && pathsLeftToRight);
        QCOMPARE(chosen.value.value_or(QString()), dir.filePath(QStringLiteral("nowhere.gif")));
    }

    void pendingFailureKeepsTheFirstAndReportsOnce()
    {
        PendingFailure pending;
        QVERIFY(pending.attempt([] {}) && !pending);
        QVERIFY(!pending.attempt([] { throw Failure(3024, QStringLiteral("ראשונה")); }));
        QVERIFY(pending.attempt([] {})); // the next step still runs
        pending.fail(3021, QStringLiteral("שנייה"));
        QVERIFY(pending.count() == 2 && pending.failure().number() == 3024);

        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Warning, QStringLiteral("ראשונה"));
        QVERIFY(pending.report(prompts));
        QVERIFY(!pending.report(prompts));
    }
};

VELMORA_TEST_MAIN(PromptsTest)
#include "test_prompts.moc"
