#include "TestMain.h"
#include "TestWedding.h"

#include <QDirIterator>
#include <QRegularExpression>

// Logic is tested without windows, so only ui/ folders, main() and the tests include widgets.
class LayeringTest : public QObject {
    Q_OBJECT

private slots:
    void onlyUiFoldersIncludeWidgets()
    {
        static const QRegularExpression widgetInclude(
            QStringLiteral("#\\s*include\\s*[<\"](QtWidgets|QtPrintSupport|QWidget|QDialog|QMessageBox|QFileDialog|"
                           "QPrintDialog|QApplication|QMainWindow|QPrinter)[/>\"]"));
        QStringList offenders;
        const QString root = QStringLiteral(VELMORA_SOURCE_DIR);
        for (const char* folder : {"app", "store", "guests", "seating", "budget", "printing", "telephony", "desktop"}) {
            QDirIterator it(root + u'/' + QString::fromLatin1(folder), {"*.h", "*.cpp"}, QDir::Files,
                            QDirIterator::Subdirectories);
            while (it.hasNext()) {
                const QString path = it.next();
                if (path.contains(QStringLiteral("/ui/")) || path.endsWith(QStringLiteral("app/main.cpp")))
                    continue;
                if (widgetInclude.match(QString::fromUtf8(velmora::test::fileBytes(path))).hasMatch())
                    offenders << path.mid(root.size() + 1);
            }
        }
        QVERIFY2(offenders.isEmpty(), qPrintable(offenders.join(u' ')));
    }
};

VELMORA_TEST_MAIN(LayeringTest)
#include "test_layering.moc"
