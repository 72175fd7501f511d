#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/Settings.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

using namespace velmora;

class WeddingTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    WeddingState m_state;
    UserStore m_store;

    QString ini(const char* section, const char* key) const { return test::iniValue(m_state.iniFile(), section, key); }

    // What the next start reads from the same folder.
    WeddingState nextStart()
    {
        WeddingState next;
        next.AppPath = m_state.AppPath;
        ReadWeddingOptions(next, m_store);
        return next;
    }

private slots:
    void init()
    {
        m_state = WeddingState();
        m_state.AppPath = AppPathFor(m_dir.path());
        QFile::remove(m_state.iniFile());
        test::clearUserStore();
    }

    void daysToWeddingIsNeverNegative()
    {
        const QDate today(2026, 11, 22);
        for (const auto& [date, days] : {std::pair(QDate(2026, 12, 2), 10), {today, 0}, {QDate(2025, 1, 1), 0}}) {
            m_state.WeddingDate = date;
            QCOMPARE(DaysToWedding(m_state, today), QString::number(days));
            QCOMPARE(m_state.DaysLeft, days);
        }
    }

    void oldSettingsMoveIntoTheSettingsFile()
    {
        {
            QSettings old(QStringLiteral("Velmora"), QStringLiteral("Velmora"));
            for (const auto& [key, value] :
                 {std::pair("Options/Couple", "רות ובועז"), {"Options/His Family", "משפחת אלימלך"},
                  {"Options/Her Family", "משפחת נעמי"}, {"Options/Max Tables", "30"}, {"Options/Max Chairs", "10"},
                  {"Print/Label Frame", "True"}, {"Settings/Window", "2"}})
                old.setValue(QString::fromUtf8(key), QString::fromUtf8(value));
        }
        m_state.WeddingDate = QDate(2027, 6, 1);
        ReadWeddingOptions(m_state, m_store);

        QVERIFY(m_state.OptionsPending && m_state.MaxTables == 30);
        QCOMPARE(m_state.CoupleName, QStringLiteral("רות ובועז"));
        QCOMPARE(QStringList({ini("Options", "Her Family"), ini("Options", "Max Chairs"), ini("Options", "Wedding Date"),
                              ini("Print", "Label Frame"), ini("Print", "Label Address")}),
                 QStringList({QStringLiteral("משפחת נעמי"), "10", "01/06/2027", "True", "True"}));
        QVERIFY(!m_store.hasSection(QStringLiteral("Options")) && !m_store.hasSection(QStringLiteral("Print")));
        QCOMPARE(m_store.read(keys::Window), QStringLiteral("2")); // the window's own section stays

        // Names all present now: the next start leaves the store alone.
        m_store.write(keys::OldCouple, QStringLiteral("ignored"));
        QVERIFY(!nextStart().OptionsPending);
        QCOMPARE(m_store.read(keys::OldCouple), QStringLiteral("ignored"));
    }

    void aFirstStartGetsTheDefaultsAndTheyComeBack()
    {
        ReadWeddingOptions(m_state, m_store);
        QVERIFY(m_state.OptionsPending);
        QCOMPARE(QStringList({ini("Options", "Couple"), ini("Options", "His Family"), ini("Options", "Her Family"),
                              ini("Options", "Max Tables"), ini("Options", "Max Chairs"), ini("Options", "NumOfGroups"),
                              ini("Options", "Wedding Date"), ini("Print", "Label Frame")}),
                 QStringList({QStringLiteral("שמות בני הזוג"), QStringLiteral("משפחת החתן"), QStringLiteral("משפחת הכלה"),
                              "100", "15", "0", values::fromDate(QDate::currentDate()), "<none>"}));

        // One name emptied by hand: with nothing in the store, all three start over.
        WriteIniValues(m_state.iniFile(), "Options", {{"Couple", QStringLiteral("נועה ואיתי")}, {"Her Family", ""}});
        const WeddingState next = nextStart();
        QVERIFY(next.OptionsPending);
        QCOMPARE(next.CoupleName, QStringLiteral("שמות בני הזוג"));
        QCOMPARE(ini("Options", "Her Family"), QStringLiteral("משפחת הכלה"));

        // Settings of the wrong shape fall back to the defaults.
        WriteIniValues(m_state.iniFile(), "Options", {{"Max Tables", QStringLiteral("הרבה")}, {"Max Chairs", "300"},
                                                      {"NumOfGroups", "2"}, {"Wedding Date", "not a date"}});
        WriteIniValue(m_state.iniFile(), "UserGroups", "Group-0", "a");
        const WeddingState odd = nextStart();
        QVERIFY(!odd.OptionsPending && odd.MaxTables == 100 && odd.MaxChairs == 15);
        QCOMPARE(odd.UserGroups, QStringList({"a", ""}));
        QCOMPARE(SettingsFile(m_state.iniFile()).date(keys::WeddingDate, QDate(2030, 1, 1)), QDate(2030, 1, 1));
        QCOMPARE(values::toDate(QStringLiteral("5/3/2027")), std::optional<QDate>(QDate(2027, 3, 5)));
    }
};

VELMORA_TEST_MAIN(WeddingTest)
#include "test_wedding.moc"
