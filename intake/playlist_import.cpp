#include "intake/playlist_import.h"

#include <algorithm>
#include <cmath>

#include "base/collection_records.h"
#include "base/text_format.h"
#include "catalogue/list_box_find.h"
#include "collection/collection_claim.h"
#include "collection/collection_file.h"
#include "collection/playlist_library.h"
#include "collection/playlist_sources.h"
#include "core/app_context.h"
#include "core/mirror_rows.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "intake/identification.h"
#include "playback/transport.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"

namespace velmora {

namespace {

const char* const kNoSpace = "--> Δεν υπάρχει άλλος χώρος - No more space";

void Set_Lists_Enabled(Form1& f, bool on) {
    f.List2.SetEnabled(on);
    for (ListBox& mirror : f.List3_0) mirror.SetEnabled(on);
}

std::string Name_Less_Ending(const std::string& file) {
    const size_t slash = file.find_last_of('/');
    std::string name = slash == std::string::npos ? file : file.substr(slash + 1);
    return name.substr(0, name.size() >= 4 ? name.size() - 4 : 0);
}

// Takes one entry into row `row` of the columns and the mirrors.
void Take_Entry(AppContext& ctx, int32_t row, const std::string& source, const PlaylistEntry& e, MirrorRows& mirrors) {
    TrackTable& t = ctx.table;
    t.ClearRow(row);
    t.Duration[row] = Currency(static_cast<int64_t>(std::nearbyint(std::min(e.duration, 1e12))));
    t.Total_Duration += t.Duration[row];
    int16_t bitrate = 0;
    if (!CInt(Val(e.getItemInfo("Bitrate")), bitrate)) bitrate = 0;
    t.Bitrate[row] = bitrate;
    t.Artist[row] = e.getItemInfo("Artist");
    t.Album[row] = e.getItemInfo("Album");
    t.Genre[row] = e.getItemInfo("Genre");
    t.Title[row] = e.getItemInfo("Title");
    t.Year[row] = e.getItemInfo("WM/Year");
    const double bytes = Val(e.getItemInfo("Filesize"));
    t.File_Size[row] = std::isfinite(bytes) && bytes > 0 && bytes < 1e15 ? Currency::FromDouble(bytes / 1048576.0)
                                                                          : Currency(0);
    t.Total_Size += t.File_Size[row];
    // A class comes by the table a file's own rating is read by.
    const std::string rating = e.getItemInfo("UserRating");
    if (IsNumeric(rating)) {
        const double v = Val(rating);
        const int rating_class = std::isfinite(v) && std::abs(v) < 1e6 ? Rating_Class_Of(static_cast<int>(v)) : -1;
        if (rating_class >= 0) t.Rating_Class[row] = static_cast<int16_t>(rating_class);
    }
    const int k = t.Rating_Class[row];
    t.Class_Count[k] += Currency(1);
    t.Class_Size[k] += t.File_Size[row];
    t.Class_Duration[k] += t.Duration[row];
    t.Saved[row] = false;
    ctx.form1.List2.AddItem(source);
    mirrors.Add({Row_Number_Text(row), Class_Letter(k), Duration_Text(t.Duration[row]), Size_Text(t.File_Size[row]),
                 Bitrate_Text(t.Bitrate[row])});
}

}  // namespace

bool Has_Playlist_Ending(std::string_view name) {
    if (name.size() < 4) return false;
    const std::string_view ending = name.substr(name.size() - 4);
    return ending == ".mvx" || ending == ".m3u" || ending == ".wpl";
}

PlaylistImport Import_Playlist(AppContext& ctx, int add, int dialog, std::string path, std::string file) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    PlaylistImport run;
    if (add == 0) {
        if (t.Collection_Saved == 0) Save_Collection(ctx, false, false);
        Reset_Views(ctx, 0);
        f.MultiPage1.SetValue(0);
    }
    if (dialog == -1) {
        FileDialogOptions o;
        o.title = "Άνοιγμα Νέας Συλλογής - Open New Collection";
        o.filter = "Windows Media Player PlayLists (*.wpl,*.m3u,*.wvx) | *.wpl;*.m3u;*.wvx";
        o.initial_dir = ctx.core.App_Path + kCollectionsFolder + "/";
        const auto chosen = ctx.ports.dialogs.OpenFile(o);
        if (!chosen || chosen->empty()) return run;
        if (!Has_Playlist_Ending(*chosen)) {
            ctx.ports.dialogs.MsgBox(
                "Το όνομα πρέπει να τελειώνει σε [.wpl,.m3u,.wvx] should be the ending of the file", MsgButtons::OK,
                MsgIcon::Exclamation, "");
            return run;
        }
        file = *chosen;
        ctx.collection.Collection_Path = o.initial_dir + Name_Less_Ending(file) + ".qel";
        path = ctx.collection.Collection_Path;
        (void)Claim_Collection(ctx);
    }

