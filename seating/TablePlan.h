#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>

#include <vector>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::seating {

// The seating plan of one table, in twips from the top left corner of its window. Chairs
// are made as people are placed; the layout decides only by the number of seats.
inline const QString FreeChair = QStringLiteral("פנוי");
inline const QColor ConfirmedChair(0xFF, 0xE0, 0xC0);
inline const QColor UnsureChair(0xFF, 0xC0, 0xC0);
inline constexpr int ChairWidth = 1575;
inline constexpr int ChairHeight = 495;
inline constexpr int LargestLayout = 15;

struct Chair {
    QString text;
    QColor colour = ConfirmedChair;
    QRect place{2520, 360, ChairWidth, ChairHeight};
    bool visible = false;
};

// The colour of an invitation's chairs; invalid when its answer sets none.
QColor chairColour(int confirm);

// Each chair's top left corner for a table of that many seats, clockwise from the top;
// empty for 0 and above the largest layout.
std::vector<QPoint> chairLayout(int seats);

class TablePlan {
public:
    TablePlan();

    // One invitation on as many chairs as it has people, the first on chair 0.
    void SeatInvitation(Prompts& prompts, const QString& name, int peopleNum, int confirm);
    // Moves the chairs to the layout for that number of seats; the chairs that exist are
    // placed even when the layout asks for more.
    void ArrangeChairs(Prompts& prompts, int seats);

    const std::vector<Chair>& chairs() const { return m_chairs; }

private:
    std::vector<Chair> m_chairs;
};

// Reads the guest list in its stored order and seats everyone at CurTable, then lays the
// chairs out for CurTableChairs. An empty list leaves the one free chair.
TablePlan LoadTablePlan(WeddingState& state, Prompts& prompts);

} // namespace velmora::seating
