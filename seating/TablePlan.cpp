#include "seating/TablePlan.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/WeddingState.h"

#include <array>

namespace velmora::seating {

namespace {

// Failure number of a chair that was asked for and doesn't exist: the array index error.
constexpr int NoSuchChair = 340;

using Row = std::vector<QPoint>;

const std::array<Row, LargestLayout + 1>& layouts()
{
    static const std::array<Row, LargestLayout + 1> rows = [] {
        std::array<Row, LargestLayout + 1> all;
        const Row eight{{2400, 360}, {4440, 960}, {4680, 1800}, {4440, 2640},
                        {2400, 3240}, {480, 2640}, {240, 1800}, {480, 960}};
        for (int seats = 1; seats <= 8; ++seats)
            all[size_t(seats)] = Row(eight.begin(), eight.begin() + seats);
        all[9] = {{2400, 360}, {4440, 960}, {4680, 1800}, {4440, 2640}, {3480, 3360},
                  {1440, 3360}, {480, 2640}, {240, 1800}, {480, 960}};
        all[10] = {{3480, 240}, {4440, 960}, {4680, 1800}, {4440, 2640}, {3480, 3360},
                   {1440, 3360}, {480, 2640}, {240, 1800}, {480, 960}, {1440, 240}};
        all[11] = {{3480, 240}, {4440, 960}, {4680, 1800}, {4440, 2640}, {4320, 3480}, {2520, 3120},
                   {720, 3480}, {480, 2640}, {240, 1800}, {480, 960}, {1440, 240}};
        all[12] = {{2400, 360}, {4080, 600}, {4440, 1200}, {4800, 1800}, {4440, 2400}, {4080, 3000},
                   {2400, 3240}, {720, 3000}, {360, 2400}, {120, 1800}, {360, 1200}, {720, 600}};
        all[13] = {{2520, 360}, {4200, 360}, {4560, 960}, {4920, 1560}, {4920, 2160}, {4560, 2760}, {3360, 3360},
                   {1560, 3360}, {480, 2760}, {120, 2160}, {120, 1560}, {480, 960}, {840, 360}};
        all[14] = {{2520, 360}, {4200, 360}, {4560, 960}, {4920, 1560}, {4920, 2160}, {4560, 2760}, {4200, 3360},
                   {2520, 3360}, {840, 3360}, {480, 2760}, {120, 2160}, {120, 1560}, {480, 960}, {840, 360}};
        all[15] = {{3360, 240}, {4920, 360}, {4920, 960}, {4800, 1560}, {4800, 2160}, {4560, 2760}, {4200, 3360},
                   {2520, 3480}, {840, 3360}, {480, 2760}, {240, 2160}, {240, 1560}, {120, 960}, {120, 360},
                   {1800, 240}};
        return all;
    }();
    return rows;
}

} // namespace

QColor chairColour(int confirm)
{
    switch (confirm) {
    case 1:
        return ConfirmedChair;
    case 0:
    case 3:
        return UnsureChair;
    default:
        return {};
    }
}

std::vector<QPoint> chairLayout(int seats)
{
    if (seats < 1 || seats > LargestLayout)
        return {};
    return layouts()[size_t(seats)];
}

TablePlan::TablePlan()
{
    m_chairs.push_back(Chair{FreeChair, ConfirmedChair, QRect(2520, 360, ChairWidth, ChairHeight), true});
}

void TablePlan::SeatInvitation(Prompts& prompts, const QString& name, int peopleNum, int confirm)
{
    PendingFailure pending;
    for (int person = 0; person < peopleNum; ++person) {
        pending.attempt([&] {
            if (m_chairs.front().text.trimmed() != FreeChair) {
                Chair chair = m_chairs.front(); // a new chair starts as chair 0 is now
                chair.visible = false;
                m_chairs.push_back(chair);
            }
            Chair& chair = m_chairs.back();
            chair.visible = true;
            chair.text = name;
            if (const QColor colour = chairColour(confirm); colour.isValid())
                chair.colour = colour;
        });
    }
    if (pending)
        prompts.message(QStringLiteral("ארעה שגיאה בנסיון סידור השולחן"));
}

void TablePlan::ArrangeChairs(Prompts& prompts, int seats)
{
    if (seats == 0)
        return;
    if (seats > LargestLayout) {
        prompts.message(QStringLiteral("מספר המושבים לשולחן גבוה מהמותר"));
        return;
    }
    PendingFailure pending;
    auto chair = [&](int index) -> Chair& {
        if (index >= int(m_chairs.size()))
            throw Failure(NoSuchChair, QStringLiteral("Control array element '%1' doesn't exist").arg(index));
        return m_chairs[size_t(index)];
    };
    if (seats == LargestLayout) {
        // The two chairs of the top row are narrowed so that they fit side by side.
        pending.attempt([&] { chair(0).place.setWidth(chair(0).place.width() - 120); });
        pending.attempt([&] { chair(14).place.setWidth(chair(0).place.width() - 120); });
    }
    const std::vector<QPoint> layout = chairLayout(seats);
    for (int index = 0; index < int(layout.size()); ++index)
        pending.attempt([&] { chair(index).place.moveTopLeft(layout[size_t(index)]); });
    if (pending)
        prompts.message(QStringLiteral("ארעה שגיאה ביצירת השולחן"));
}

TablePlan LoadTablePlan(WeddingState& state, Prompts& prompts)
{
    TablePlan plan;
    PendingFailure pending;
    pending.attempt([&] {
        state.WeddingDb = store::Database::open(state.databaseFile());
        state.SqlText = QStringLiteral("select * from VELMORA_LIST");
        state.WeddingRs = state.WeddingDb.openRecordset(state.SqlText);
    });
    if (pending) {
        pending.report(prompts);
        return plan;
    }
    store::Recordset& rs = state.WeddingRs;
    if (rs.eof()) {
        prompts.message(QStringLiteral("רשימת המוזמנים ריקה."));
        rs.close();
        state.WeddingDb.close();
        return plan;
    }
    pending.attempt([&] {
        for (; !rs.eof(); rs.moveNext()) {
            if (rs.value(QStringLiteral("TABLE_NO")).toInt() != state.CurTable)
                continue;
            const QString name = rs.value(QStringLiteral("FAMILY_NAME")).toString() + state.CrLf
                               + rs.value(QStringLiteral("FIRST_NAME")).toString();
            plan.SeatInvitation(prompts, name, rs.value(QStringLiteral("INV_NUM")).toInt(),
                                rs.value(QStringLiteral("CONFIRM")).toInt());
        }
    });
    pending.report(prompts);
    plan.ArrangeChairs(prompts, state.CurTableChairs);
    return plan;
}

} // namespace velmora::seating
