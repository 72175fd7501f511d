#include "store/Engine.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <sqlite3.h>

#include <cmath>

namespace velmora::store {

namespace detail {

struct Connection {
    sqlite3* db = nullptr;
    QString path;

    ~Connection() { close(); }
    bool isOpen() const { return db != nullptr; }
    void close()
    {
        if (db) {
            sqlite3_close_v2(db);
            db = nullptr;
        }
    }
};

} // namespace detail

namespace {

using detail::Connection;

QString quoted(const QString& name)
{
    QString escaped = name;
    escaped.replace(u'"', QStringLiteral("\"\""));
    return u'"' + escaped + u'"';
}

[[noreturn]] void fail(int number, const QString& text)
{
    throw Failure(number, text);
}

// Maps an SQLite result to the engine's numbers, with a Hebrew text for the user.
[[noreturn]] void failSqlite(sqlite3* db, int rc, const QString& path = {})
{
    const QString detail = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    // SQLite says "full" for ENOSPC only. A write refused for a quota or a file size
    // limit is the same to the user: there is no room for the change.
    if ((rc & 0xff) == SQLITE_IOERR && db && sqlite3_extended_errcode(db) == SQLITE_IOERR_WRITE)
        rc = SQLITE_FULL;
    switch (rc & 0xff) {
    case SQLITE_READONLY:
        fail(failures::ReadOnly, QStringLiteral("לא ניתן לעדכן: מסד הנתונים מיועד לקריאה בלבד."));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        fail(failures::Locked, QStringLiteral("לא ניתן לעדכן: מסד הנתונים נעול כעת על ידי תהליך אחר."));
    case SQLITE_FULL:
        fail(failures::DiskFull, QStringLiteral("אין די מקום פנוי בדיסק."));
    case SQLITE_NOTADB:
        fail(failures::NotADatabase, QStringLiteral("הקובץ '%1' אינו מסד נתונים מוכר.").arg(path));
    case SQLITE_CORRUPT:
        fail(failures::Corrupt, QStringLiteral("מסד הנתונים '%1' פגום.").arg(path));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_IOERR:
        fail(failures::InvalidPath, QStringLiteral("לא ניתן לפתוח את הקובץ '%1' (%2).").arg(path, detail));
    default:
        fail(failures::QueryError, QStringLiteral("שגיאה במסד הנתונים: %1").arg(detail));
    }
}

class Statement {
public:
    Statement(Connection& connection, const QString& sql) : m_db(connection.db), m_path(connection.path)
    {
        const QByteArray text = sql.toUtf8();
        const int rc = sqlite3_prepare_v2(m_db, text.constData(), int(text.size()), &m_statement, nullptr);
        if (rc != SQLITE_OK)
            failSqlite(m_db, rc, connection.path);
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return m_statement; }
    bool step()
    {
        const int rc = sqlite3_step(m_statement);
        if (rc == SQLITE_ROW)
            return true;
        // The file is open already: what can't be opened now is its journal, to be made
        // beside it in a folder that takes no new file. The database is read-only there.
        if (rc == SQLITE_CANTOPEN)
            fail(failures::ReadOnly, QStringLiteral("לא ניתן לעדכן: מסד הנתונים מיועד לקריאה בלבד."));
        if (rc != SQLITE_DONE)
            failSqlite(m_db, rc, m_path);
        return false;
    }
    void bind(int index, const QVariant& value);
    QString text(int column) const
    {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        return QString::fromUtf8(data, sqlite3_column_bytes(m_statement, column));
    }

private:
    sqlite3* m_db;
    QString m_path;
    sqlite3_stmt* m_statement = nullptr;
};

void Statement::bind(int index, const QVariant& value)
{
    if (!value.isValid() || value.isNull()) {
        sqlite3_bind_null(m_statement, index);
    } else if (value.metaType() == QMetaType::fromType<Currency>()) {
        sqlite3_bind_int64(m_statement, index, value.value<Currency>().units);
    } else if (value.metaType() == QMetaType::fromType<bool>()) {
        sqlite3_bind_int(m_statement, index, value.toBool() ? 1 : 0);
    } else if (value.metaType() == QMetaType::fromType<int>()) {
        sqlite3_bind_int(m_statement, index, value.toInt());
    } else {
        const QByteArray text = value.toString().toUtf8();
        sqlite3_bind_text(m_statement, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    }
}

void exec(Connection& connection, const QString& sql)
{
    Statement statement(connection, sql);
    while (statement.step()) {
    }
}

Connection& live(const std::shared_ptr<Connection>& connection)
{
    if (!connection || !connection->isOpen())
        fail(failures::ObjectInvalid, QStringLiteral("מסד הנתונים אינו פתוח."));
    return *connection;
}

// Field types are kept in the column's declared type, the rules as real constraints, so
// the file reads plainly with any SQLite tool.
QString declaredType(const FieldDef& field)
{
    switch (field.type) {
    case FieldType::Text:
        return QStringLiteral("TEXT(%1)").arg(field.size);
    case FieldType::Byte:
        return QStringLiteral("TINYINT");
    case FieldType::Integer:
        return QStringLiteral("SMALLINT");
    case FieldType::Boolean:
        return QStringLiteral("BOOLEAN");
    case FieldType::Currency:
        return QStringLiteral("CURRENCY"); // ten-thousandths, as an integer
    }
    return {};
}

QString zeroLengthCheck(const QString& name)
{
    return QStringLiteral("CHECK (%1 <> '')").arg(quoted(name));
}

QString columnDefinition(const FieldDef& field)
{
    QString definition = quoted(field.name) + u' ' + declaredType(field);
    if (field.required)
        definition += QStringLiteral(" NOT NULL");
    if (field.type == FieldType::Text && !field.allowZeroLength)
        definition += u' ' + zeroLengthCheck(field.name);
    return definition;
}

std::optional<FieldDef> parseDeclaredType(const QString& name, const QString& declared)
{
    static const QRegularExpression text(QStringLiteral("^TEXT\\s*\\((\\d+)\\)$"),
                                         QRegularExpression::CaseInsensitiveOption);
    FieldDef field;
    field.name = name;
    const QString type = declared.trimmed().toUpper();
    if (const auto match = text.match(type); match.hasMatch()) {
        field.type = FieldType::Text;
        field.size = match.captured(1).toInt();
    } else if (type == u"TINYINT") {
        field.type = FieldType::Byte;
    } else if (type == u"SMALLINT") {
        field.type = FieldType::Integer;
    } else if (type == u"BOOLEAN") {
        field.type = FieldType::Boolean;
    } else if (type == u"CURRENCY") {
        field.type = FieldType::Currency;
    } else {
        return std::nullopt;
    }
    return field;
}

QVariant readCell(sqlite3_stmt* statement, int column, const FieldDef* field)
{
    const int kind = sqlite3_column_type(statement, column);
    if (kind == SQLITE_NULL)
        return {};
    if (field) {
        switch (field->type) {
        case FieldType::Byte:
        case FieldType::Integer:
            if (kind == SQLITE_INTEGER)
                return sqlite3_column_int(statement, column);
            break;
        case FieldType::Boolean:
            if (kind == SQLITE_INTEGER)
                return sqlite3_column_int64(statement, column) != 0;
            break;
        case FieldType::Currency:
            if (kind == SQLITE_INTEGER)
                return QVariant::fromValue(Currency{sqlite3_column_int64(statement, column)});
            break;
        case FieldType::Text:
            break;
        }
    }
    switch (kind) {
    case SQLITE_INTEGER: {
        const qint64 value = sqlite3_column_int64(statement, column);
        return value >= INT_MIN && value <= INT_MAX ? QVariant(int(value)) : QVariant(value);
    }
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    default: {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return QString::fromUtf8(data, sqlite3_column_bytes(statement, column));
    }
    }
}

const QString& valueTooLong() { static const QString t = QStringLiteral("הערך ארוך מדי לשדה '%1': מותרים עד %2 תווים."); return t; }

[[noreturn]] void conversionFailure(const FieldDef& field)
{
    fail(failures::ConversionError, QStringLiteral("שגיאה בהמרת סוג הנתונים של השדה '%1'.").arg(field.name));
}

[[noreturn]] void overflowFailure(const FieldDef& field)
{
    fail(failures::Overflow, QStringLiteral("הערך חורג מהתחום של השדה '%1'.").arg(field.name));
}

// A number from any value; text must read whole as a decimal number.
double numberOf(const FieldDef& field, const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toDouble();
    if (value.metaType() == QMetaType::fromType<bool>())
        return value.toBool() ? -1 : 0;
    if (value.metaType() == QMetaType::fromType<QString>()) {
        bool ok = false;
        const double number = value.toString().trimmed().toDouble(&ok);
        if (!ok)
            conversionFailure(field);
        return number;
    }
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        conversionFailure(field);
    return number;
}

int wholeNumber(const FieldDef& field, const QVariant& value, int low, int high)
{
    const double number = std::nearbyint(numberOf(field, value)); // half to even
    if (!(number >= low && number <= high))
        overflowFailure(field);
    return int(number);
}

} // namespace

QVariant convertForField(const FieldDef& field, const QVariant& value)
{
    if (!value.isValid() || value.isNull()) {
        if (field.required)
            fail(failures::RequiredNull,
                 QStringLiteral("השדה '%1' אינו יכול להכיל ערך ריק (Null), כי זהו שדה חובה.").arg(field.name));
        return {};
    }
    switch (field.type) {
    case FieldType::Text: {
        QString text;
        if (value.metaType() == QMetaType::fromType<Currency>())
            text = value.value<Currency>().toString();
        else if (value.metaType() == QMetaType::fromType<bool>())
            text = value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        else
            text = value.toString();
        if (text.isEmpty() && !field.allowZeroLength)
            fail(failures::ZeroLength, QStringLiteral("השדה '%1' אינו יכול להכיל מחרוזת ריקה.").arg(field.name));
        if (field.size > 0 && text.size() > field.size)
            fail(failures::FieldTooSmall, valueTooLong().arg(field.name).arg(field.size));
        return text;
    }
    case FieldType::Byte:
        return wholeNumber(field, value, 0, 255);
    case FieldType::Integer:
        return wholeNumber(field, value, -32768, 32767);
    case FieldType::Boolean: {
        if (value.metaType() == QMetaType::fromType<QString>()) {
            const QString text = value.toString().trimmed();
            if (text.compare(u"True", Qt::CaseInsensitive) == 0 || text.compare(u"Yes", Qt::CaseInsensitive) == 0)
                return true;
            if (text.compare(u"False", Qt::CaseInsensitive) == 0 || text.compare(u"No", Qt::CaseInsensitive) == 0)
                return false;
        }
        if (value.metaType() == QMetaType::fromType<bool>())
            return value.toBool();
        return numberOf(field, value) != 0;
    }
    case FieldType::Currency: {
        if (value.metaType() == QMetaType::fromType<Currency>())
            return value;
        std::optional<Currency> amount;
        if (value.metaType() == QMetaType::fromType<QString>()) {
            // The store takes money as people here write it ("1,000", "₪ 250.5").
            const QString text = value.toString();
            if (!Currency::isAmountText(text))
                conversionFailure(field);
            amount = Currency::fromAmountText(text);
        } else if (value.metaType() == QMetaType::fromType<int>() || value.metaType() == QMetaType::fromType<qint64>()) {
            const qint64 whole = value.toLongLong();
            if (std::llabs(whole) > std::numeric_limits<qint64>::max() / Currency::Scale)
                overflowFailure(field);
            amount = Currency::fromWhole(whole);
        } else {
            amount = Currency::fromDouble(numberOf(field, value));
        }
        if (!amount)
            overflowFailure(field);
        return QVariant::fromValue(*amount);
    }
    }
    return {};
}

// ---- TableDef ----

TableDef::TableDef(QString name) : m_name(std::move(name)) {}

FieldDef TableDef::createField(const QString& name, FieldType type, int size) const
{
    FieldDef field;
    field.name = name;
    field.type = type;
    field.size = type == FieldType::Text ? (size > 0 ? size : 50) : 0;
    return field;
}

void TableDef::appendField(const FieldDef& field)
{
    if (field.name.trimmed().isEmpty())
        fail(failures::ConversionError, QStringLiteral("לשדה חסר שם."));
    for (const FieldDef& existing : m_fields) {
        if (existing.name.compare(field.name, Qt::CaseInsensitive) == 0)
            fail(failures::DuplicateField, QStringLiteral("השדה '%1' מוגדר יותר מפעם אחת.").arg(field.name));
    }
    if (m_connection) {
        Connection& connection = live(m_connection);
        exec(connection, QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(quoted(m_name), columnDefinition(field)));
    }
    m_fields.push_back(field);
}

const FieldDef& TableDef::field(int position) const
{
    if (position < 0 || position >= fieldCount())
        fail(failures::ItemNotFound, QStringLiteral("הפריט %1 לא נמצא באוסף השדות של '%2'.").arg(position).arg(m_name));
    return m_fields[size_t(position)];
}

// ---- Database ----

Database::Database(std::shared_ptr<Connection> connection) : m_connection(std::move(connection)) {}

namespace {

std::shared_ptr<Connection> connect(const QString& path, int flags)
{
    auto connection = std::make_shared<Connection>();
    connection->path = path;
    // The program has one thread: SQLite's own locking would only cost time.
    const int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &connection->db, flags | SQLITE_OPEN_NOMUTEX,
                                   nullptr);
    if (rc != SQLITE_OK) {
        const int code = rc;
        connection->close();
        failSqlite(nullptr, code, path);
    }
    sqlite3_extended_result_codes(connection->db, 0);
    sqlite3_busy_timeout(connection->db, 1500);
    // A file brought in from elsewhere is untrusted: its schema may not run anything.
    sqlite3_db_config(connection->db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection->db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(connection->db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(connection->db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    return connection;
}

constexpr int ApplicationId = 0x564C4D52; // "VLMR"

} // namespace

Database Database::create(const QString& path, const QString& /*locale*/, int /*version*/)
{
    const QFileInfo info(path);
    if (info.exists())
        fail(failures::DatabaseExists, QStringLiteral("מסד הנתונים '%1' כבר קיים.").arg(path));
    if (!info.absoluteDir().exists())
        fail(failures::InvalidPath, QStringLiteral("'%1' אינו נתיב חוקי.").arg(path));
    auto connection = connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    exec(*connection, QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
    return Database(std::move(connection));
}

Database Database::open(const QString& path)
{
    const QFileInfo info(path);
    if (path.trimmed().isEmpty() || !info.exists())
        fail(failures::FileNotFound, QStringLiteral("לא ניתן למצוא את הקובץ '%1'.").arg(path));
    if (!info.isFile() || info.size() == 0) // SQLite would take an empty file for a new database
        fail(failures::NotADatabase, QStringLiteral("הקובץ '%1' אינו מסד נתונים מוכר.").arg(path));
    auto connection = connect(path, SQLITE_OPEN_READWRITE);
    // The header is only read on first use: make that happen now.
    exec(*connection, QStringLiteral("SELECT count(*) FROM sqlite_schema"));
    return Database(std::move(connection));
}

bool Database::isOpen() const
{
    return m_connection && m_connection->isOpen();
}

QString Database::path() const
{
    return m_connection ? m_connection->path : QString();
}

void Database::close()
{
    live(m_connection).close();
}

TableDef Database::createTableDef(const QString& name) const
{
    return TableDef(name);
}

void Database::appendTableDef(TableDef& table)
{
    Connection& connection = live(m_connection);
    if (table.attached())
        fail(failures::TableExists, QStringLiteral("הטבלה '%1' כבר קיימת.").arg(table.name()));
    if (table.m_fields.empty())
        fail(failures::NoFields, QStringLiteral("לא הוגדרו שדות: לא ניתן להוסיף את הטבלה '%1'.").arg(table.name()));
    for (const QString& existing : tableNames()) {
        if (existing.compare(table.name(), Qt::CaseInsensitive) == 0)
            fail(failures::TableExists, QStringLiteral("הטבלה '%1' כבר קיימת.").arg(table.name()));
    }
    QStringList columns;
    for (const FieldDef& field : table.m_fields)
        columns << columnDefinition(field);
    exec(connection, QStringLiteral("CREATE TABLE %1 (%2)").arg(quoted(table.name()), columns.join(QStringLiteral(", "))));
    table.m_connection = m_connection;
}

std::vector<QString> Database::tableNames() const
{
    Connection& connection = live(m_connection);
    Statement statement(connection, QStringLiteral("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY rowid"));
    std::vector<QString> names;
    while (statement.step())
        names.push_back(statement.text(0));
    return names;
}

int Database::tableDefCount() const
{
    return int(tableNames().size());
}

TableDef Database::tableDef(int position) const
{
    const auto names = tableNames();
    if (position < 0 || position >= int(names.size()))
        fail(failures::ItemNotFound, QStringLiteral("הפריט %1 לא נמצא באוסף הטבלאות.").arg(position));
    return readTableDef(names[size_t(position)]);
}

TableDef Database::tableDef(const QString& name) const
{
    for (const QString& existing : tableNames()) {
        if (existing.compare(name, Qt::CaseInsensitive) == 0)
            return readTableDef(existing);
    }
    fail(failures::ItemNotFound, QStringLiteral("הפריט '%1' לא נמצא באוסף הטבלאות.").arg(name));
}

TableDef Database::readTableDef(const QString& name) const
{
    Connection& connection = live(m_connection);
    QString createSql;
    {
        Statement statement(connection, QStringLiteral("SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?"));
        statement.bind(1, name);
        if (statement.step())
            createSql = statement.text(0);
    }
    TableDef table(name);
    Statement columns(connection, QStringLiteral("SELECT name, type, \"notnull\" FROM pragma_table_info(?)"));
    columns.bind(1, name);
    while (columns.step()) {
        const QString fieldName = columns.text(0);
        FieldDef field = parseDeclaredType(fieldName, columns.text(1)).value_or(FieldDef{fieldName, FieldType::Text, 255});
        field.required = sqlite3_column_int(columns.get(), 2) != 0;
        field.allowZeroLength = field.type == FieldType::Text && !createSql.contains(zeroLengthCheck(fieldName));
        table.m_fields.push_back(field);
    }
    table.m_connection = m_connection;
    return table;
}

void Database::inTransaction(const std::function<void()>& work)
{
    Connection& connection = live(m_connection);
    exec(connection, QStringLiteral("BEGIN"));
    try {
        work();
    } catch (...) {
        exec(connection, QStringLiteral("ROLLBACK"));
        throw;
    }
    try {
        exec(connection, QStringLiteral("COMMIT"));
    } catch (const Failure&) {
        // A commit that failed on a full disk may leave the transaction open: undo it all.
        if (!sqlite3_get_autocommit(connection.db))
            sqlite3_exec(connection.db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

Recordset Database::openRecordset(const QString& sql) const
{
    Connection& connection = live(m_connection);
    // "select * from TABLE ..." is updatable: the row ids come along, hidden.
    static const QRegularExpression selectAll(
        QStringLiteral("^\\s*select\\s+\\*\\s+from\\s+(\\w+|\"[^\"]+\"|\\[[^\\]]+\\])(?=\\s|;|$)"),
        QRegularExpression::CaseInsensitiveOption);
    Recordset set;
    set.m_connection = m_connection;
    QString text = sql;
    const auto match = selectAll.match(sql);
    if (match.hasMatch()) {
        QString table = match.captured(1);
        if (table.startsWith(u'"') || table.startsWith(u'['))
            table = table.mid(1, table.size() - 2);
        set.m_table = table;
        set.m_fields = readTableDef(table).fields();
        text = QStringLiteral("select rowid, * from ") + sql.mid(match.capturedStart(1));
    }
    Statement statement(connection, text);
    const int offset = set.updatable() ? 1 : 0;
    const int columns = sqlite3_column_count(statement.get()) - offset;
    if (!set.updatable()) {
        for (int c = 0; c < columns; ++c) {
            const QString name = QString::fromUtf8(sqlite3_column_name(statement.get(), c));
            const char* declared = sqlite3_column_decltype(statement.get(), c);
            set.m_fields.push_back(parseDeclaredType(name, QString::fromUtf8(declared ? declared : ""))
                                       .value_or(FieldDef{name, FieldType::Text, 0}));
        }
    }
    std::vector<const FieldDef*> typed(size_t(columns), nullptr);
    for (int c = 0; c < columns && c < set.fieldCount(); ++c)
        typed[size_t(c)] = &set.m_fields[size_t(c)];
    while (statement.step()) {
        if (offset)
            set.m_rowIds.push_back(sqlite3_column_int64(statement.get(), 0));
        for (int c = 0; c < columns; ++c)
            set.m_cells.push_back(readCell(statement.get(), c + offset, typed[size_t(c)]));
    }
    if (!offset)
        set.m_rowIds.resize(set.m_cells.size() / std::max<size_t>(1, size_t(columns)));
    return set;
}

// ---- Recordset ----

bool Recordset::isOpen() const
{
    return !m_closed && m_connection && m_connection->isOpen();
}

void Recordset::checkOpen() const
{
    if (!isOpen())
        fail(failures::ObjectInvalid, QStringLiteral("אוסף הרשומות סגור או אינו תקף עוד."));
}

void Recordset::checkCurrent() const
{
    checkOpen();
    if (m_onDeleted)
        fail(failures::RecordDeleted, QStringLiteral("הרשומה נמחקה."));
    if (eof())
        fail(failures::NoCurrentRecord, QStringLiteral("אין רשומה נוכחית."));
}

bool Recordset::eof() const
{
    return m_position >= int(m_rowIds.size());
}

void Recordset::moveFirst()
{
    checkOpen();
    if (m_rowIds.empty())
        fail(failures::NoCurrentRecord, QStringLiteral("אין רשומה נוכחית."));
    m_editMode = EditMode::None;
    m_position = 0;
    m_onDeleted = false;
}

void Recordset::moveNext()
{
    checkOpen();
    m_editMode = EditMode::None;
    // After a delete the next row already stands at the current place.
    if (m_onDeleted) {
        m_onDeleted = false;
        return;
    }
    if (eof())
        fail(failures::NoCurrentRecord, QStringLiteral("אין רשומה נוכחית."));
    ++m_position;
}

int Recordset::recordCount() const
{
    return int(m_rowIds.size());
}

int Recordset::absolutePosition() const
{
    return eof() ? -1 : m_position;
}

void Recordset::setAbsolutePosition(int position)
{
    checkOpen();
    if (position < 0 || position >= recordCount())
        fail(failures::NoCurrentRecord, QStringLiteral("אין רשומה נוכחית."));
    m_editMode = EditMode::None;
    m_position = position;
    m_onDeleted = false;
}

const FieldDef& Recordset::fieldDef(int index) const
{
    if (index < 0 || index >= fieldCount())
        fail(failures::ItemNotFound, QStringLiteral("הפריט %1 לא נמצא באוסף השדות.").arg(index));
    return m_fields[size_t(index)];
}

int Recordset::fieldIndex(const QString& name) const
{
    // Names come as written nearly always: an exact match first is much cheaper.
    for (int i = 0; i < fieldCount(); ++i) {
        if (m_fields[size_t(i)].name == name)
            return i;
    }
    for (int i = 0; i < fieldCount(); ++i) {
        if (m_fields[size_t(i)].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int Recordset::checkedField(const QString& name) const
{
    const int index = fieldIndex(name);
    if (index < 0)
        fail(failures::ItemNotFound, QStringLiteral("הפריט '%1' לא נמצא באוסף השדות.").arg(name));
    return index;
}

QVariant Recordset::value(const QString& field) const
{
    return value(checkedField(field));
}

QVariant Recordset::value(int index) const
{
    if (index < 0 || index >= fieldCount())
        fieldDef(index); // fails
    if (m_editMode != EditMode::None)
        return m_buffer[size_t(index)];
    if (m_closed || m_onDeleted || eof() || !m_connection->isOpen())
        checkCurrent(); // fails
    return m_cells[size_t(m_position) * m_fields.size() + size_t(index)];
}

void Recordset::setValue(const QString& field, const QVariant& value)
{
    checkOpen();
    const int index = checkedField(field);
    if (m_editMode == EditMode::None)
        fail(failures::UpdateWithoutEdit, QStringLiteral("עדכון ללא AddNew או Edit."));
    m_buffer[size_t(index)] = value;
    m_dirty[size_t(index)] = true;
}

void Recordset::addNew()
{
    checkOpen();
    if (!updatable())
        fail(failures::NotUpdatable, QStringLiteral("לא ניתן לעדכן: אוסף הרשומות מיועד לקריאה בלבד."));
    m_buffer.assign(m_fields.size(), QVariant());
    m_dirty.assign(m_fields.size(), false);
    m_editMode = EditMode::AddNew;
}

void Recordset::edit()
{
    checkCurrent();
    if (!updatable())
        fail(failures::NotUpdatable, QStringLiteral("לא ניתן לעדכן: אוסף הרשומות מיועד לקריאה בלבד."));
    const auto first = m_cells.begin() + qsizetype(size_t(m_position) * m_fields.size());
    m_buffer.assign(first, first + qsizetype(m_fields.size()));
    m_dirty.assign(m_fields.size(), false);
    m_editMode = EditMode::Edit;
}

void Recordset::cancelUpdate()
{
    checkOpen();
    if (m_editMode == EditMode::None)
        fail(failures::UpdateWithoutEdit, QStringLiteral("ביטול עדכון ללא AddNew או Edit."));
    m_editMode = EditMode::None;
}

void Recordset::update()
{
    checkOpen();
    if (m_editMode == EditMode::None)
        fail(failures::UpdateWithoutEdit, QStringLiteral("עדכון ללא AddNew או Edit."));
    std::vector<QVariant> stored(m_fields.size());
    for (size_t i = 0; i < m_fields.size(); ++i)
        stored[i] = convertForField(m_fields[i], m_buffer[i]);

    Connection& connection = live(m_connection);
    QStringList names;
    std::vector<size_t> changed;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (m_dirty[i]) {
            names << quoted(m_fields[i].name);
            changed.push_back(i);
        }
    }
    if (m_editMode == EditMode::AddNew) {
        QString sql = names.isEmpty()
            ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoted(m_table))
            : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(quoted(m_table), names.join(u','), QStringList(names.size(), QStringLiteral("?")).join(u','));
        Statement statement(connection, sql);
        for (size_t k = 0; k < changed.size(); ++k)
            statement.bind(int(k + 1), stored[changed[k]]);
        statement.step();
        m_rowIds.push_back(sqlite3_last_insert_rowid(connection.db));
        m_cells.insert(m_cells.end(), stored.begin(), stored.end());
    } else {
        if (!changed.empty()) {
            QStringList assignments;
            for (const QString& name : names)
                assignments << name + QStringLiteral(" = ?");
            Statement statement(connection, QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                                .arg(quoted(m_table), assignments.join(QStringLiteral(", "))));
            for (size_t k = 0; k < changed.size(); ++k)
                statement.bind(int(k + 1), stored[changed[k]]);
            sqlite3_bind_int64(statement.get(), int(changed.size() + 1), m_rowIds[size_t(m_position)]);
            statement.step();
        }
        std::copy(stored.begin(), stored.end(), m_cells.begin() + qsizetype(size_t(m_position) * m_fields.size()));
    }
    m_editMode = EditMode::None;
}

void Recordset::deleteCurrent()
{
    checkCurrent();
    if (!updatable())
        fail(failures::NotUpdatable, QStringLiteral("לא ניתן לעדכן: אוסף הרשומות מיועד לקריאה בלבד."));
    Connection& connection = live(m_connection);
    Statement statement(connection, QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quoted(m_table)));
    sqlite3_bind_int64(statement.get(), 1, m_rowIds[size_t(m_position)]);
    statement.step();
    const auto width = qsizetype(m_fields.size());
    const auto first = m_cells.begin() + m_position * width;
    m_cells.erase(first, first + width);
    m_rowIds.erase(m_rowIds.begin() + m_position);
    m_onDeleted = true;
    m_editMode = EditMode::None;
}

void Recordset::close()
{
    checkOpen();
    m_closed = true;
    m_cells.clear();
    m_rowIds.clear();
}

} // namespace velmora::store
