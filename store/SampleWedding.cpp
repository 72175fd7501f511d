#include "store/SampleWedding.h"

#include "store/Schema.h"

#include <QRandomGenerator>
#include <QSet>

#include <vector>

namespace velmora::store {

namespace {

const QStringList FamilyNames = {
    "כהן", "לוי", "מזרחי", "פרץ", "ביטון", "דהן", "אברהם", "פרידמן", "אזולאי", "מלכה", "כץ", "יוסף",
    "חדד", "עמר", "אוחיון", "גבאי", "שפירא", "בן דוד", "אלון", "רוזנברג", "ברק", "שטרן", "נחום", "גולן",
    "אשכנזי", "סויסה", "טל", "ויס", "קליין", "בר", "אדלר", "שמעוני", "זילברמן", "אורן", "בן חיים", "ד'אמיקו",
};
const QStringList MenNames = {
    "יוסי", "דוד", "משה", "אבי", "יואב", "איתי", "עומר", "רון", "אלון", "גיל", "עידו", "נועם",
    "אריאל", "תומר", "יונתן", "שי", "חיים", "מאיר", "אליהו", "רפאל",
};
const QStringList WomenNames = {
    "דנה", "מיכל", "רחל", "שירה", "נועה", "יעל", "תמר", "אורית", "רונית", "ליאת", "הילה", "מורן",
    "שרה", "אסתר", "חנה", "ענבל", "קרן", "גלית", "אפרת", "רותם",
};
const QStringList Streets = {
    "הרצל", "ביאליק", "ז'בוטינסקי", "רוטשילד", "הנביאים", "העצמאות", "בן יהודה", "הגפן", "הזית", "האלה",
};
const QStringList Cities = {
    "תל אביב", "ירושלים", "חיפה", "באר שבע", "רמת גן", "פתח תקווה", "אשדוד", "נתניה", "רעננה", "מודיעין",
};
const QStringList Remarks = {
    "", "", "", "", "צמחוני", "להזמין גם את הילדים", "מגיעים מחו\"ל", "כיסא תינוק", "לבדוק כתובת", "ללא גלוטן",
};
const QStringList OtherGifts = {
    "סט כלי מטבח", "תמונה ממוסגרת", "שובר לנופש", "מכונת קפה", "מצעים",
};

template <class List>
const auto& pick(QRandomGenerator& random, const List& list)
{
    return list[qsizetype(random.bounded(quint32(list.size())))];
}

} // namespace

QStringList sampleUserGroups()
{
    return {QStringLiteral("חברים מהצבא"), QStringLiteral("עבודה"), QStringLiteral("שכנים"),
            QStringLiteral("חברים מהאוניברסיטה"), QStringLiteral("מועדון הריקודים")};
}

void fillSampleWedding(Database& db, const SampleOptions& options)
{
    QRandomGenerator random(options.seed);
    std::vector<int> seated(size_t(options.maxTables) + 1, 0);
    QSet<QString> pairs;

    Recordset rs = db.openRecordset(QStringLiteral("select * from %1").arg(ListTable));
    db.inTransaction([&] {
        for (int i = 0; i < options.invitations; ++i) {
            const QString family = pick(random, FamilyNames);
            QString first;
            int people = 1;
            switch (random.bounded(4)) {
            case 0:
                first = pick(random, MenNames);
                break;
            case 1:
                first = pick(random, WomenNames);
                break;
            default:
                first = pick(random, MenNames) + QStringLiteral(" ו") + pick(random, WomenNames);
                people = 2 + (random.bounded(3) == 0 ? int(random.bounded(4)) : 0);
            }
            for (int n = 2; pairs.contains(family + u'|' + first); ++n)
                first = first.section(u' ', 0, 2).left(16) + u' ' + QString::number(n);
            pairs.insert(family + u'|' + first);

            const int confirm = int(random.bounded(10)) < 5 ? 1 : int(random.bounded(3)) == 0 ? 2 : int(random.bounded(2)) ? 0 : 3;
            rs.addNew();
            rs.setValue(QStringLiteral("FIRST_NAME"), first);
            rs.setValue(QStringLiteral("FAMILY_NAME"), family);
            rs.setValue(QStringLiteral("INV_NUM"), people);
            rs.setValue(QStringLiteral("REMARK"), pick(random, Remarks));
            rs.setValue(QStringLiteral("LIST_GROUP"), QString::number(1 + random.bounded(options.groups)));
            rs.setValue(QStringLiteral("PHONES"),
                        random.bounded(8) == 0 ? QString()
                                               : QStringLiteral("05%1-%2").arg(random.bounded(10)).arg(
                                                     1000000 + random.bounded(9000000)));
            rs.setValue(QStringLiteral("CONFIRM"), confirm);
            if (confirm != 2 && random.bounded(10) < 7) {
                const int table = 1 + int(random.bounded(options.maxTables));
                if (seated[size_t(table)] + people <= options.maxChairs) {
                    seated[size_t(table)] += people;
                    rs.setValue(QStringLiteral("TABLE_NO"), table);
                }
            }
            rs.setValue(QStringLiteral("INV_STATUS"), random.bounded(10) < 6);
            rs.setValue(QStringLiteral("ADDRESS"), QStringLiteral("%1 %2, %3")
                                                       .arg(pick(random, Streets))
                                                       .arg(1 + random.bounded(120))
                                                       .arg(pick(random, Cities)));
            const int gift = int(random.bounded(10));
            if (gift < 4) {
                rs.setValue(QStringLiteral("PRESENT_TYPE"), int(random.bounded(2)));
                rs.setValue(QStringLiteral("PRESENT"), QString::number(100 * (2 + random.bounded(15))));
            } else if (gift == 4) {
                rs.setValue(QStringLiteral("PRESENT_TYPE"), 2);
                rs.setValue(QStringLiteral("PRESENT"), pick(random, OtherGifts));
            }
            rs.update();
        }
    });
}

} // namespace velmora::store
