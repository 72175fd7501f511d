#include "app/ui/Startup.h"

#include "app/Product.h"
#include "app/Settings.h"
#include "app/StartFolder.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/MainWindow.h"
#include "app/ui/QtPrompts.h"
#include "app/ui/SplashWindow.h"
#include "printing/PrintDesign.h"
#include "seating/ui/TableMapWindow.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QStandardPaths>
#include <QTranslator>

#include <cstdio>

namespace velmora::ui {

std::unique_ptr<Windows> Main(WeddingState& state, Prompts& prompts, const QString& currentDirectory)
{
    state.AppPath = AppPathFor(currentDirectory);
    // A new wedding starts with the designs that come with the program.
    printing::InstallDesigns(state.AppPath, printing::ShippedDesignFolder());
    state.WeddingDate = SettingsFile(state.iniFile()).date(keys::WeddingDate, QDate::currentDate());

    auto windows = std::make_unique<Windows>();
    windows->splash = std::make_unique<SplashWindow>();
    windows->splash->lblWeddingCount->setText(QStringLiteral("עוד ") + DaysToWedding(state)
                                              + QStringLiteral(" ימים לחתונה..."));
    windows->splash->show();
    windows->splash->repaint();
    QApplication::processEvents();

    windows->main = std::make_unique<MainWindow>(state, prompts);
    if (auto* qtPrompts = dynamic_cast<QtPrompts*>(&prompts))
        qtPrompts->setParentWidget(windows->main.get());
    windows->tableMap = std::make_unique<TableMapWindow>(state, prompts, windows->main.get());
    const bool started = windows->main->load(*windows->tableMap);

    windows->splash->close();
    if (!started)
        return nullptr;
    windows->main->show();
    return windows;
}

std::unique_ptr<Windows> StartIn(WeddingState& state, Prompts& prompts, const QString& folder,
                                 const QString& startedIn)
{
    if (const QString fault = MakeWeddingFolder(folder); !fault.isEmpty()) {
        prompts.critical(fault);
        return nullptr;
    }
    auto windows = Main(state, prompts, folder);
    if (windows && QDir::cleanPath(folder) != QDir::cleanPath(startedIn)) {
        // The mark keeps the path's leading separator on its left in the Hebrew title.
        MainWindow& main = *windows->main;
        main.setWindowTitle(main.windowTitle() + QStringLiteral(" - \u200E") + QDir::toNativeSeparators(folder));
        main.setAccessibleName(main.windowTitle());
    }
    return windows;
}

namespace {
int answer(const CommandLine& line)
{
    std::fputs(line.answer.toLocal8Bit().constData(), line.exitCode == 0 ? stdout : stderr);
    return line.exitCode;
}
} // namespace

int runVelmora(int argc, char** argv)
{
    // Help and version answer even where there is no display.
    QStringList given;
    for (int i = 0; i < argc; ++i)
        given << QString::fromLocal8Bit(argv[i]);
    if (const CommandLine early = ReadCommandLine(given); !early.starts() && early.exitCode == 0)
        return answer(early);

    QApplication app(argc, argv);
    const CommandLine line = ReadCommandLine(QApplication::arguments());
    if (!line.starts())
        return answer(line);
    QApplication::setOrganizationName(product::Title);
    QApplication::setApplicationName(product::Title);
    QApplication::setApplicationVersion(product::version());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setDesktopFileName(QStringLiteral(VELMORA_APP_ID));
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == u"hicolor")
        QIcon::setThemeName(QStringLiteral("Adwaita"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("velmora"), QIcon(QStringLiteral(":/icons/velmora-64.png"))));

    // Standard buttons read in Hebrew.
    QTranslator qtHebrew;
    if (qtHebrew.load(QStringLiteral("qtbase_he"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtHebrew);

    WeddingState state;
    QtPrompts prompts;
    const QString startedIn = QDir::currentPath();
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const auto windows = StartIn(state, prompts, WeddingFolder(line, startedIn, QDir::homePath(), documents), startedIn);
    if (!windows)
        return 1;
    return app.exec();
}

} // namespace velmora::ui

namespace velmora::ui {
Windows::~Windows()
{
    // The map is a child of the main window: let it go first.
    tableMap.reset();
    main.reset();
    splash.reset();
}
} // namespace velmora::ui
