#pragma once

#include <QString>
#include <QVariant>

#include <array>

namespace velmora {
class PendingFailure;
class Prompts;
struct WeddingState;
}

namespace velmora::guests {

class GuestListModel;

// What the list shows beside the group and the order: the hide-filters and the direction
// of the sort.
struct ListView {
    bool hideNotComing = false;     // popIgnoreCnfNotOk
    bool hideNotConfirmed = false;  // popIgnoreNotCnf
    QString sortDirection;          // empty, "ASC" or "DESC"
};

// What InitList leaves for the window to show.
struct ListOutcome {
    bool endProgram = false; // the database could not be brought up to date
    bool hasRows = false;    // commands that need a row are enabled
    bool dialEnabled = false;
    QString caption;                 // lblList
    std::array<QString, 7> panels;   // status bar panels 1 to 7; 1 and 7 stay as they are
};

bool CheckEvenNum(int number);

// The text of a column that must hold a value: a Null leaves it empty and is kept as a
// failure to report.
QString PlainText(const QVariant& value, PendingFailure& pending);

// The number LIST_GROUP holds for a group name, 0 when the name isn't a group.
int GroupNumber(const WeddingState& state, const QString& group);

// The query of the list.
QString ListSql(const WeddingState& state, const QString& group, const QString& order, const ListView& view);

// Fills the model with the invitations of `group` in `order`, works out the totals in
// WeddingState and the status texts, and reports a failure once at the end.
ListOutcome InitList(WeddingState& state, Prompts& prompts, GuestListModel& model, const QString& group,
                     const QString& order, const ListView& view);

} // namespace velmora::guests
