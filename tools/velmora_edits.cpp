// Edits a wedding through the program's own operations and tells each edit that has
// returned on its standard output, one index a line. The kill test stops it at random
// moments. Usage: velmora-edits FOLDER FROM TO
// With --state instead of FROM TO it prints what the wedding holds, as the lines of
// edits::stateAfter, for the test to compare.
#include "EditSchedule.h"

#include "app/IniFile.h"
#include "app/Prompts.h"
#include "app/Settings.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "budget/Budget.h"
#include "guests/Invitation.h"
#include "guests/Options.h"
#include "guests/Removal.h"
#include "seating/TableMap.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

using namespace velmora;

namespace {

// No edit here asks or tells the user anything: a prompt means something went wrong.
class NoPrompts : public Prompts {
public:
    PromptAnswer show(const MessageRequest& request) override { die(request.text); }
    QString inputBox(const InputRequest& request) override { die(request.prompt); }
    PromptResult<QString> openFile(const FileRequest&) override { die(QStringLiteral("open file")); }
    PromptResult<QString> saveFile(const FileRequest&) override { die(QStringLiteral("save file")); }
    PromptResult<QColor> chooseColour(const QColor&) override { die(QStringLiteral("colour")); }
    PromptResult<PrinterRequest> choosePrinter(const PrinterRequest&) override { die(QStringLiteral("printer")); }
    void beep() override { die(QStringLiteral("beep")); }

private:
    [[noreturn]] static void die(const QString& what)
    {
        std::fprintf(stderr, "unexpected prompt: %s\n", qPrintable(what));
        _exit(3);
    }
};

void tell(const QByteArray& line)
{
    // Straight to the pipe: a line written is a line the parent reads, killed or not.
    const QByteArray bytes = line + '\n';
    if (write(STDOUT_FILENO, bytes.constData(), size_t(bytes.size())) != bytes.size())
        _exit(4);
}

guests::InvitationForm formFor(int block, int slot, int index)
{
    guests::InvitationForm form;
    form.familyName = edits::familyName(block);
    form.firstName = edits::firstName(slot);
    form.phones = edits::phonesOf(index);
    form.invNum = QString::number(edits::peopleOf(index));
    form.remark = edits::remarkOf(index);
    return form;
}

void writeInvitation(WeddingState& state, const edits::Edit& edit, int index)
{
    store::Database db = store::Database::open(state.databaseFile());
    const QString pair = guests::PairSql(edits::familyName(edit.block), edits::firstName(edit.slot));
    store::Recordset rs = db.openRecordset(pair);
    if (edit.kind == edits::Kind::Add) {
        if (!rs.eof()) // added already, by the run that was stopped
            return db.close();
        rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
        rs.addNew();
    } else {
        rs.moveFirst();
        rs.edit();
    }
    guests::WriteInvitation(rs, formFor(edit.block, edit.slot, index), 1, edit.kind == edits::Kind::Add);
    rs.update();
    db.close();
}

void perform(WeddingState& state, Prompts& prompts, int index)
{
    const edits::Edit edit = edits::editAt(index);
    switch (edit.kind) {
    case edits::Kind::Add:
    case edits::Kind::Update:
        writeInvitation(state, edit, index);
        break;
    case edits::Kind::Remove: {
        store::Database db = store::Database::open(state.databaseFile());
        const bool there = !db.openRecordset(guests::PairSql(edits::familyName(edit.block), edits::firstName(edit.slot))).eof();
        db.close();
        if (there && !guests::RemoveInvitation(state, prompts, edits::familyName(edit.block), edits::firstName(edit.slot)))
            _exit(5);
        break;
    }
    case edits::Kind::Options: {
        guests::OptionsForm form = guests::OptionsFromState(state);
        form.groups = edits::groupsOf(edit.block);
        form.couple = form.groups[0];
        form.hisFamily = form.groups[1];
        form.herFamily = form.groups[2];
        guests::ApplyOptions(state, form);
        break;
    }
    case edits::Kind::Places: {
        std::vector<QPointF> places;
        for (int table = 1; table <= edits::PlacedTables; ++table)
            places.emplace_back(edits::placeLeft(edit.block, table), edits::placeTop(edit.block, table));
        seating::SaveTablePositions(state.iniFile(), QString(), places);
        break;
    }
    case edits::Kind::Budget: {
        budget::BudgetLedger ledger;
        ledger.open(state.databaseFile());
        QString sql;
        QStringList boxes = ledger.load(sql);
        for (int branch = 0; branch < boxes.size(); ++branch)
            boxes[branch] = QString::number(edits::amountOf(edit.block, branch));
        if (ledger.save(boxes, prompts, [](int) {}) != budget::BudgetLedger::Outcome::Saved)
            _exit(6);
        ledger.close();
        break;
    }
    }
}

// Ends in a line end, every line a section, a key with its value, or blank: nothing cut.
bool readsWhole(const QString& file)
{
    QFile ini(file);
    if (!ini.open(QIODevice::ReadOnly))
        return false;
    QByteArray text = ini.readAll();
    if (!text.endsWith('\n'))
        return false;
    text.chop(1);
    const QList<QByteArray> lines = text.split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        return line.trimmed().isEmpty() || line.contains('=') || line.trimmed().endsWith(']');
    });
}

