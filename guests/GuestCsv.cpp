#include "guests/GuestCsv.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"
#include "guests/GuestListModel.h"
#include "store/Schema.h"

#include <algorithm>

namespace velmora::guests {

namespace {

const QString Shekel = QStringLiteral("₪");
const QString FormulaStarts = QStringLiteral("=+-@");

bool looksLikeFormula(const QString& cell)
{
    return !cell.isEmpty() && FormulaStarts.contains(cell.front()) && !IsNumeric(cell);
}

// What ListCsv put before a would-be formula comes off again.
QString unguarded(const QString& cell)
{
    if (cell.size() > 1 && cell.front() == u'\'' && looksLikeFormula(cell.mid(1)))
        return cell.mid(1);
    return cell;
}

// Headers compare without case, punctuation or doubled blanks: "מס' שולחן" is "מס שולחן".
QString normalHeader(const QString& header)
{
    QString plain;
    for (QChar c : header.toLower()) {
        if (c.isLetterOrNumber())
            plain += c;
        else if (c.isSpace() || c == u'_' || c == u'-' || c == u'/')
            plain += u' ';
    }
    return plain.simplified();
}

const std::array<QStringList, ImportFieldCount>& headerNames()
{
    static const std::array<QStringList, ImportFieldCount> names = {{
        {QStringLiteral("שם משפחה"), QStringLiteral("משפחה"), QStringLiteral("last name"), QStringLiteral("lastname"),
         QStringLiteral("surname"), QStringLiteral("family name"), QStringLiteral("family")},
        {QStringLiteral("שם פרטי"), QStringLiteral("פרטי"), QStringLiteral("first name"), QStringLiteral("firstname"),
         QStringLiteral("given name")},
        {QStringLiteral("טלפונים"), QStringLiteral("טלפון"), QStringLiteral("נייד"), QStringLiteral("phone"),
         QStringLiteral("phones"), QStringLiteral("mobile"), QStringLiteral("telephone"), QStringLiteral("tel")},
        {QStringLiteral("כתובת"), QStringLiteral("address")},
        {QStringLiteral("כמות"), QStringLiteral("מס מוזמנים"), QStringLiteral("מספר מוזמנים"), QStringLiteral("מוזמנים"),
         QStringLiteral("people"), QStringLiteral("guests"), QStringLiteral("count")},
        {QStringLiteral("קבוצה"), QStringLiteral("group")},
        {QStringLiteral("הערות"), QStringLiteral("הערה"), QStringLiteral("remark"), QStringLiteral("remarks"),
         QStringLiteral("notes"), QStringLiteral("note"), QStringLiteral("comments")},
        {QStringLiteral("אישור"), QStringLiteral("תשובה"), QStringLiteral("answer"), QStringLiteral("rsvp"),
         QStringLiteral("confirm")},
        {QStringLiteral("מס שולחן"), QStringLiteral("מספר שולחן"), QStringLiteral("שולחן"), QStringLiteral("table"),
         QStringLiteral("table no"), QStringLiteral("table number")},
        {QStringLiteral("הזמנה"), QStringLiteral("הזמנה נשלחה"), QStringLiteral("נשלחה"), QStringLiteral("sent"),
         QStringLiteral("invitation sent")},
        {QStringLiteral("מתנה"), QStringLiteral("gift"), QStringLiteral("present")},
        {QStringLiteral("סוג מתנה"), QStringLiteral("gift type"), QStringLiteral("gift kind")},
    }};
    return names;
}

// The answer column: the list's own texts, and the plain words people type.
std::optional<int> answerOf(const QString& text)
{
    static const QHash<QString, int> answers = {
        {QString(), 0},          {QStringLiteral("0"), 0},        {QStringLiteral("מגיע"), 1},
        {QStringLiteral("מגיעה"), 1}, {QStringLiteral("מגיעים"), 1}, {QStringLiteral("כן"), 1},
        {QStringLiteral("1"), 1}, {QStringLiteral("yes"), 1},     {QStringLiteral("לא"), 2},
        {QStringLiteral("לא מגיע"), 2}, {QStringLiteral("2"), 2}, {QStringLiteral("no"), 2},
        {QStringLiteral("??"), 3}, {QStringLiteral("?"), 3},      {QStringLiteral("לא בטוח"), 3},
        {QStringLiteral("3"), 3}, {QStringLiteral("maybe"), 3},
    };
    const auto found = answers.constFind(Trim(text).toLower());
    return found == answers.constEnd() ? std::nullopt : std::optional<int>(*found);
}

// The kind of gift by the dialog's option captions or plain words; empty: none given.
std::optional<std::optional<InvitationForm::Gift>> giftKindOf(const QString& text)
{
    using Gift = InvitationForm::Gift;
    static const QHash<QString, Gift> kinds = {
        {QStringLiteral("צ'ק"), Gift::Cheque}, {QStringLiteral("צק"), Gift::Cheque},   {QStringLiteral("cheque"), Gift::Cheque},
        {QStringLiteral("check"), Gift::Cheque}, {QStringLiteral("0"), Gift::Cheque}, {QStringLiteral("מזומן"), Gift::Cash},
        {QStringLiteral("cash"), Gift::Cash},    {QStringLiteral("1"), Gift::Cash},    {QStringLiteral("אחר"), Gift::Other},
        {QStringLiteral("other"), Gift::Other},  {QStringLiteral("2"), Gift::Other},
    };
    const QString plain = Trim(text).toLower();
    if (plain.isEmpty())
        return std::optional<Gift>();
    const auto found = kinds.constFind(plain);
    return found == kinds.constEnd() ? std::nullopt : std::optional<std::optional<Gift>>(*found);
}

bool sentOf(const QString& text)
{
    static const QStringList no = {QString(), QStringLiteral("לא"), QStringLiteral("0"), QStringLiteral("no"),
                                   QStringLiteral("false")};
    return !no.contains(Trim(text).toLower());
}

QString key(const InvitationForm& form)
{
    return Trim(form.familyName) + QChar(0) + Trim(form.firstName);
}

// The table a stored form counts at, as WriteInvitation stores it.
int storedTable(const InvitationForm& form, bool adding)
{
    const QString table = Trim(form.tableNo);
    if (form.confirm() == 2 || table.isEmpty() || (!adding && table == u"0"))
        return 0;
    return std::max(0, int(LeadingNumber(table)));
}

const store::FieldDef& listField(const char* name)
{
    const auto& fields = store::listFields();
    return *std::find_if(fields.begin(), fields.end(),
                         [name](const store::FieldDef& f) { return f.name == QLatin1String(name); });
}

} // namespace

QByteArray ListCsv(const GuestListModel& model)
{
    QByteArray out = store::CsvBom();
    out.reserve(int(model.rows().size()) * 96 + 256);
    QStringList cells;
    for (const ListColumn& column : listColumns())
        cells << column.caption;
    store::AppendCsvRow(out, cells);
    if (!model.hasInvitations())
        return out;
    for (const GuestRow& row : model.rows()) {
        cells.clear();
        for (int c = 0; c < ColumnCount; ++c) {
            QString cell = row.cells[size_t(c)];
            if (c == 9 && cell.startsWith(Shekel))
                cell.remove(0, Shekel.size()); // a money gift: the number alone
            else if (looksLikeFormula(cell))
                cell.prepend(u'\'');
            cells << cell;
        }
        store::AppendCsvRow(out, cells);
    }
    return out;
}

bool ExportGuestList(const WeddingState& state, Prompts& prompts, const GuestListModel& model)
{
    return store::SaveCsvFile(prompts, QStringLiteral("רשימת מוזמנים.csv"), state.AppPath, ListCsv(model));
}

QString ImportFieldCaption(ImportField field)
{
    static const std::array<QString, ImportFieldCount> captions = {
        QStringLiteral("שם משפחה"), QStringLiteral("שם פרטי"), QStringLiteral("טלפונים"), QStringLiteral("כתובת"),
        QStringLiteral("מס' מוזמנים"), QStringLiteral("קבוצה"), QStringLiteral("הערות"), QStringLiteral("אישור"),
        QStringLiteral("מס' שולחן"), QStringLiteral("הזמנה נשלחה"), QStringLiteral("מתנה"), QStringLiteral("סוג מתנה")};
    return captions[size_t(field)];
}

ColumnMap GuessColumns(const QStringList& header)
{
    ColumnMap map;
    map.fill(-1);
    std::vector<bool> taken(size_t(header.size()), false);
    for (int f = 0; f < ImportFieldCount; ++f) {
        // The better name first: "שם משפחה" over a column that only says "משפחה".
        for (const QString& name : headerNames()[size_t(f)]) {
            for (qsizetype c = 0; c < header.size() && map[size_t(f)] < 0; ++c) {
                if (!taken[size_t(c)] && normalHeader(header[c]) == normalHeader(name)) {
                    map[size_t(f)] = int(c);
                    taken[size_t(c)] = true;
                }
            }
        }
    }
    return map;
}

bool AnyColumn(const ColumnMap& map)
{
    return std::any_of(map.begin(), map.end(), [](int c) { return c >= 0; });
}

ImportCounts Count(const std::vector<ImportRow>& rows)
{
    ImportCounts counts;
    for (const ImportRow& row : rows) {
        switch (row.kind) {
        case ImportRow::Kind::Add:
            ++counts.add;
            break;
        case ImportRow::Kind::Update:
            ++counts.update;
            break;
        case ImportRow::Kind::Skip:
            ++counts.skip;
            break;
        case ImportRow::Kind::Refused:
            ++counts.refused;
            break;
        }
    }
    return counts;
}

void GuestImport::readList(store::Recordset& list)
{
    m_pairs.clear();
    m_seated.clear();
    if (list.recordCount() == 0)
        return;
    const int family = list.fieldIndex(QStringLiteral("FAMILY_NAME")), first = list.fieldIndex(QStringLiteral("FIRST_NAME")),
              table = list.fieldIndex(QStringLiteral("TABLE_NO")), people = list.fieldIndex(QStringLiteral("INV_NUM"));
    const QString openingGroup = m_state.CurGroup == m_state.AllGuests ? m_state.CoupleName : m_state.CurGroup;
    for (list.moveFirst(); !list.eof(); list.moveNext()) {
        const QVariant tableNo = list.value(table);
        const int seat = tableNo.isNull() ? 0 : std::max(0, tableNo.toInt());
        const int invited = list.value(people).toInt();
        if (seat > 0)
            m_seated[seat] += invited;
        // The dialog's search stops at the first row of a pair.
        const QString pair = list.value(family).toString() + QChar(0) + list.value(first).toString();
        if (m_pairs.contains(pair))
            continue;
        PendingFailure unreadable; // a Null the form can't show: the file's cell or an empty field takes its place
        m_pairs.insert(pair, Stored{list.absolutePosition(), seat, invited,
                                    ReadInvitation(m_state, list, openingGroup, unreadable)});
    }
}

std::vector<ImportRow> GuestImport::check(const store::CsvTable& table, const ColumnMap& map, bool headerRow,
                                          Duplicates duplicates) const
{
    std::vector<ImportRow> out;
    if (table.rows.empty())
        return out;
    QHash<QString, Stored> pairs = m_pairs;
    std::map<int, int> seated = m_seated;
    const QStringList& first = table.rows.front();
    const qsizetype width = first.size();
    const QString openingGroup = m_state.CurGroup == m_state.AllGuests ? m_state.CoupleName : m_state.CurGroup;
    const auto seatedCount = [&seated](int t) {
        const auto found = seated.find(t);
        return quint8(found == seated.end() ? 0 : std::clamp(found->second, 0, 255));
    };

    out.reserve(table.rows.size());
    for (size_t r = headerRow ? 1 : 0; r < table.rows.size(); ++r) {
        const QStringList& cells = table.rows[r];
        ImportRow row;
        auto refuse = [&](const QString& reason) {
            row.kind = ImportRow::Kind::Refused;
            row.reason = reason;
            out.push_back(row);
        };
        const auto extra = std::find_if(cells.begin() + std::min(width, cells.size()), cells.end(),
                                        [](const QString& cell) { return !cell.trimmed().isEmpty(); });
        if (extra != cells.end()) {
            refuse(QStringLiteral("בשורה %1 תאים, יותר מ-%2 העמודות של הקובץ.").arg(cells.size()).arg(width));
            continue;
        }
        if (headerRow && cells == first) {
            refuse(QStringLiteral("שורת כותרות חוזרת."));
            continue;
        }
        // Fields of one line take a break in a cell as a blank, as a line edit takes a pasted one.
        auto cell = [&](ImportField f) {
            const int c = map[size_t(f)];
            QString text = c >= 0 && c < cells.size() ? unguarded(cells[c]) : QString();
            if (f != ImportField::Address && f != ImportField::Remark)
                text.replace(u'\n', u' ');
            return text;
        };
        const auto mapped = [&map](ImportField f) { return map[size_t(f)] >= 0; };
        InvitationForm& form = row.form;
        form.familyName = cell(ImportField::FamilyName);
        form.firstName = cell(ImportField::FirstName);
        const QString pair = key(form);
        const auto existing = pairs.constFind(pair);
        const bool duplicate = existing != pairs.constEnd();
        const bool updating = duplicate && duplicates == Duplicates::Update;
        if (updating) { // the row as stored, with what the file has put over it
            const InvitationForm names = form;
            form = existing->form;
            form.familyName = names.familyName;
            form.firstName = names.firstName;
        }
        for (const auto& [field, text] : {std::pair{ImportField::Phones, &form.phones}, std::pair{ImportField::Address, &form.address},
                                          std::pair{ImportField::People, &form.invNum}, std::pair{ImportField::Remark, &form.remark},
                                          std::pair{ImportField::Table, &form.tableNo}}) {
            if (mapped(field))
                *text = cell(field);
        }
        if (mapped(ImportField::Sent))
            form.invSent = sentOf(cell(ImportField::Sent));
        const QString groupText = Trim(cell(ImportField::Group));
        if (!groupText.isEmpty() || !updating)
            form.group = groupText;
        const QString kindText = cell(ImportField::GiftKind);
        const auto kind = giftKindOf(kindText);
        if (!kind) {
            refuse(QStringLiteral("השדה סוג מתנה אינו מוכר: ") + Trim(kindText));
            continue;
        }
        if (mapped(ImportField::Gift)) {
            // Without a kind, a gift marked "₪" or a number is money and anything else a description.
            QString gift = Trim(cell(ImportField::Gift));
            const bool shekel = gift.startsWith(Shekel) || gift.endsWith(Shekel);
            if (shekel)
                gift = Trim(gift.remove(Shekel));
            form.present = gift;
            form.gift = shekel || gift.isEmpty() || IsNumeric(gift) ? InvitationForm::Gift::Cheque
                                                                    : InvitationForm::Gift::Other;
        }
        if (*kind)
            form.gift = **kind;
        if (mapped(ImportField::Answer)) {
            const QString answerText = cell(ImportField::Answer);
            const auto answer = answerOf(answerText);
            if (!answer) {
                refuse(QStringLiteral("השדה אישור אינו מוכר: ") + Trim(answerText));
                continue;
            }
            form.confirmOk = *answer == 1;
            form.confirmNotOk = *answer == 2;
            form.confirmUnknown = *answer == 3;
        }

        const int tableNo = int(LeadingNumber(form.tableNo));
        const int own = updating && existing->table == tableNo ? existing->people : 0;
        if (const auto refusal = CheckInvitation(m_state, form, seatedCount, own)) {
            refuse(*refusal);
            continue;
        }
        if (form.group.isEmpty())
            form.group = openingGroup;
        else if (GroupIndex(m_state, form.group) == 0) {
            refuse(QStringLiteral("הקבוצה של ההזמנה אינה קיימת."));
            continue;
        }
        // The store's own limits, which the dialog leaves to a failed save.
        if (LeadingNumber(form.invNum) > 255) {
            refuse(QStringLiteral("השדה מס' מוזמנים מוגבל ל-255 איש."));
            continue;
        }
        try {
            store::convertForField(listField("INV_NUM"), LeadingNumber(form.invNum));
            if (!Trim(form.tableNo).isEmpty())
                store::convertForField(listField("TABLE_NO"), LeadingNumber(Trim(form.tableNo)));
        } catch (const Failure& failure) {
            refuse(failure.text());
            continue;
        }
        if (duplicate && !updating) {
            row.kind = ImportRow::Kind::Skip;
            row.reason = DuplicateMessage;
            out.push_back(row);
            continue;
        }
        if (updating) {
            row.kind = ImportRow::Kind::Update;
            row.target = existing->position;
            if (existing->table > 0)
                seated[existing->table] -= existing->people;
        } else {
            row.kind = ImportRow::Kind::Add;
        }
        const Stored now{updating ? existing->position : -1 - int(out.size()), storedTable(form, !updating),
                         int(LeadingNumber(form.invNum)), form};
        if (now.table > 0)
            seated[now.table] += now.people;
        pairs.insert(pair, now);
        out.push_back(row);
    }
    return out;
}

void GuestImport::write(store::Recordset& list, const std::vector<ImportRow>& rows, const WeddingState& state)
{
    std::vector<int> added(rows.size(), -1);
    for (size_t i = 0; i < rows.size(); ++i) {
        const ImportRow& row = rows[i];
        const int group = GroupIndex(state, row.form.group);
        if (row.kind == ImportRow::Kind::Add) {
            list.addNew();
            WriteInvitation(list, row.form, group, true);
            list.update();
            added[i] = list.recordCount() - 1;
        } else if (row.kind == ImportRow::Kind::Update) {
            list.setAbsolutePosition(row.target >= 0 ? row.target : added[size_t(-1 - row.target)]);
            list.edit();
            WriteInvitation(list, row.form, group, false);
            list.update();
        }
    }
}

ImportCounts ImportGuests(const WeddingState& state, const store::CsvTable& table, const ColumnMap& map,
                          bool headerRow, Duplicates duplicates)
{
    store::Database db = store::Database::open(state.databaseFile());
    store::Recordset list = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
    GuestImport import(state);
    import.readList(list);
    const std::vector<ImportRow> rows = import.check(table, map, headerRow, duplicates);
    db.inTransaction([&] { GuestImport::write(list, rows, state); });
    list.close();
    db.close();
    return Count(rows);
}

} // namespace velmora::guests
