#include "metadata/tag_saving.h"

#include <memory>

#include "base/codepage1253.h"
#include "base/collection_records.h"
#include "catalogue/filter_building.h"
#include "core/app_context.h"
#include "core/running_report.h"

namespace velmora {

namespace {

// The name a Collection goes by in the player's library: its file name
// without the ending.
std::string Collection_Name(const AppContext& ctx) {
    const std::string& path = ctx.collection.Collection_Path;
    const size_t slash = path.rfind('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0) name.resize(dot);
    return name;
}

int Row_Of(const AppContext& ctx, const std::string& path) {
    const ListBox& list = ctx.form1.List2;
    const int current = ctx.table.Current_Track;
    if (current >= 0 && current < list.ListCount() && list.List(current) == path) return current;
    for (int row = 0; row < list.ListCount(); ++row)
        if (list.List(row) == path) return row;
    return -1;
}

}  // namespace

void Write_Tag_Values(AppContext& ctx, MediaItem& item, const std::string& path, std::string& error) {
    const auto& values = ctx.metadata.Tag_Values;
    bool read_only_logged = false;
    for (int i = 0; i < 6; ++i) {
        const std::string name = kTagNames[i];
        if (item.isReadOnlyItem(name)) {
            if (!read_only_logged) Log_Line(ctx, "Μόνο για ανάγνωση - Read only : " + path);
            read_only_logged = true;
            continue;
        }
        // Every write rewrites the file: one that changes nothing is spared.
        if (item.getItemInfo(name) == values[i]) continue;
        if (Status written = item.setItemInfo(name == "WM/Year" ? "Year" : name, values[i]); !written) {
            error = written.error();
            Log_Line(ctx, error);
        }
    }

    const int row = Row_Of(ctx, path);
    TrackTable& t = ctx.table;
    if (row < 0 || row > t.Bound()) return;
    // The columns hold what the files side file can store.
    auto stored = [](const std::string& text) { return Cp1253_Storable(text, kFilesTextBytes); };
    t.Title[row] = stored(values[0]);
    t.Artist[row] = stored(values[1]);
    t.Album[row] = stored(values[2]);
    t.Year[row] = stored(values[3]);
    t.Genre[row] = stored(values[5]);
    t.Saved[row] = false;
    t.Collection_Saved = 0;
    Update_Filter_Row(ctx, row, 1);
}

void Save_Tags(AppContext& ctx, const std::string& path, std::string& error) {
    if (!ctx.metadata.Playlists_Named) return;
    const auto lists = ctx.metadata.Playlists_Named(Collection_Name(ctx));
    if (lists.size() != 1) return;
    bool listed = false;
    for (const std::string& source : lists.front())
        if (source == path) listed = true;
    if (!listed) return;
    std::unique_ptr<MediaItem> item = ctx.ports.reader.newMedia(path);
    if (!item) return;
    Write_Tag_Values(ctx, *item, path, error);
}

}  // namespace velmora
