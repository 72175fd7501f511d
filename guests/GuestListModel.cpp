#include "guests/GuestListModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

namespace velmora::guests {

namespace {
// Absolute: in the right-to-left grid a plain AlignRight would be drawn at the left.
constexpr Qt::Alignment Right = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
constexpr Qt::Alignment Centre = Qt::AlignCenter;
} // namespace

const std::array<ListColumn, ColumnCount>& listColumns()
{
    static const std::array<ListColumn, ColumnCount> columns = {{
        {QStringLiteral("שם משפחה"), 1250, Right, QStringLiteral("FAMILY_NAME"), Right},
        {QStringLiteral("שם פרטי"), 1700, Right, QStringLiteral("FIRST_NAME"), Right},
        {QStringLiteral("טלפונים"), 2000, Right, QStringLiteral("PHONES"), Right},
        {QStringLiteral("כמות"), 500, Right, QStringLiteral("INV_NUM"), Centre},
        {QStringLiteral("הערות"), 2200, Right, QStringLiteral("REMARK"), Right},
        {QStringLiteral("אישור"), 600, Right, QStringLiteral("CONFIRM"), Centre},
        {QStringLiteral("מס' שולחן"), 900, Right, QStringLiteral("TABLE_NO"), Centre},
        {QStringLiteral("הזמנה"), 600, Centre, QStringLiteral("INV_STATUS"), Centre},
        {QStringLiteral("כתובת"), 2200, Right, QStringLiteral("ADDRESS"), Right},
        {QStringLiteral("מתנה"), 800, Centre, QStringLiteral("PRESENT"), Right},
    }};
    return columns;
}

void GuestListModel::setRows(std::vector<GuestRow> rows)
{
    beginResetModel();
    m_empty = rows.empty();
    m_rows = std::move(rows);
    if (m_empty)
        m_rows.emplace_back();
    endResetModel();
}

QString GuestListModel::cellText(int gridRow, int column) const
{
    const int row = gridRow - 1;
    if (row < 0 || row >= int(m_rows.size()) || column < 0 || column >= ColumnCount)
        return {};
    return m_rows[size_t(row)].cells[size_t(column)];
}

QColor GuestListModel::evenRowBackground()
{
    return QGuiApplication::palette().color(QPalette::ToolTipBase);
}

QColor GuestListModel::notComingText()
{
    return QColor(128, 128, 128);
}

int GuestListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int GuestListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant GuestListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= int(m_rows.size()) || index.column() >= ColumnCount)
        return {};
    const GuestRow& row = m_rows[size_t(index.row())];
    const int gridRow = index.row() + 1;
    switch (role) {
    case Qt::DisplayRole:
        return row.cells[size_t(index.column())];
    case Qt::TextAlignmentRole:
        return m_empty ? QVariant() : QVariant(listColumns()[size_t(index.column())].cellAlignment);
    case Qt::BackgroundRole:
        if (!m_empty && gridRow % 2 == 0)
            return evenRowBackground();
        return {};
    case Qt::ForegroundRole:
        return row.notComing ? QVariant(notComingText()) : QVariant();
    case Qt::FontRole:
        if (row.notComing) {
            QFont font;
            font.setStrikeOut(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}

QVariant GuestListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return listColumns()[size_t(section)].caption;
    if (role == Qt::TextAlignmentRole)
        return QVariant(listColumns()[size_t(section)].headerAlignment);
    return {};
}

} // namespace velmora::guests
