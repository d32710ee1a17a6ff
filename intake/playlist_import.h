#pragma once
// A play list read in as Tracks: as a new Collection, added to the open
// one, or met among the files of a folder being added.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct AppContext;

// What one import did.
struct PlaylistImport {
    bool read = false;  // the list was read and had room
    int32_t added = 0;
    int32_t doubles = 0;
};

// add -1 keeps the present rows, 0 starts anew. dialog -1 asks for the
// file, names the Collection after it and starts playing at the end; any
// other value takes `file` as given, the way intake hands over the lists it
// meets. `path` is the name of the Collection the rows go to.
PlaylistImport Import_Playlist(AppContext& ctx, int add, int dialog, std::string path, std::string file);

// The endings the open dialog takes: ".wpl", ".m3u" and ".mvx". The last
// is no ending the dialog offers, so a ".wvx" it lists is refused.
bool Has_Playlist_Ending(std::string_view name);

}  // namespace velmora
