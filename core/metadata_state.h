#pragma once
// What the tag page keeps between its events, and the way it finds the
// player's play lists.

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace velmora {

struct MetadataState {
    // Title, Artist, Album, Year, Comment, Genre: the boxes' texts.
    std::array<std::string, 6> Tag_Values;
    std::string Tag_File;  // the file the boxes were last filled from
    bool Tag_Dirty = false;
    // The play lists of the library that bear a name, each as the sources of
    // its entries in order. A save of tags reaches its file only through the
    // one list named after the open Collection. Empty until a library is
    // attached.
    std::function<std::vector<std::vector<std::string>>(const std::string& name)> Playlists_Named;
};

}  // namespace velmora
