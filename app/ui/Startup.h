#pragma once

#include <QString>

#include <memory>

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class MainWindow;
class SplashWindow;
class TableMapWindow;

// The windows that live for the whole run.
struct Windows {
    std::unique_ptr<SplashWindow> splash;
    std::unique_ptr<MainWindow> main;
    std::unique_ptr<TableMapWindow> tableMap;
    ~Windows();
};

// The program's start: the wedding's folder, the splash, the main window loaded hidden
// and the table map, then the main window shown. Nothing when the start failed and the
// program must end.
std::unique_ptr<Windows> Main(WeddingState& state, Prompts& prompts, const QString& currentDirectory);

// Main on the wedding of `folder`, made on first start. When that isn't the folder the
// program was started in, the main window's title says where the wedding lies.
std::unique_ptr<Windows> StartIn(WeddingState& state, Prompts& prompts, const QString& folder,
                                 const QString& startedIn);

// Makes the application object and everything the program shares, then runs it.
int runVelmora(int argc, char** argv);

} // namespace velmora::ui
