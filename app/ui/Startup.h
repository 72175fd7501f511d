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

// Makes the application object and everything the program shares, then runs it.
int runVelmora(int argc, char** argv);

} // namespace velmora::ui
