#include "Entries.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Settings.h"
#include "app/TextNumbers.h"
#include "app/Twips.h"
#include "app/WeddingState.h"
#include "app/WindowPlacement.h"
#include "budget/Budget.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "seating/TableMap.h"
#include "store/Currency.h"
#include "store/Upgrade.h"
#include "telephony/PortNames.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace velmora::fuzz {

namespace {

QString text(const uint8_t* data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
}

// A finding: what a reader returned breaks what the program relies on.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

const QString& folder()
{
    static QTemporaryDir dir;
    static const QString path = dir.path() + u'/';
    return path;
}

void writeFile(const QString& name, const uint8_t* data, size_t size)
{
    QFile file(folder() + name);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(reinterpret_cast<const char*>(data), qint64(size));
}

// Says nothing and answers no: the program's reports of a bad file are expected here.
class QuietPrompts : public Prompts {
public:
    PromptAnswer show(const MessageRequest&) override { return PromptAnswer::No; }
    QString inputBox(const InputRequest&) override { return {}; }
    PromptResult<QString> openFile(const FileRequest&) override { return {}; }
    PromptResult<QString> saveFile(const FileRequest&) override { return {}; }
    PromptResult<QColor> chooseColour(const QColor&) override { return {}; }
    PromptResult<PrinterRequest> choosePrinter(const PrinterRequest&) override { return {}; }
    void beep() override {}
};

} // namespace

void settingsFile(const uint8_t* data, size_t size)
{
    const QString file = folder() + QStringLiteral("velmora.ini");
    writeFile(QStringLiteral("velmora.ini"), data, size);
    const SettingsFile ini(file);
    for (const keys::Key* key : {&keys::Couple, &keys::HisFamily, &keys::HerFamily, &keys::NoteBackground})
        require(ini.text(*key).size() <= IniValueMaxLength);
    ini.number(keys::MaxTables);
    ini.flag(keys::LabelFrame);
    ini.date(keys::WeddingDate, QDate(2000, 1, 1));
    for (int position = 0; position < 4; ++position)
        ini.text(keys::Group, position);
    // A write is read back as written and leaves every other key as it stood.
    const QList<std::pair<QString, QString>> others{{QStringLiteral("Options"), QStringLiteral("His Family")},
                                                    {QStringLiteral("UserGroups"), QStringLiteral("Group-0")},
                                                    {QStringLiteral("TablesMap"), QStringLiteral("TableNum-1")}};
    QStringList before;
    for (const auto& [section, key] : others)
        before << ReadIniValue(file, section, key, QStringLiteral("<none>"));
    const QString value = QStringLiteral("ערך %1").arg(size);
    if (WriteIniValue(file, QStringLiteral("Options"), QStringLiteral("Couple"), value)) {
        require(ReadIniValue(file, QStringLiteral("Options"), QStringLiteral("Couple"), {}) == value);
        for (qsizetype i = 0; i < others.size(); ++i)
            require(ReadIniValue(file, others[i].first, others[i].second, QStringLiteral("<none>")) == before[i]);
    }
    ClearIniSection(file, QStringLiteral("UserGroups"));
    require(ReadIniValue(file, QStringLiteral("UserGroups"), QStringLiteral("Group-0"), QStringLiteral("-")) == u"-");
}

void numbers(const uint8_t* data, size_t size)
{
    const QString input = text(data, size);
    LeadingNumber(input);
    LeadingNumber(input, true);
    // A numeric text reads whole as its leading number, blanks aside.
    if (IsNumeric(input))
        require(!std::isnan(LeadingNumber(Trim(input))));
    const QString trimmed = Trim(input);
    require(!trimmed.startsWith(u' ') && !trimmed.endsWith(u' ') && input.contains(trimmed));
    if (store::Currency::isAmountText(input)) {
        // An amount in range converts, and its plain form reads back as the same amount.
        if (const auto amount = store::Currency::fromAmountText(input)) {
            const auto again = store::Currency::fromAmountText(amount->toString());
            require(again && again->units == amount->units);
        }
    } else {
        require(!store::Currency::fromAmountText(input));
    }
    values::toNumber(input);
    values::toFlag(input);
    values::toDate(input);
    budget::IsNumericBox(input);
}

void tablePlaces(const uint8_t* data, size_t size)
{
    const QString file = folder() + QStringLiteral("velmora.ini");
    QByteArray bytes = "[TablesMap]\r\nTableNum-1=";
    bytes.append(reinterpret_cast<const char*>(data), qsizetype(size));
    writeFile(QStringLiteral("velmora.ini"), reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
    const IniSnapshot ini(file);
    for (int table = 1; table <= 3; ++table) {
        if (const auto place = seating::storedPlace(ini, table)) {
            require(std::isfinite(place->x()) && std::isfinite(place->y()));
            // The map puts the table there in whole pixels.
            require(std::fabs(twipsToPixelsF(place->x())) < 1e9 && std::fabs(twipsToPixelsF(place->y())) < 1e9);
        }
    }
    seating::TablePositionsChanged(file, {QPointF(0, 0), QPointF(1440, 720)});
}

void userStore(const uint8_t* data, size_t size)
{
    const QStringList parts = text(data, size).split(u'\n');
    auto part = [&](int i) { return i < parts.size() ? parts[i] : QString(); };
    auto pixels = [&](int i) -> std::optional<int> {
        if (const auto twips = values::toNumber(part(i)))
            return twipsToPixels(*twips);
        return std::nullopt;
    };
    const StoredPlacement stored{pixels(0), pixels(1), pixels(2), pixels(3)};
    const QList<QRect> screens{QRect(0, 0, 1280, 800), QRect(1280, -200, 1920, 1080)};
    const Placement placed = PlaceOnScreens(stored, QSize(786, 417), QSize(200, 150), screens, QMargins(4, 30, 4, 4));
    // Wherever it was stored, the window comes back whole on a screen.
    if (placed.position) {
        const QRect frame(*placed.position, placed.size + QSize(8, 34));
        require(std::any_of(screens.begin(), screens.end(), [&](const QRect& s) { return s.contains(frame); }));
    }
    if (const auto width = values::toNumber(part(4)))
        twipsToPixels(*width);
    values::toFlag(part(5));
    telephony::CommDevices named;
    for (size_t port = 0; port < named.size(); ++port)
        named[port] = Trim(part(6 + int(port)));
    telephony::commDevices({QStringLiteral("/dev/ttyS0"), QStringLiteral("/dev/ttyUSB0")}, named);
}

void databaseFile(const uint8_t* data, size_t size)
{
    writeFile(QStringLiteral("Velmora.mdb"), data, size);
    QFile::remove(folder() + QStringLiteral("Velmora.mdb-journal"));
    WeddingState state;
    state.AppPath = folder();
    state.CrLf = QStringLiteral("\r\n");
    state.AllGuests = QStringLiteral("כל האורחים");
    state.CurGroup = state.AllGuests;
    state.MaxTables = 100;
    state.MaxChairs = 15;
    QuietPrompts prompts;
    guests::GuestListModel model;
    guests::InitList(state, prompts, model, state.CurGroup, QStringLiteral("FAMILY_NAME"), {});
    for (int row = 0; row < model.rowCount(); ++row)
        for (int column = 0; column < model.columnCount(); ++column)
            model.data(model.index(row, column), Qt::DisplayRole);
    PendingFailure pending;
    seating::CountTables(state, pending);
    budget::BudgetLedger ledger;
    try {
        ledger.open(state.databaseFile());
        QString sql;
        ledger.load(sql);
    } catch (const Failure&) {
    }
    ledger.close();
}

} // namespace velmora::fuzz
