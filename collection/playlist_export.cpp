#include "collection/playlist_export.h"

#include <filesystem>

#include "base/text_format.h"
#include "collection/playlist_library.h"
#include "collection/stored_collection.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"

namespace velmora {

namespace {

constexpr int64_t kBytesPerMegabyte = 1048576;

// The class a file's rating stands for when it is compared with the class
// just written: a value written for one class reads back as that class.
int Compared_Class(int v) {
    if (v == 0) return 0;
    if (v == 1) return 1;
    if (v >= 2 && v <= 25) return 2;
    if (v >= 26 && v <= 50) return 3;
    if (v >= 51 && v <= 75) return 4;
    if (v >= 76 && v <= 99) return 5;
    return -1;
}

std::string Whole(Currency value) { return std::to_string(value.Raw() / Currency::kScale); }

// Fills the current list of the library from every row and writes it.
void Fill_Current(AppContext& ctx, const std::string& name, bool count_changes) {
    Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    std::vector<PlaylistEntry> entries;
    const int n = f.List2.ListCount();
    entries.reserve(static_cast<size_t>(n));
    int changes = 0;
    for (int i = 0; i < n; ++i) {
        entries.push_back(Playlist_Entry(ctx, i));
        if (count_changes) {
            // What the file says of itself, against the class it is given now.
            const auto media = ctx.ports.reader.newMedia(entries.back().source);
            const std::string present = media ? media->getItemInfo("UserRating") : std::string();
            if (IsNumeric(present)) {
                const int was = Compared_Class(static_cast<int>(Val(present)));
                if (was >= 0 && i <= t.Bound() && was != t.Rating_Class[i]) ++changes;
            }
        }
        if (i % 30 == 0 || n - i <= 50) Show_Progress(f, i, n, 1);
        loop.DoEvents();
        if (ctx.core.Esc_Key == 27) {
            ctx.core.Esc_Key = 0;
            f.Text2[0].Prepend("Ακυρώθηκε - Canceled\n");
            break;
        }
    }
    const std::string& file = ctx.collection.Current_Playlist;
    std::error_code ec;
    std::filesystem::create_directories(Playlist_Folder(ctx), ec);
    if (!Write_Playlist_File(file, name, entries))
        Log_Line(ctx, "-> Η λίστα δε γράφτηκε - The playlist was not written: " + file);
    Log_Line(ctx, "--> Αλλαγές - Changes :" + std::to_string(changes));
}

}  // namespace

PlaylistEntry Playlist_Entry(const StoredTrack& s) {
    PlaylistEntry e;
    e.source = s.Track_Path;
    e.duration = s.Duration.ToDouble();
    auto put = [&e](const char* name, std::string value) { e.info.emplace_back(name, std::move(value)); };
    // The class number itself goes out, not the rating a file would hold.
    if (s.Rating_Class > 0) put("UserRating", std::to_string(s.Rating_Class));
    if (s.File_Size > Currency(0)) put("Filesize", Whole(s.File_Size * kBytesPerMegabyte));
    if (s.Bitrate > 0) put("Bitrate", std::to_string(s.Bitrate));
    if (!s.Artist.empty()) put("Artist", s.Artist);
    if (!s.Genre.empty()) put("Genre", s.Genre);
    if (!s.Album.empty()) put("Album", s.Album);
    if (!s.Title.empty()) put("Title", s.Title);
    if (!s.Year.empty()) put("Year", s.Year);
    return e;
}

PlaylistEntry Playlist_Entry(const AppContext& ctx, int row) {
    const TrackTable& t = ctx.table;
    StoredTrack s;
    s.Track_Path = std::string(ctx.form1.List2.List(row));
    if (row <= t.Bound()) {
        s.Duration = t.Duration[row], s.Rating_Class = t.Rating_Class[row], s.File_Size = t.File_Size[row];
        s.Bitrate = t.Bitrate[row], s.Artist = t.Artist[row], s.Genre = t.Genre[row], s.Album = t.Album[row];
        s.Title = t.Title[row], s.Year = t.Year[row];
    }
    return Playlist_Entry(s);
}

std::vector<PlaylistEntry> Playlist_Entries(const AppContext& ctx) {
    std::vector<PlaylistEntry> entries;
    const int n = ctx.form1.List2.ListCount();
    entries.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) entries.push_back(Playlist_Entry(ctx, i));
    return entries;
}

void Ensure_Playlist(AppContext& ctx, const std::string& name) {
    const std::vector<std::string> found = Playlists_Named(ctx, name);
    std::string& current = ctx.collection.Current_Playlist;
    if (found.empty()) {
        current = New_Playlist_File(ctx, name);
    } else if (found.size() == 1) {
        const MsgAnswer answer = ctx.ports.dialogs.MsgBox(
            "Υπάρχει ήδη τέτοια συλλογή. Να δημιουργηθεί νέα με το ίδιο όνομα; \n This Collection allready exists. "
            "Create New one with the same name?",
            MsgButtons::YesNo, MsgIcon::None, "");
        // No: the list of that name is the one written anew.
        current = answer == MsgAnswer::Yes ? New_Playlist_File(ctx, name) : found.front();
    } else {
        current = found.front();
    }
}

void Export_Playlist(AppContext& ctx, const std::string& name) {
    const std::string quoted = "\"" + name + "\"";
    if (ctx.ports.dialogs.MsgBox("Θέλεtε να σώσετε την παρούσα συλλογή ως συλλογή του WindowsMediaPlayer υπό το όνομα " +
                                     quoted + "?\nWould you like to save the current collection as a "
                                     "WindowsMediaPlayer Collection under the name " + quoted + "?",
                                 MsgButtons::YesNo, MsgIcon::Question,
                                 "Δημιουργία Συλλογής - Create Collection") != MsgAnswer::Yes)
        return;
    Ensure_Playlist(ctx, name);
    Fill_Current(ctx, name, true);
}

void Keep_Playlist_Updated(AppContext& ctx, const std::string& name) {
    const std::vector<std::string> found = Playlists_Named(ctx, name);
    ctx.collection.Current_Playlist = found.empty() ? New_Playlist_File(ctx, name) : found.front();
    Fill_Current(ctx, name, false);
}

}  // namespace velmora
