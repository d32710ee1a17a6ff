#pragma once
// velmora-cli play: the player's model in a terminal, on libmpv and Qt's
// loop without a window.

#include <string>

namespace velmora::cli {

// argv after "play": FILE.qel [--ao NAME]. Returns the exit code.
int Play_Command(int argc, char** argv);

}  // namespace velmora::cli
