#include "printing/RecordSet.h"

#include "app/Failure.h"
#include "store/Engine.h"

namespace velmora::printing {

namespace {

[[noreturn]] void fail(int number, const QString& text)
{
    throw Failure(number, text);
}

} // namespace

void RecordSet::appendField(const QString& name, int width)
{
    if (m_open)
        fail(store::failures::NotUpdatable, QStringLiteral("לא ניתן להוסיף שדה לאוסף רשומות פתוח."));
    if (fieldIndex(name) >= 0)
        fail(store::failures::DuplicateField, QStringLiteral("השדה '%1' כבר קיים.").arg(name));
    m_fields.push_back({name, width});
}

void RecordSet::open()
{
    if (m_open)
        fail(store::failures::ObjectInvalid, QStringLiteral("אוסף הרשומות כבר פתוח."));
    if (m_fields.empty())
        fail(store::failures::NoFields, QStringLiteral("לאוסף הרשומות אין שדות."));
    m_open = true;
}

void RecordSet::close()
{
    checkOpen();
    m_open = false;
    m_adding = false;
    m_count = 0;
    m_values = {};
    m_pending = {};
}

void RecordSet::addNew()
{
    checkOpen();
    if (m_adding)
        update();
    m_pending.assign(m_fields.size(), QString());
    m_adding = true;
}

void RecordSet::addNew(const QStringList& fields, const QStringList& values)
{
    checkOpen();
    if (fields.size() != values.size())
        fail(store::failures::ConversionError, QStringLiteral("מספר הערכים אינו כמספר השדות."));
    std::vector<int> indices;
    for (const QString& name : fields)
        indices.push_back(requireField(name));
    addNew();
    for (size_t i = 0; i < indices.size(); ++i)
        setValue(m_fields[size_t(indices[i])].name, values[qsizetype(i)]);
    update();
}

void RecordSet::setValue(const QString& field, const QString& value)
{
    checkOpen();
    const int index = requireField(field);
    if (!m_adding)
        fail(store::failures::NoCurrentRecord, QStringLiteral("אין רשומה נוכחית."));
    if (value.size() > m_fields[size_t(index)].width)
        fail(store::failures::FieldTooSmall,
             QStringLiteral("הערך ארוך מדי לשדה '%1' (%2 תווים).").arg(field).arg(m_fields[size_t(index)].width));
    m_pending[size_t(index)] = value;
}

void RecordSet::update()
{
    checkOpen();
    if (!m_adding)
        fail(store::failures::UpdateWithoutEdit, QStringLiteral("Update ללא AddNew."));
    m_values.insert(m_values.end(), std::make_move_iterator(m_pending.begin()),
                    std::make_move_iterator(m_pending.end()));
    m_pending.clear();
    m_adding = false;
    ++m_count;
}

int RecordSet::fieldIndex(const QString& name) const
{
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (m_fields[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

const QString& RecordSet::value(int record, int field) const
{
    return m_values[size_t(record) * m_fields.size() + size_t(field)];
}

void RecordSet::checkOpen() const
{
    if (!m_open)
        fail(store::failures::ObjectInvalid, QStringLiteral("אוסף הרשומות סגור."));
}

int RecordSet::requireField(const QString& name) const
{
    const int index = fieldIndex(name);
    if (index < 0)
        fail(store::failures::ItemNotFound, QStringLiteral("הפריט '%1' לא נמצא באוסף השדות.").arg(name));
    return index;
}

} // namespace velmora::printing
