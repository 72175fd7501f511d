#pragma once

// The wedding database engine: the only code that talks to SQLite. It offers what the
// program asks of a database: files, table definitions with typed fields and their rules,
// and updatable record sets over SQL text. Every failure is a velmora::Failure with a
// number and a text the callers show unchanged.

#include "app/Failure.h"
#include "store/Currency.h"

#include <QString>
#include <QVariant>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace velmora::store {

namespace detail {
struct Connection;
}

enum class FieldType { Text, Byte, Integer, Boolean, Currency };

// A field's definition. Values read back: Text as QString, Byte and Integer as int,
// Boolean as bool, Currency as Currency; Null as an invalid QVariant.
struct FieldDef {
    QString name;
    FieldType type = FieldType::Text;
    int size = 0;                 // Text only: most characters
    bool required = false;        // Null refused at Update
    bool allowZeroLength = false; // Text only: "" refused at Update unless set

    friend bool operator==(const FieldDef&, const FieldDef&) = default;
};

// Failure numbers of the engine.
namespace failures {
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int UpdateWithoutEdit = 3020;
inline constexpr int FileNotFound = 3024;
inline constexpr int ReadOnly = 3027;
inline constexpr int InvalidPath = 3044;
inline constexpr int DiskFull = 3035;
inline constexpr int Corrupt = 3049;
inline constexpr int TableExists = 3010;
inline constexpr int QueryError = 3075;
inline constexpr int FieldTooSmall = 3163;
inline constexpr int RecordDeleted = 3167;
inline constexpr int DuplicateField = 3191;
inline constexpr int DatabaseExists = 3204;
inline constexpr int Locked = 3218;
inline constexpr int NoFields = 3264;
inline constexpr int ItemNotFound = 3265;
inline constexpr int RequiredNull = 3314;
inline constexpr int ZeroLength = 3315;
inline constexpr int NotADatabase = 3343;
inline constexpr int Overflow = 3349;
inline constexpr int ObjectInvalid = 3420;
inline constexpr int ConversionError = 3421;
inline constexpr int NotUpdatable = 3027;
} // namespace failures

class Database;

// A table definition: unattached until appended to a database; then appending a field
// adds the column to the file at once, Null in every existing row.
class TableDef {
public:
    explicit TableDef(QString name = {});

    const QString& name() const { return m_name; }
    bool attached() const { return bool(m_connection); }

    FieldDef createField(const QString& name, FieldType type, int size = 0) const;
    void appendField(const FieldDef& field);
    int fieldCount() const { return int(m_fields.size()); }
    const FieldDef& field(int position) const;
    const std::vector<FieldDef>& fields() const { return m_fields; }

private:
    friend class Database;
    QString m_name;
    std::vector<FieldDef> m_fields;
    std::shared_ptr<detail::Connection> m_connection;
};

class Recordset;

class Database {
public:
    Database() = default; // absent

    // A new, empty file; fails when it exists or can't be made. The locale and version
    // options of older engines are accepted and have no effect.
    static Database create(const QString& path, const QString& locale = {}, int version = 0);
    // Shared and writable; fails when the file is missing or isn't a database.
    static Database open(const QString& path);

    bool isOpen() const;
    QString path() const;

    TableDef createTableDef(const QString& name) const;
    // Makes the table real and attaches the definition.
    void appendTableDef(TableDef& table);
    int tableDefCount() const;
    TableDef tableDef(int position) const;
    TableDef tableDef(const QString& name) const;

    Recordset openRecordset(const QString& sql) const;

    // Runs `work` as one transaction, for tools that write many rows at once; the
    // program's own operations store each Update by itself.
    void inTransaction(const std::function<void()>& work);

    // Record sets become invalid; closing twice fails.
    void close();

private:
    explicit Database(std::shared_ptr<detail::Connection> connection);
    std::vector<QString> tableNames() const;
    TableDef readTableDef(const QString& name) const;
    std::shared_ptr<detail::Connection> m_connection;
};

// The rows of one query, read whole when opened. A "select * from TABLE ..." set is
// updatable; any other query gives a read-only set.
class Recordset {
public:
    Recordset() = default; // absent

    bool isOpen() const;
    bool updatable() const { return !m_table.isEmpty(); }

    bool eof() const;
    void moveFirst();
    void moveNext();
    int recordCount() const;
    int absolutePosition() const;
    void setAbsolutePosition(int position);

    int fieldCount() const { return int(m_fields.size()); }
    const FieldDef& fieldDef(int index) const;
    int fieldIndex(const QString& name) const; // -1 when missing
    QVariant value(const QString& field) const;
    QVariant value(int index) const;
    void setValue(const QString& field, const QVariant& value);

    void addNew();
    void edit();
    // Checks every field against its rules, then stores the row; nothing is stored if a
    // rule fails.
    void update();
    void cancelUpdate();
    void deleteCurrent();
    void close();

private:
    friend class Database;
    enum class EditMode { None, Edit, AddNew };

    void checkOpen() const;
    void checkCurrent() const;
    int checkedField(const QString& name) const;

    std::shared_ptr<detail::Connection> m_connection;
    QString m_table;
    std::vector<FieldDef> m_fields;
    std::deque<QVariant> m_cells; // row-major, fieldCount() a row; grows without moving what it holds
    std::vector<qint64> m_rowIds;
    int m_position = 0;
    bool m_onDeleted = false;
    bool m_closed = false;
    EditMode m_editMode = EditMode::None;
    std::vector<QVariant> m_buffer;
    std::vector<bool> m_dirty;
};

// The value as a field of this definition stores it, or the failure that Update reports.
QVariant convertForField(const FieldDef& field, const QVariant& value);

} // namespace velmora::store
