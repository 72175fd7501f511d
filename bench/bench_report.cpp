// The printed guest list of 5,000 invitations: its layout, layout and a written PDF, and the
// preview's first page on screen. With a file name, the PDF is kept there to look at.
#include "BenchSupport.h"

#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/QtPrompts.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "printing/GuestReport.h"
#include "printing/ReportLayout.h"
#include "printing/ui/GuestReportPreview.h"
#include "printing/ui/ReportPreview.h"

#include <QApplication>
#include <QPrinter>
#include <QTemporaryDir>

#include <cstdio>

using namespace velmora;

int main(int argc, char** argv)
{
    QTemporaryDir home;
    bench::runHeadless(home);
    QApplication app(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const QString keep = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const int rows = argc > 2 ? std::atoi(argv[2]) : 5000;
    ui::QtPrompts prompts;

    QTemporaryDir dir;
    WeddingState state;
    state.AppPath = AppPathFor(dir.path());
    state.AllGuests = state.CurGroup = QStringLiteral("כל האורחים");
    bench::makeWedding(state.databaseFile(), rows);
    guests::GuestListModel model;
    const guests::ListOutcome shown =
        guests::InitList(state, prompts, model, state.CurGroup, QString(), guests::ListView{});
    printing::GuestReport built = printing::buildGuestReport(state, model, shown.caption);

    size_t pages = 0;
    const double layout = bench::medianMs(9, [&] { pages = printing::layOut(built.report).pages.size(); });
    const QString pdf = keep.isEmpty() ? dir.filePath(QStringLiteral("report.pdf")) : keep;
    const double written = bench::medianMs(3, [&] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setOutputFileName(pdf);
        ui::printReport(built.report, printer);
    });
    int previewPages = 0;
    const double preview = bench::medianMs(3, [&] {
        ui::ReportPreview* window = ui::PrintReport(state, prompts, model, shown.caption, nullptr);
        QApplication::processEvents();
        window->grab(); // the page painted, whether or not the platform drew it yet
        previewPages = window->pageCount();
        window->close();
        delete window;
    });

    std::printf("guest list report, %d invitations, %zu pages on A4\n", rows, pages);
    std::printf("  layout                        %8.1f ms  (aim: <= 150 ms)\n", layout);
    std::printf("  layout and written PDF        %8.1f ms  (aim: <= 2000 ms)\n", written);
    std::printf("  preview's first page on screen %7.1f ms  (aim: <= 500 ms; %d pages)\n", preview, previewPages);
    return 0;
}
