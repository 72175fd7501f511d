#pragma once

#include "printing/ui/PrintIcon.h"
#include "seating/TablePlan.h"

#include <QLabel>
#include <QWidget>

#include <vector>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

// One chair of the plan: it shows who sits there and can't be edited; a typed key beeps.
class ChairBox : public QLabel {
    Q_OBJECT

public:
    ChairBox(Prompts& prompts, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Prompts& m_prompts;
};

// The seating plan of one table, CurTable with CurTableChairs people, as it stood when the
// window opened. Opened from the map without blocking it; nothing in it is written back.
class TableWindow : public QWidget {
    Q_OBJECT

public:
    TableWindow(WeddingState& state, Prompts& prompts, QWidget* parent = nullptr);
    int table() const { return m_table; }
    const seating::TablePlan& plan() const { return m_plan; }
    const std::vector<ChairBox*>& chairBoxes() const { return m_chairs; }
    PrintIcon* printButton() const { return m_print; }

    // Prints the plan as it stands on the screen, without the print icon.
    void imgPrint_DblClick();

    // The plan's drawing, without the chairs: the disc and the two legend swatches.
    static QRect discRect();
    static QRect confirmedSwatchRect();
    static QRect unsureSwatchRect();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QLabel* addLabel(const char* name, const QRect& twips, const QString& text, Qt::Alignment alignment);
    void keepOnScreen(bool overOpener);

    int m_table;
    Prompts& m_prompts;
    seating::TablePlan m_plan;
    std::vector<ChairBox*> m_chairs;
    PrintIcon* m_print = nullptr;
};

} // namespace velmora::ui
