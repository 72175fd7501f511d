// Every kept fuzz input, seeds and past crashes, goes through the same entry as under the fuzzer.
#include "Entries.h"
#include "TestMain.h"
#include "TestWedding.h"

#include <QDir>

class FuzzReplay : public QObject {
    Q_OBJECT

private slots:
    void replay()
    {
        for (const auto& [name, entry] : velmora::fuzz::Targets) {
            const auto label = qScopeGuard([&, name = name] { if (QTest::currentTestFailed()) qWarning("target %s", name); });
            const QDir fuzz(QStringLiteral(VELMORA_SOURCE_DIR "/fuzz"));
            QFileInfoList inputs = QDir(fuzz.filePath(QStringLiteral("corpus/") + QLatin1String(name))).entryInfoList(QDir::Files);
            inputs += QDir(fuzz.filePath(QStringLiteral("regressions")))
                          .entryInfoList({QLatin1String(name) + QStringLiteral("-*")}, QDir::Files);
            QVERIFY2(!inputs.isEmpty(), "no inputs kept");
            for (const QFileInfo& input : inputs) {
                const QByteArray bytes = velmora::test::fileBytes(input.filePath());
                entry(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
            }
        }
    }
};

VELMORA_TEST_MAIN(FuzzReplay)
#include "test_fuzzreplay.moc"
