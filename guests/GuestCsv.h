#pragma once

// The guest list to and from spreadsheets. Out: the list as it is shown. In: each row of
// a file becomes an invitation form that passes the invitation dialog's own checks, and
// the rows that pass are stored in one transaction.

#include "guests/Invitation.h"
#include "store/CsvText.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <map>
#include <vector>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::guests {

class GuestListModel;

// The shown list: the grid's captions, then its rows; counts, tables and money gifts as
// plain numbers. Text that a spreadsheet would take for a formula gets a leading "'".
QByteArray ListCsv(const GuestListModel& model);
// Asks for a file and writes the shown list there.
bool ExportGuestList(const WeddingState& state, Prompts& prompts, const GuestListModel& model);

// What an imported column may fill, in the dialog's order.
enum class ImportField { FamilyName, FirstName, Phones, Address, People, Group, Remark, Answer, Table, Sent, Gift, GiftKind };
inline constexpr int ImportFieldCount = 12;
QString ImportFieldCaption(ImportField field);

// For every field, the file's column that fills it; -1 for none.
using ColumnMap = std::array<int, ImportFieldCount>;
// Recognises the captions of the list and the dialog and the usual Hebrew and English
// headers; each column fills one field at most.
ColumnMap GuessColumns(const QStringList& header);
bool AnyColumn(const ColumnMap& map);

enum class Duplicates { Skip, Update };

struct ImportRow {
    enum class Kind { Add, Update, Skip, Refused };
    Kind kind = Kind::Refused;
    QString reason; // why a row is skipped or refused
    InvitationForm form;
    int target = -1; // Update: the row's position in the list, or -(1 + the adding row) when the file added it
};

struct ImportCounts {
    int add = 0, update = 0, skip = 0, refused = 0;
};
ImportCounts Count(const std::vector<ImportRow>& rows);

// The list as the checks need it: every name pair with its place and seat, and the
// people at every table.
class GuestImport {
public:
    explicit GuestImport(const WeddingState& state) : m_state(state) {}
    // Reads the pairs and seats from the record set of the whole list.
    void readList(store::Recordset& list);

    // The verdict on every data row (the header row, if any, left out), in file order.
    std::vector<ImportRow> check(const store::CsvTable& table, const ColumnMap& map, bool headerRow,
                                 Duplicates duplicates) const;

    // Adds and updates the accepted rows through `list`, inside the caller's transaction.
    static void write(store::Recordset& list, const std::vector<ImportRow>& rows, const WeddingState& state);

private:
    struct Stored {
        int position;
        int table;  // the table it counts at, 0 for none
        int people;
        InvitationForm form; // what an update starts from: the columns a file lacks stay
    };
    const WeddingState& m_state;
    QHash<QString, Stored> m_pairs;
    std::map<int, int> m_seated;
};

// Checks the file's rows against the list as it is now and stores the accepted ones in
// one transaction: all of them, or on a failure none. The counts of what was done.
ImportCounts ImportGuests(const WeddingState& state, const store::CsvTable& table, const ColumnMap& map,
                          bool headerRow, Duplicates duplicates);

} // namespace velmora::guests
