#include "ScriptedPrompts.h"
#include "TestMain.h"

#include "app/PendingFailure.h"
#include "app/ui/QtPrompts.h"

#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <functional>

using namespace velmora;

namespace {

// Acts on the next modal window as soon as it is up.
void onNextModal(std::function<void(QWidget*)> act)
{
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            act(modal);
        }
    });
    timer->start();
}

} // namespace

class PromptsTest : public QObject {
    Q_OBJECT

private slots:
    void theDoubleChecksAndAnswersInOrder()
    {
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::None, QStringLiteral("שלום"))
            .expectQuestion(QStringLiteral("להסיר?"), PromptAnswer::No, QStringLiteral("הסרה"))
            .expectInput(QStringLiteral("מספר:"), QStringLiteral("12"))
            .expectOpenFile(std::nullopt)
            .expectBeep();
        prompts.message(QStringLiteral("שלום"));
        QCOMPARE(prompts.question(QStringLiteral("להסיר?"), QStringLiteral("הסרה")), PromptAnswer::No);
        QCOMPARE(prompts.inputBox(QStringLiteral("מספר:")), QStringLiteral("12"));
        const auto file = prompts.openFile(FileRequest{{}, QStringLiteral("GIF (*.gif)|*.gif"), {}, {}});
        QVERIFY(!file);
        QCOMPARE(file.failure.number(), CancelFailureNumber);
        prompts.beep();
        QVERIFY(prompts.verifyDone());
        QCOMPARE(int(prompts.history().size()), 5);
        QCOMPARE(prompts.history()[0].title, QStringLiteral("Velmora"));
        QCOMPARE(prompts.history()[1].defaultButton, PromptAnswer::Yes);
        QCOMPARE(prompts.fileRequests().front().filter, QStringLiteral("GIF (*.gif)|*.gif"));
    }

    void theDoubleFailsOnAPromptNobodyExpected()
    {
        test::ScriptedPrompts prompts;
        QEXPECT_FAIL("", "an unexpected prompt fails the test", Continue);
        prompts.warning(QStringLiteral("פתאום"));
        QCOMPARE(prompts.history().back().icon, PromptIcon::Warning);
    }

    void theDoubleFailsOnADifferentText()
    {
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Warning, QStringLiteral("טקסט אחד"));
        QEXPECT_FAIL("", "a prompt unlike the script fails the test", Continue);
        prompts.warning(QStringLiteral("טקסט אחר"));
    }

    void theDoubleFailsOnAnUnusedAnswer()
    {
        test::ScriptedPrompts prompts;
        prompts.expectBeep();
        QEXPECT_FAIL("", "an answer never asked for fails the test", Continue);
        prompts.verifyDone();
    }

    void realBoxesAreRightToLeftWithOneLinePerCrLf()
    {
        ui::QtPrompts prompts;
        QString title, text;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        onNextModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            title = box->windowTitle();
            text = box->text();
            direction = box->layoutDirection();
            icon = box->icon();
            box->button(QMessageBox::Ok)->click();
        });
        prompts.critical(QStringLiteral("שורה ראשונה\r\nשורה שנייה"), QStringLiteral("שדרוג גירסת תוכנה"));
        QCOMPARE(title, QStringLiteral("שדרוג גירסת תוכנה"));
        QCOMPARE(text, QStringLiteral("שורה ראשונה\nשורה שנייה"));
        QCOMPARE(direction, Qt::RightToLeft);
        QCOMPARE(icon, QMessageBox::Critical);

        // The dialer's boxes read left to right; the caption defaults to the program's.
        onNextModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            title = box->windowTitle();
            direction = box->layoutDirection();
            box->button(QMessageBox::Ok)->click();
        });
        MessageRequest english;
        english.text = QStringLiteral("Pick up the handset");
        english.leftToRight = true;
        prompts.show(english);
        QCOMPARE(title, QStringLiteral("Velmora"));
        QCOMPARE(direction, Qt::LeftToRight);
    }

    void aBoxStandsOverTheWindowTheUserWorksIn()
    {
        QWidget main, ledger;
        main.show();
        ledger.show();
        ledger.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&ledger));
        ui::QtPrompts prompts(&main);
        QWidget* owner = nullptr;
        const auto answer = [&](QWidget* modal) {
            owner = modal->parentWidget();
            qobject_cast<QMessageBox*>(modal)->button(QMessageBox::Ok)->click();
        };
        onNextModal(answer);
        prompts.message(QStringLiteral("א"));
        QCOMPARE(owner, &ledger);
        // Just after a dialog closed no window is active yet; the main window stays behind.
        QApplication::setActiveWindow(nullptr);
        onNextModal(answer);
        prompts.message(QStringLiteral("ב"));
        QCOMPARE(owner, &ledger);
    }

    void aCancelledInputBoxGivesTheEmptyAnswer()
    {
        ui::QtPrompts prompts;
        onNextModal([](QWidget* modal) {
            auto* dialog = qobject_cast<QInputDialog*>(modal);
            QCOMPARE(dialog->textValue(), QStringLiteral("7"));
            QCOMPARE(dialog->labelText(), QStringLiteral("מספר שולחן:"));
            dialog->reject();
        });
        QCOMPARE(prompts.inputBox(QStringLiteral("מספר שולחן:"), {}, QStringLiteral("7")), QString());

        onNextModal([](QWidget* modal) {
            auto* dialog = qobject_cast<QInputDialog*>(modal);
            dialog->setTextValue(QStringLiteral("12"));
            dialog->accept();
        });
        QCOMPARE(prompts.inputBox(QStringLiteral("מספר שולחן:")), QStringLiteral("12"));
    }

    void classicFiltersBecomeQtFilters()
    {
        QCOMPARE(qtFileFilter(QStringLiteral("Pictures (*.gif)|*.gif")), QStringLiteral("Pictures (*.gif)"));
        QCOMPARE(qtFileFilter(QStringLiteral("מסד נתונים|*.mdb|כל הקבצים (*.*)|*.*")),
                 QStringLiteral("מסד נתונים (*.mdb);;כל הקבצים (*)"));
        QCOMPARE(qtFileFilter(QStringLiteral("Images|*.gif;*.jpg")), QStringLiteral("Images (*.gif *.jpg)"));
        QCOMPARE(qtFileFilter(QString()), QString());
    }

    void pendingFailureKeepsTheFirstAndReportsOnce()
    {
        PendingFailure pending;
        QVERIFY(pending.attempt([] {}));
        QVERIFY(!pending);
        QVERIFY(!pending.attempt([] { throw Failure(3024, QStringLiteral("ראשונה")); }));
        QVERIFY(pending.attempt([] {})); // the next step still runs
        pending.fail(3021, QStringLiteral("שנייה"));
        QCOMPARE(pending.count(), 2);
        QCOMPARE(pending.failure().number(), 3024);

        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Warning, QStringLiteral("ראשונה"));
        QVERIFY(pending.report(prompts));
        QVERIFY(!pending.report(prompts));
    }
};

VELMORA_TEST_MAIN(PromptsTest)
#include "test_prompts.moc"
