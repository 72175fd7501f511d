#pragma once

#include <QWidget>

namespace velmora::ui {

// The seating plan of one table, opened from the map without blocking it. The chairs
// arrive with the seating plan work; until then it names the table and its people.
class TableWindow : public QWidget {
    Q_OBJECT

public:
    TableWindow(int table, int people, QWidget* parent = nullptr);
    int table() const { return m_table; }

private:
    int m_table;
};

} // namespace velmora::ui
