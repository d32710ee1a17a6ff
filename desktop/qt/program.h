#pragma once
// The desktop program from start to end, with hooks for measuring it.

#include <functional>

class QMainWindow;

namespace velmora {

struct AppContext;

struct ProgramHooks {
    // Called with the main window just before start-up runs.
    std::function<void(QMainWindow&)> before_load;
    // Called with the started program, just before the event loop runs.
    std::function<void(AppContext&)> after_load;
};

int RunProgram(int argc, char** argv, const ProgramHooks& hooks = {});

}  // namespace velmora
