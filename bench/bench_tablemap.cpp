// The table map's refresh (InitTableView) at 10,000 invitations over 100 tables, beside the
// bare read of the seated rows and the recount alone.
#include "BenchSupport.h"

#include "app/PendingFailure.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/QtPrompts.h"
#include "seating/TableMap.h"
#include "seating/ui/TableMapWindow.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace velmora;

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir dir;
    WeddingState state;
    state.AppPath = AppPathFor(dir.path());
    state.MaxTables = 100;
    state.MaxChairs = 255;
    SaveOptions(state);
    bench::makeWedding(state.databaseFile(), 10000);

    ui::QtPrompts prompts;
    ui::TableMapWindow map(state, prompts);
    map.InitTableSetting();
    map.SaveTablePositions();

    const QByteArray seated = "select * from VELMORA_LIST where TABLE_NO > 0";
    const double bare = bench::medianMs(15, [&] { bench::bareRead(state.databaseFile(), seated.constData()); });
    const double count = bench::medianMs(15, [&] {
        PendingFailure pending;
        seating::CountTables(state, pending);
    });
    const double mapView = bench::medianMs(15, [&] { map.InitTableView(1); });
    const double listView = bench::medianMs(15, [&] { map.InitTableView(2); });
    std::printf("table map refresh, 10,000 invitations over 100 tables, median of 15 rounds\n");
    std::printf("  bare read of the seated rows:  %7.2f ms\n", bare);
    std::printf("  recount (CountTables):         %7.2f ms\n", count);
    std::printf("  InitTableView, map view:       %7.2f ms  (with the stored places of 100 tables)\n", mapView);
    std::printf("  InitTableView, detailed list:  %7.2f ms\n", listView);
    return 0;
}
