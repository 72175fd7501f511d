#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QStringList>

#include <array>
#include <vector>

namespace velmora::guests {

inline constexpr int ColumnCount = 10;

// The grid's columns by number: caption, default width (twips), alignments, field.
struct ListColumn {
    QString caption;
    int defaultWidth;
    Qt::Alignment headerAlignment;
    QString field;
    Qt::Alignment cellAlignment;
};
const std::array<ListColumn, ColumnCount>& listColumns();

struct GuestRow {
    std::array<QString, ColumnCount> cells;
    bool notComing = false; // CONFIRM 2: grey and struck through
};

// The guest list as shown: model row r is grid row r + 1 (the grid's row 0 is its header).
class GuestListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // An empty list still shows one empty row under the header.
    void setRows(std::vector<GuestRow> rows);
    const std::vector<GuestRow>& rows() const { return m_rows; }
    bool hasInvitations() const { return !m_empty; }
    QString cellText(int gridRow, int column) const;

    // Colours the system gives tool tips and inactive title bars.
    static QColor evenRowBackground();
    static QColor notComingText();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<GuestRow> m_rows;
    bool m_empty = true;
};

} // namespace velmora::guests
