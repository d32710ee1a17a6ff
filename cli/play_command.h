#pragma once
// velmora-cli play: the player's model in a terminal, on libmpv and Qt's
// loop without a window.

#include <string>

namespace velmora::cli {

// The program folder of a Collection file: the folder that holds its
// velmora_sylloges/, or empty when the file does not lie in one.
std::string Program_Folder_Of(const std::string& collection_file);

// argv after "play": FILE.qel [--ao NAME]. Returns the exit code.
int Play_Command(int argc, char** argv);

}  // namespace velmora::cli
