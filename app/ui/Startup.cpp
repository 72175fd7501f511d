#include "app/ui/Startup.h"

#include "app/Product.h"
#include "app/Settings.h"
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
#include <QTranslator>

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

int runVelmora(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(product::Title);
    QApplication::setApplicationName(product::Title);
    QApplication::setApplicationVersion(product::version());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == u"hicolor")
        QIcon::setThemeName(QStringLiteral("Adwaita"));

    // Standard buttons read in Hebrew.
    QTranslator qtHebrew;
    if (qtHebrew.load(QStringLiteral("qtbase_he"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtHebrew);

    WeddingState state;
    QtPrompts prompts;
    const auto windows = Main(state, prompts, QDir::currentPath());
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
