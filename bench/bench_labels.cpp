// Envelope labels and seating notes (with a design picture) of 1,000 invitations: built,
// laid out and written to PDF. With a folder name, the two PDFs are kept there to look at.
#include "BenchSupport.h"

#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/QtPrompts.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "printing/LabelReports.h"
#include "printing/ReportLayout.h"
#include "printing/ui/ReportPreview.h"

#include <QApplication>
#include <QDir>
#include <QLinearGradient>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include <cstdio>

using namespace velmora;

namespace {

// A design as large as a user's scan might be, so the figure includes the picture's cost.
void drawDesign(const QString& path)
{
    QImage picture(1320, 675, QImage::Format_RGB32);
    QPainter painter(&picture);
    QLinearGradient wash(0, 0, 1320, 675);
    wash.setColorAt(0, QColor(0xFD, 0xF2, 0xE9));
    wash.setColorAt(1, QColor(0xE8, 0xD5, 0xF0));
    painter.fillRect(picture.rect(), wash);
    painter.end();
    picture.save(path, "PNG"); // the reader goes by the content, not the name
}

} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir home;
    bench::runHeadless(home);
    QApplication app(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QTemporaryDir dir;
    const QString keep = argc > 1 ? QString::fromLocal8Bit(argv[1]) : dir.path();
    const int rows = argc > 2 ? std::atoi(argv[2]) : 1000;
    ui::QtPrompts prompts;

    WeddingState state;
    state.AppPath = AppPathFor(dir.path());
    state.AllGuests = state.CurGroup = QStringLiteral("כל האורחים");
    state.LabelFrame = state.LabelAddress = true;
    state.LabelColor = 0x602080;
    state.NoteStyle = QStringLiteral("design.gif");
    QDir(dir.path()).mkpath(QStringLiteral("design"));
    drawDesign(dir.filePath(QStringLiteral("design/design.gif")));
    bench::makeWedding(state.databaseFile(), rows);
    guests::GuestListModel model;
    guests::InitList(state, prompts, model, state.CurGroup, QString(), guests::ListView{});

    struct Sheet {
        const char* what;
        printing::SheetReport (*build)(WeddingState&, const QAbstractItemModel&);
        const char* file;
    };
    const Sheet sheets[] = {{"envelope labels", printing::buildEnvelopeLabels, "labels.pdf"},
                            {"seating notes  ", printing::buildSittingNotes, "notes.pdf"}};
    std::printf("%d invitations to PDF on A4\n", rows);
    for (const Sheet& sheet : sheets) {
        const QString pdf = QDir(keep).filePath(QString::fromLatin1(sheet.file));
        const double whole = bench::medianMs(5, [&] {
            const printing::SheetReport built = sheet.build(state, model);
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setPageSize(QPageSize(QPageSize::A4));
            printer.setOutputFileName(pdf);
            ui::printReport(built.report, printer);
        });
        const size_t pages = printing::layOut(sheet.build(state, model).report).pages.size();
        std::printf("  %s built, laid out, written %8.1f ms  (aim: <= 1500 ms; %zu pages)\n", sheet.what, whole,
                    pages);
    }
    return 0;
}
