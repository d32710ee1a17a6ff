#include "desktop/given_files.h"

#include <filesystem>

#include "core/app_context.h"
#include "intake/file_drop.h"
#include "playback/transport.h"

namespace velmora {

bool Open_Given_Files(AppContext& ctx, const std::vector<std::string>& names, const std::string& base_folder) {
    if (names.empty()) return false;
    std::vector<std::string> paths;
    for (const std::string& name : names) {
        std::filesystem::path path(name);
        if (path.is_relative()) path = std::filesystem::path(base_folder) / path;
        paths.push_back(path.lexically_normal().string());
    }
    Accept_Dropped_Files(ctx, paths);
    ListBox& list = ctx.form1.List2;
    for (const std::string& path : paths) {
        const int row = list.FindExact(path);
        if (row < 0) continue;
        // Played as a double click on its row plays it: the walk jumps to the
        // selected row and goes on from there.
        list.SetListIndex(row);
        list2_dblclick(ctx);
        return true;
    }
    return false;
}

}  // namespace velmora
