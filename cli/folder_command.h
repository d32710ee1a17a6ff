#pragma once

namespace velmora::cli {

// velmora-cli folder: the program folder as the window works it out, then
// the Collection a start opens there, that of the pointer file or else the
// default one; one line each.
int Folder_Command(int argc, char** argv);

}  // namespace velmora::cli