    PlaylistContents list;
    std::string error;
    if (!Read_Playlist_File(ctx, file, list, error)) {
        Log_Line(ctx, "-> Η λίστα δε διαβάστηκε - The playlist could not be read: " + file + ": " + error);
        return run;
    }
    const int64_t n = static_cast<int64_t>(list.entries.size());
    // The room is that of every entry, doubles included.
    if ((add == -1 && f.List2.ListCount() + n - 1 > kMaxTracks) || (add == 0 && n - 1 > kMaxTracks)) {
        Log_Line(ctx, kNoSpace);
        return run;
    }
    run.read = true;
    const bool reported = ctx.settings.Report_On != 0;
    if (reported) Report_Block(ctx, -1);
    t.Grow_Columns(std::max<int32_t>(t.Bound(), f.List2.ListCount() + static_cast<int32_t>(n)));
    if (dialog == -1) Set_Lists_Enabled(f, false);
    const std::string head = "-> Προστείθονται αρχεία από " + file + ".Παρακαλώ περιμένετε... - Adding files from " +
                             file + ". Please wait...";
    Log_Line(ctx, head);

    const std::string folder = Folder_Of(file);
    MirrorRows mirrors;
    auto counts = [&] {
        return TimeText(loop.Now()) + "Νέα αρχεία - New Files :" + std::to_string(run.added) +
               "\nΔιπλά αρχεία που δεν προστέθηκαν [υπάρχουν στη συλλογή] - Double Files that were not added "
               "[allready in Collection]:" +
               std::to_string(run.doubles);
    };
    for (int64_t k = 0; k < n; ++k) {
        const PlaylistEntry& e = list.entries[static_cast<size_t>(k)];
        const std::string source = Resolve_Source(e.source, folder);
        if (source.empty() || source == " ") continue;
        if (!Storable_Track_Path(source)) {
            Log_Line(ctx, "-> Το όνομα δεν χωρά στη συλλογή - The name cannot be stored in the Collection: " + source);
        } else if (ListBoxFindString(f.List2, source, -1, true) >= 0) {
            ++run.doubles;
        } else if (f.List2.ListCount() + 1 <= kMaxTracks && f.List2.ListCount() <= t.Bound()) {
            Take_Entry(ctx, f.List2.ListCount(), source, e, mirrors);
            ++run.added;
        } else {
            Log_Line(ctx, kNoSpace);
        }
        f.Text2[1].SetText(counts());
        if (dialog == -1) {
            if (k % 40 == 0 || n - k <= 50) Show_Progress(f, k, n, 1);
            loop.DoEvents();
        }
    }
    mirrors.Flush(f);
    f.Text2[0].Prepend(counts() + "\n");
    if (reported) Report_Block(ctx, 0);

    if (dialog == -1) {
        t.Track_Count = f.List2.ListCount();
        t.Current_Track = std::clamp(t.Current_Track, 0, std::max(t.Track_Count - 1, 0));
        if (t.Track_Count > 0) {
            f.List2.SetListIndex(t.Current_Track);
            for (ListBox& mirror : f.List3_0) mirror.SetListIndex(t.Current_Track);
        }
        Set_Lists_Enabled(f, true);
        Calculate_Ratings(ctx);
        ctx.ratings.Stats_Dirty = true;
        if (t.Track_Count > 0) DeikseAgapi(ctx, t.Rating_Class[t.Current_Track], t.Current_Track);
        Command3_Click(ctx, 0);
    }
    return run;
}

}  // namespace velmora
