#pragma once

namespace velmora::ui {

// Makes the application object and everything the program shares, then runs it.
int runVelmora(int argc, char** argv);

} // namespace velmora::ui
