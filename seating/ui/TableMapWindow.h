#pragma once

#include <QWidget>

namespace velmora {
struct WeddingState;
}

namespace velmora::ui {

// The table map window: built hidden at start and kept for the whole run. Its map and
// detailed list arrive with the seating work; until then it holds the operations the
// main window calls and the close rule.
class TableMapWindow : public QWidget {
    Q_OBJECT

public:
    explicit TableMapWindow(WeddingState& state, QWidget* parent = nullptr);

    void InitTableSetting();
    void InitTableView(int mode);
    void ChangeTableViewMode(int mode);

    bool ProgramClosing = false;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    WeddingState& m_state;
};

} // namespace velmora::ui
