// Play lists and merging at full size, each timed once from the page cache
// on the test doubles' virtual loop:
//   - importing a 32,766-entry .m3u8 into an empty Collection (target 2 s);
//   - exporting a Collection of 32,766 Tracks with full tags, as .m3u8 and
//     as .wpl (target 1 s each);
//   - merging a saved Collection of 16,383 Tracks into an open one of
//     16,383 others (target 2 s).
// Exits with 2 when a figure misses its target.
// Usage: playlist_bench
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "collection/playlist_export.h"
#include "collection/playlist_library.h"
#include "core/app_context.h"
#include "desktop/collection_merge.h"
#include "intake/playlist_import.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace {

using namespace velmora;
using velmora::testing::TestApp;
using velmora::testing::TrackRow;
using Clock = std::chrono::steady_clock;

double Ms(const std::function<void()>& run) {
    const auto t0 = Clock::now();
    run();
    return std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
}

std::vector<TrackRow> Rows(int first, int n) {
    std::vector<TrackRow> rows;
    rows.reserve(static_cast<size_t>(n));
    for (int i = first; i < first + n; ++i) {
        char path[96];
        std::snprintf(path, sizeof path, "/music/Καλλιτέχνης %03d/Album %02d/%05d Τραγούδι.mp3", i % 500, i % 40, i);
        rows.push_back({path, 180.0 + i % 300, i % 6, 4.5, 192});
    }
    return rows;
}

void Tag(AppContext& ctx) {
    TrackTable& t = ctx.table;
    for (int i = 0; i < t.Track_Count; ++i) {
        t.Artist[i] = "Καλλιτέχνης " + std::to_string(i % 500);
        t.Album[i] = "Album " + std::to_string(i % 40);
        t.Title[i] = "Τραγούδι " + std::to_string(i);
        t.Genre[i] = "Rock";
        t.Year[i] = "1999";
    }
}

bool Report(const char* what, double ms, double target_ms) {
    std::printf("%-52s %8.1f ms   (target %.0f ms)\n", what, ms, target_ms);
    return ms <= target_ms;
}

}  // namespace

int main() {
    bool ok = true;
    TestApp source;
    AppContext& full = source.ctx;
    full.program_folder = full.core.App_Path = source.folder.Str();
    testing::Fill_Tracks(full, Rows(0, kMaxTracks));
    Tag(full);
    const std::string m3u8 = source.folder.Str() + "all.m3u8", wpl = source.folder.Str() + "all.wpl";
    ok &= Report("export of 32,766 Tracks as .m3u8",
                 Ms([&] { Write_Playlist_File(m3u8, "all", Playlist_Entries(full)); }), 1000);
    ok &= Report("export of 32,766 Tracks as .wpl",
                 Ms([&] { Write_Playlist_File(wpl, "all", Playlist_Entries(full)); }), 1000);

    TestApp empty(source.folder.Str());
    empty.ctx.core.App_Path = source.folder.Str();
    empty.ctx.table.Collection_Saved = -1;
    PlaylistImport run;
    ok &= Report("import of a 32,766-entry .m3u8 into an empty Collection", Ms([&] {
                     run = Import_Playlist(empty.ctx, 0, 0, m3u8, m3u8);
                     empty.ctx.table.Track_Count = empty.ctx.form1.List2.ListCount();
                 }),
                 2000);
    if (run.added != kMaxTracks) {
        std::printf("the import took %d Tracks, not %d\n", run.added, kMaxTracks);
        ok = false;
    }

    const std::string other = testing::Write_Collection(source.folder.Str(), "other", Rows(16383, 16383));
    TestApp open(source.folder.Str());
    open.ctx.core.App_Path = source.folder.Str();
    testing::Fill_Tracks(open.ctx, Rows(0, 16383));
    open.dialogs.ExpectMsgBox(MsgAnswer::Yes);  // the played Tracks count as played
    ok &= Report("merge of 16,383 Tracks into 16,383", Ms([&] { Merge_Collection(open.ctx, other); }), 2000);
    if (open.ctx.table.Track_Count != 2 * 16383) {
        std::printf("the merge left %d Tracks, not %d\n", open.ctx.table.Track_Count, 2 * 16383);
        ok = false;
    }
    return ok ? 0 : 2;
}
