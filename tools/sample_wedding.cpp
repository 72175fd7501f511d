// Makes a sample wedding in a folder: Velmora.mdb with invitations and velmora.ini with
// the couple, the groups and a date. Usage: velmora-sample FOLDER [INVITATIONS]
#include "app/PendingFailure.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "store/SampleWedding.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

using namespace velmora;

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: velmora-sample FOLDER [INVITATIONS]\n");
        return 2;
    }
    const QString folder = QDir(args[1]).absolutePath();
    QDir().mkpath(folder);
    WeddingState state;
    state.AppPath = AppPathFor(folder);
    QFile::remove(state.databaseFile());
    QFile::remove(state.iniFile());

    store::SampleOptions options;
    if (args.size() > 2)
        options.invitations = args[2].toInt();
    state.CoupleName = QStringLiteral("נועה ואיתי");
    state.HisFamily = QStringLiteral("משפחת כהן");
    state.HerFamily = QStringLiteral("משפחת לוי");
    state.UserGroups = QStringList{state.CoupleName, state.HisFamily, state.HerFamily} + store::sampleUserGroups();
    state.UserGroups = state.UserGroups.mid(0, options.groups);
    state.NumOfGroups = quint8(state.UserGroups.size());
    state.MaxTables = quint8(options.maxTables);
    state.MaxChairs = quint8(options.maxChairs);
    state.WeddingDate = QDate::currentDate().addDays(96);
    SaveOptions(state);

    PendingFailure pending;
    try {
        store::Database db = store::Database::create(state.databaseFile(), store::DatabaseLocale, store::DatabaseVersion);
        store::appendTable(db, store::ListTable, store::listFields(), pending);
        store::appendTable(db, store::BudgetTable, store::budgetFields(), pending);
        if (!pending)
            store::fillSampleWedding(db, options);
    } catch (const Failure& failure) {
        pending.fail(failure);
    }
    if (pending) {
        std::fprintf(stderr, "velmora-sample: %s\n", qPrintable(pending.failure().text()));
        return 1;
    }
    std::printf("%d invitations in %s\n", options.invitations, qPrintable(folder));
    return 0;
}
