#include "store/Schema.h"

#include "app/PendingFailure.h"
#include "app/Product.h"
#include "app/Prompts.h"
#include "app/WeddingState.h"

#include <QFile>

namespace velmora::store {

namespace {

FieldDef text(const char* name, int size, bool required, bool allowZeroLength)
{
    return FieldDef{QString::fromLatin1(name), FieldType::Text, size, required, allowZeroLength};
}

FieldDef plain(const char* name, FieldType type, bool required = false)
{
    return FieldDef{QString::fromLatin1(name), type, 0, required, false};
}

} // namespace

const std::vector<FieldDef>& listFields()
{
    static const std::vector<FieldDef> fields = {
        text("FIRST_NAME", 20, true, false),
        text("FAMILY_NAME", 20, true, false),
        plain("INV_NUM", FieldType::Byte),
        text("REMARK", 40, false, true),
        text("LIST_GROUP", 50, false, false),
        plain("CHECK", FieldType::Integer),
        text("PHONES", 30, false, true),
        plain("CONFIRM", FieldType::Byte, true),
        plain("TABLE_NO", FieldType::Byte),
        plain("INV_STATUS", FieldType::Boolean),
        text("ADDRESS", 50, false, true),
        plain("PRESENT_TYPE", FieldType::Byte),
        text("PRESENT", 20, false, true),
    };
    return fields;
}

const std::vector<BudgetBranch>& budgetBranches()
{
    static const std::vector<BudgetBranch> branches = {
        {QStringLiteral("B_DRESS"), QStringLiteral("שמלת כלה")},
        {QStringLiteral("B_SUIT"), QStringLiteral("חליפת חתן")},
        {QStringLiteral("B_SHOES"), QStringLiteral("נעלי כלה")},
        {QStringLiteral("B_JEWEL"), QStringLiteral("אביזרי אופנה")},
        {QStringLiteral("B_HAIR_DESIGN"), QStringLiteral("עיצוב שיער")},
        {QStringLiteral("B_MAKEUP"), QStringLiteral("איפור")},
        {QStringLiteral("B_RINGS"), QStringLiteral("טבעות")},
        {QStringLiteral("B_FLOWERS"), QStringLiteral("פרחים")},
        {QStringLiteral("B_INV"), QStringLiteral("הזמנות")},
        {QStringLiteral("B_RABBINATE"), QStringLiteral("רבנות")},
        {QStringLiteral("B_RABBI"), QStringLiteral("רב")},
        {QStringLiteral("B_GARDEN"), QStringLiteral("אולם / גן אירועים")},
        {QStringLiteral("B_KAITRING"), QStringLiteral("קייטרינג")},
        {QStringLiteral("B_BAR"), QStringLiteral("שירותי בר")},
        {QStringLiteral("B_PRODUCER"), QStringLiteral("מפיק לחתונה")},
        {QStringLiteral("B_ENGAGEMENT"), QStringLiteral("מסיבת אירוסין")},
        {QStringLiteral("B_SHABAT_HATAN"), QStringLiteral("שבת חתן")},
        {QStringLiteral("B_STILS"), QStringLiteral("צילום סטילס")},
        {QStringLiteral("B_VIDEO"), QStringLiteral("צילום ווידאו")},
        {QStringLiteral("B_MUSIC"), QStringLiteral("שירותי מוזיקה")},
        {QStringLiteral("B_LIGHTING"), QStringLiteral("עיצוב תאורה")},
        {QStringLiteral("B_CEREMONY_DESIGN"), QStringLiteral("עיצוב חופה")},
        {QStringLiteral("B_TABLE_DESIGN"), QStringLiteral("עיצוב שולחנות")},
        {QStringLiteral("B_COCKTAIL"), QStringLiteral("קבלת פנים")},
        {QStringLiteral("B_SOUCENIR_GIFT"), QStringLiteral("שי מזכרת")},
        {QStringLiteral("B_CAR"), QStringLiteral("קישוט רכב")},
        {QStringLiteral("B_SECURITY"), QStringLiteral("שמירה ואבטחה")},
        {QStringLiteral("B_GIMMICK"), QStringLiteral("גימיקים")},
        {QStringLiteral("B_TIPS"), QStringLiteral("טיפים")},
        {QStringLiteral("B_EXTRA"), QStringLiteral("שונות")},
    };
    return branches;
}

std::vector<FieldDef> budgetFields()
{
    std::vector<FieldDef> fields;
    for (const BudgetBranch& branch : budgetBranches())
        fields.push_back(FieldDef{branch.field, FieldType::Currency, 0, true, false});
    return fields;
}

void appendTable(Database& db, const QString& name, const std::vector<FieldDef>& fields, PendingFailure& pending)
{
    TableDef table = db.createTableDef(name);
    for (const FieldDef& wanted : fields) {
        pending.attempt([&] {
            FieldDef field = table.createField(wanted.name, wanted.type, wanted.size);
            if (wanted.type == FieldType::Text)
                field.allowZeroLength = wanted.allowZeroLength;
            field.required = wanted.required;
            table.appendField(field);
        });
    }
    pending.attempt([&] { db.appendTableDef(table); });
}

namespace {

void removeWithJournal(const QString& path)
{
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-journal"));
}

} // namespace

bool CreateNewDatabase(WeddingState& state, Prompts& prompts)
{
    // Built under a passing name and renamed into place when whole. A file that failed
    // after its guest list was made is put in place all the same: the upgrade at the next
    // list load adds what is missing. One that failed before that (a full disk) is taken
    // away, so that the next start simply tries again instead of meeting a file that no
    // upgrade can complete.
    const QString file = state.databaseFile();
    const QString building = file + QStringLiteral(".new");
    removeWithJournal(building); // left by a start that was cut short
    PendingFailure pending;
    Database db;
    bool listMade = false;
    pending.attempt([&] { db = Database::create(building, DatabaseLocale, DatabaseVersion); });
    if (db.isOpen()) {
        appendTable(db, ListTable, listFields(), pending);
        listMade = !pending;
        appendTable(db, BudgetTable, budgetFields(), pending);
        pending.attempt([&] { db.close(); });
    }
    db = Database();
    const bool keep = !pending || listMade;
    if (keep) {
        // A journal left by a failed step goes along, so that the next open can roll it back.
        const QString journal = QStringLiteral("-journal");
        if (QFile::exists(building + journal) && !QFile::rename(building + journal, file + journal))
            pending.fail(failures::InvalidPath, QStringLiteral("לא ניתן ליצור את הקובץ '%1'.").arg(file));
        if (!QFile::rename(building, file))
            pending.fail(failures::InvalidPath, QStringLiteral("לא ניתן ליצור את הקובץ '%1'.").arg(file));
    }
    if (!pending)
        pending.attempt([&] { state.WeddingDb = Database::open(file); });
    if (pending) {
        removeWithJournal(building);
        prompts.critical(QStringLiteral("!ארעה שגיאה קריטית בתהליך יצירת התוכנה") + state.CrLf + product::WebAddress
                             + state.CrLf + product::SupportMail,
                         QStringLiteral("שדרוג גירסת תוכנה"));
        return false;
    }
    prompts.message(QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה."));
    return true;
}

} // namespace velmora::store
