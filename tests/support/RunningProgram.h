#pragma once

#include "ScriptedPrompts.h"

#include "app/WeddingState.h"
#include "app/ui/Startup.h"

#include <memory>

namespace velmora::ui {
class MainWindow;
class TableMapWindow;
}

namespace velmora::test {

// The whole program started on a wedding folder, its prompts scripted.
class RunningProgram {
public:
    ~RunningProgram() { stop(); }

    WeddingState state;
    ScriptedPrompts prompts;
    std::unique_ptr<ui::Windows> windows;

    // Starts afresh; false when the start ended the program.
    bool start(const QString& folder);
    // Ends the program with the map's places kept, so that it asks nothing.
    void stop();
    // stop(), then fails the running test when scripted prompts were not all used.
    void finish();

    ui::MainWindow& main() const;
    ui::TableMapWindow& map() const;
    // Picks a group in the main window's box, as the user does.
    void chooseGroup(int index) const;
};

} // namespace velmora::test
