#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::printing {

// A set of text records that lives in memory only: the rows a report prints. Fields are
// appended before it opens; each record is begun by AddNew and completed by Update.
class RecordSet {
public:
    struct Field {
        QString name;
        int width = 0; // characters
    };

    void appendField(const QString& name, int width);
    void open();
    // Releases the rows; a closed set can be opened again empty.
    void close();
    bool isOpen() const { return m_open; }

    // Begins a record with every field empty.
    void addNew();
    // A whole record at once: the named fields get the values, and the record is complete.
    void addNew(const QStringList& fields, const QStringList& values);
    // A value of the record being added.
    void setValue(const QString& field, const QString& value);
    void update();

    int fieldCount() const { return int(m_fields.size()); }
    const Field& field(int index) const { return m_fields[size_t(index)]; }
    // Case-insensitive; -1 when there is no such field.
    int fieldIndex(const QString& name) const;
    int recordCount() const { return m_open ? m_count : 0; }
    const QString& value(int record, int field) const;

private:
    void checkOpen() const;
    int requireField(const QString& name) const;

    std::vector<Field> m_fields;
    std::vector<QString> m_values; // records one after another, fieldCount() values each
    std::vector<QString> m_pending;
    bool m_adding = false;
    bool m_open = false;
    int m_count = 0;
};

} // namespace velmora::printing
