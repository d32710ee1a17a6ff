#pragma once
// Files handed to the program from outside: on its command line by the
// desktop's "Open with", or by the media-player bus.

#include <string>
#include <vector>

namespace velmora {

struct AppContext;

// Adds the files the Collection lacks, as a drop on the window would, and
// plays the first of them that is in the Track list afterwards. Relative
// names are taken from `base_folder`. False when none of them could be played.
bool Open_Given_Files(AppContext& ctx, const std::vector<std::string>& names, const std::string& base_folder);

}  // namespace velmora
