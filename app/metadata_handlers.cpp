#include "app/metadata_handlers.h"

#include "collection/playlist_library.h"
#include "collection/playlist_sources.h"
#include "core/app_context.h"
#include "desktop/tag_page.h"
#include "metadata/album_art.h"
#include "metadata/search_links.h"
#include "ratings/ratings_in_files.h"

namespace velmora {

void Wire_Metadata_Handlers(AppContext& ctx) {
    Form1& f = ctx.form1;
    MenuSet& m = f.Menus;
    auto& links = ctx.handlers;
    auto on = [&](Signal<>& signal, void (*handler)(AppContext&)) {
        links.push_back(signal.connect([&ctx, handler] { handler(ctx); }));
    };

    // Ratings within the files, from the Rating menu.
    on(m("MnuMoreReadFavorFromFiles").Click, MnuMoreReadFavorFromFiles_Click);
    on(m("MnuMoreSaveFavorWithinFiles").Click, MnuMoreSaveFavorWithinFiles_Click);
    on(m("MnuMoreFavorWithinFiles").Click, MnuMoreFavorWithinFiles_Click);

    // The tag page. A box's text changes once per finished edit.
    for (int i = 0; i < 5; ++i)
        links.push_back(f.Text1[i].Changed.connect([&ctx, i](Change kind) {
            if (kind == Change::Contents) Text1_N_Change(ctx, i);
        }));
    on(f.Combo1.Click, Combo1_Click);
    on(f.Command14.Click, Command14_Click);
    // A row chosen in the list shows the art again, beside what the list's
    // own handler does.
    on(f.List2.Click, Show_Album_Art);

    // A save of tags finds its file through the library's play lists of the
    // Collection's name: each list's entries, resolved as a player would.
    ctx.metadata.Playlists_Named = [&ctx](const std::string& name) {
        std::vector<std::vector<std::string>> lists;
        for (const std::string& path : Playlists_Named(ctx, name)) {
            PlaylistContents contents;
            std::string error;
            // A list that cannot be read still counts as one of the name.
            auto& sources = lists.emplace_back();
            if (!Read_Playlist_File(ctx, path, contents, error)) continue;
            for (const PlaylistEntry& entry : contents.entries)
                sources.push_back(Resolve_Source(entry.source, Folder_Of(path)));
        }
        return lists;
    };

    // The search links and the copy of the properties.
    on(f.Command13.Click, Command13_Click);
    on(f.Command6[1].Click, mnusystemtraycopypaste_Click);
    on(f.Tray("mnusystemtraycopypaste").Click, mnusystemtraycopypaste_Click);
}

}  // namespace velmora
