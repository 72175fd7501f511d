#include "app/ui/Startup.h"

#include "app/Product.h"
#include "app/Settings.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/QtPrompts.h"
#include "store/Schema.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QTranslator>

namespace velmora::ui {

int runVelmora(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(product::Title);
    QApplication::setApplicationName(product::Title);
    QApplication::setApplicationVersion(product::version());
    QApplication::setLayoutDirection(Qt::RightToLeft);

    // Standard buttons read in Hebrew.
    QTranslator qtHebrew;
    if (qtHebrew.load(QStringLiteral("qtbase_he"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtHebrew);

    WeddingState state;
    state.AppPath = AppPathFor(QDir::currentPath());
    state.CrLf = QStringLiteral("\r\n");
    state.WeddingDate = SettingsFile(state.iniFile()).date(keys::WeddingDate, QDate::currentDate());

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("רשימת מוזמנים"));
    window.resize(800, 430);
    QtPrompts prompts(&window);

    ReadWeddingOptions(state, UserStore());
    if (!FileExists(state.databaseFile()) && !store::CreateNewDatabase(state, prompts))
        return 1;
    window.show();
    return app.exec();
}

} // namespace velmora::ui
