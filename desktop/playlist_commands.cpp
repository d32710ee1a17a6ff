#include "desktop/playlist_commands.h"

#include <string>

#include "collection/playlist_export.h"
#include "core/app_context.h"
#include "intake/playlist_import.h"

namespace velmora {

void mnuFileCreateWPL_Click(AppContext& ctx, int index) {
    // The list takes the Collection's name: its file name less the ending.
    const std::string& path = ctx.collection.Collection_Path;
    const size_t slash = path.find_last_of('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    name = name.substr(0, name.size() >= 4 ? name.size() - 4 : 0);
    switch (index) {
        case 0: Export_Playlist(ctx, name); break;
        case 1: Keep_Playlist_Updated(ctx, name); break;
        case 2: Import_Playlist(ctx, 0, -1, "", ""); break;
        case 3: Import_Playlist(ctx, -1, -1, "", ""); break;
        default: break;
    }
}

}  // namespace velmora