// The database opened as the program opens it (a journal left by a kill is rolled back),
// then the settings file as the program reads it.
QStringList wholeState(const WeddingState& state)
{
    store::Database db = store::Database::open(state.databaseFile());
    QStringList lines{QStringLiteral("integrity ") + db.openRecordset(QStringLiteral("pragma integrity_check")).value(0).toString()};
    for (store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST")); !rs.eof(); rs.moveNext())
        lines << QStringLiteral("row %1|%2|%3|%4|%5")
                     .arg(rs.value("FAMILY_NAME").toString(), rs.value("FIRST_NAME").toString(),
                          rs.value("PHONES").toString(), rs.value("INV_NUM").toString(), rs.value("REMARK").toString());
    for (store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET")); !rs.eof(); rs.moveNext())
        for (const store::BudgetBranch& branch : store::budgetBranches())
            lines << QStringLiteral("budget ") + rs.value(branch.field).value<store::Currency>().toString();
    db.close();

    lines << (readsWhole(state.iniFile()) ? QStringLiteral("settings whole") : QStringLiteral("settings cut"));
    const IniSnapshot ini(state.iniFile());
    QStringList groups;
    // Every group the file holds, also any beyond NumOfGroups that a clearing missed.
    const int count = ini.value(keys::NumOfGroups.section, keys::NumOfGroups.name, QStringLiteral("0")).toInt();
    const QString missing = QStringLiteral("<missing>");
    for (int position = 0;; ++position) {
        const QString group = ini.value(keys::Group.section, keys::Group.nameFor(position), missing);
        if (position >= count && group == missing)
            break;
        groups << group;
    }
    lines << QStringLiteral("couple ") + ini.value(keys::Couple.section, keys::Couple.name, missing);
    lines << QStringLiteral("groups ") + groups.join(u'|');
    for (int table = 1; table <= edits::PlacedTables; ++table) {
        const QString place = ini.value(keys::TableNum.section, keys::TableNum.nameFor(table), keys::NoValue);
        if (place != keys::NoValue)
            lines << QStringLiteral("table %1 %2").arg(table).arg(place);
    }
    lines.sort();
    return lines;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4 && !(args.size() == 3 && args[2] == u"--state")) {
        std::fprintf(stderr, "usage: velmora-edits FOLDER FROM TO | velmora-edits FOLDER --state\n");
        return 2;
    }
    WeddingState state;
    state.AppPath = AppPathFor(QDir(args[1]).absolutePath());
    if (args.size() == 3) {
        try {
            std::printf("%s\n", qPrintable(wholeState(state).join(u'\n')));
        } catch (const Failure& failure) {
            std::printf("failure %d %s\n", failure.number(), failure.what());
        }
        return 0;
    }
    state.CrLf = QStringLiteral("\r\n");
    const SettingsFile ini(state.iniFile());
    state.CoupleName = ini.text(keys::Couple);
    state.HisFamily = ini.text(keys::HisFamily);
    state.HerFamily = ini.text(keys::HerFamily);
    state.MaxTables = quint8(ini.number(keys::MaxTables));
    state.MaxChairs = quint8(ini.number(keys::MaxChairs));
    state.WeddingDate = ini.date(keys::WeddingDate, QDate::currentDate());
    NoPrompts prompts;
    tell("ready");
    for (int index = args[2].toInt(); index < args[3].toInt(); ++index) {
        try {
            perform(state, prompts, index);
        } catch (const Failure& failure) {
            std::fprintf(stderr, "edit %d failed: %d %s\n", index, failure.number(), failure.what());
            return 1;
        }
        tell(QByteArray::number(index));
    }
    return 0;
}
