#pragma once
// The desktop program from start to end, with hooks for measuring it.

#include <functional>

class QMainWindow;

namespace velmora {

struct ProgramHooks {
    // Called with the main window just before start-up runs.
    std::function<void(QMainWindow&)> before_load;
};

int RunProgram(int argc, char** argv, const ProgramHooks& hooks = {});

}  // namespace velmora
