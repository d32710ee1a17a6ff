#pragma once
// Play list files (.m3u, .wpl) met while adding files.

#include <string>

namespace velmora {

struct AppContext;

// Reads the play list at path; with add_entries its entries become Tracks.
void Read_Playlist(AppContext& ctx, const std::string& path, bool add_entries);

}  // namespace velmora
