#include "desktop/collection_merge.h"

#include <algorithm>
#include <string>

#include "base/codepage1253.h"
#include "base/record_file.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/list_box_find.h"
#include "catalogue/track_list_totals.h"
#include "collection/collection_claim.h"
#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "collection/stored_collection.h"
#include "core/app_context.h"
#include "core/mirror_rows.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "desktop/collection_commands.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

constexpr const char* kFilter = "Velmora (*.qel) | *.qel";

// The progress of the long loops: every 30th row and the last 50.
bool Progress_Due(int64_t row, int64_t total) { return row % 30 == 0 || total - row <= 50; }

std::string Quoted(const std::string& path) { return "\"" + path + "\""; }

// The last part of a path less its four-character ending.
std::string Stem_Of(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return name.size() >= 4 ? name.substr(0, name.size() - 4) : std::string();
}

void Set_Lists_Enabled(Form1& f, bool on) {
    f.List2.SetEnabled(on);
    for (ListBox& mirror : f.List3_0) mirror.SetEnabled(on);
}

void Take_Stored(TrackTable& t, int32_t row, const StoredTrack& s) {
    t.Played_Number[row] = s.Played_Number, t.Duration[row] = s.Duration, t.Rating_Class[row] = s.Rating_Class;
    t.File_Size[row] = s.File_Size, t.Stop_Position[row] = s.Stop_Position, t.Bitrate[row] = s.Bitrate;
    t.Artist[row] = s.Artist, t.Genre[row] = s.Genre, t.Album[row] = s.Album, t.Title[row] = s.Title;
    t.Year[row] = s.Year, t.Identified[row] = s.Identified;
    t.Slot_Value[row] = s.Slot_Value;
    for (int j = 0; j < kSlotCount; ++j) t.Slot_Text[row].Set(j, s.Slot_Text[j]);
    t.Saved[row] = false;
}

}  // namespace

void MnuFileMerge_Click(AppContext& ctx) {
    Dialogs& d = ctx.ports.dialogs;
    if (d.MsgBox("Είστε σίγουροι ότι θέλετε να ενώσετε την παρούσα συλλογή με μία διαφορετική; \nAre you sure you "
                 "want to merge this collection with a different one?",
                 MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
        return;
    if (ctx.table.Collection_Saved == 0) Save_Collection(ctx, false, false);
    FileDialogOptions o;
    o.title = "Πρόσθεση Νέας Συλλογής στην Παρούσα - Add New Collection to the Existing";
    o.filter = kFilter;
    o.initial_dir = ctx.core.App_Path + kCollectionsFolder + "/";
    const auto chosen = d.OpenFile(o);
    if (!chosen || chosen->empty()) return;
    if (!Has_Collection_Ending(*chosen)) {
        d.MsgBox("Το όνομα πρέπει να τελειώνει σε [.qel] should be the ending of the file", MsgButtons::OK,
                 MsgIcon::Exclamation, "");
        return;
    }
    std::string& path = ctx.collection.Collection_Path;
    if (*chosen == path) {
        d.MsgBox("Προσπαθείτε να φορτώσετε δύο φορές την ίδια Συλλογή! - You are trying to load the same Collection "
                 "twice!",
                 MsgButtons::OK, MsgIcon::Exclamation, "");
        return;
    }
    // The old files stay as they are: the next save writes under the new name,
    // which this program holds from now on, as after a save as.
    path = path.substr(0, path.size() >= 4 ? path.size() - 4 : 0) + "_Merged_" + Stem_Of(*chosen) + ".qel";
    (void)Claim_Collection(ctx);
    ctx.form1.MultiPage1.SetValue(0);
    Merge_Collection(ctx, *chosen);
    Remake_Filters(ctx);
    Etiketes_Synol_Songs(ctx);
    Class_Duration_Texts(ctx);
    ctx.ratings.Stats_Dirty = true;
    Update_Class_Labels(ctx);
}

int32_t Merge_Collection(AppContext& ctx, const std::string& path) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    Dialogs& d = ctx.ports.dialogs;
    const bool reported = ctx.settings.Report_On != 0;
    if (reported) Report_Block(ctx, -1);
    f.SetMousePointer(FormState::kHourglass);
    Set_Lists_Enabled(f, false);
    auto finish = [&] {
        Set_Lists_Enabled(f, true);
        f.SetMousePointer(FormState::kDefaultPointer);
        if (reported) Report_Block(ctx, 0);
    };
    auto fail = [&] {
        Log_Line(ctx, "Λάθος κατά τη φόρτωση της συλλογής " + Quoted(path) + " -> Error while loading Collection");
        finish();
        return -1;
    };

    const CollectionPaths other = Collection_Paths_Of(ctx, path);
    const FilesToRead to_read = Files_To_Read(other);
    StoredHeader h;
    {
        RecordFile main;
        if (!main.Open(to_read.main, kMainRecordLength, RecordFile::Mode::ReadOnly) || !Read_Version(main, h))
            return fail();
        if (h.Version_String.empty() || h.Version_String != kCollectionVersion) {
            d.MsgBox("Συλλογή δημιουργημένη με διαφορετική έκδοση - Collection Created with different version",
                     MsgButtons::OK, MsgIcon::Exclamation, "");
            finish();
            return -1;
        }
        // A field that cannot be read keeps its zero: only the count matters here.
        (void)Read_Header(main, h);
    }
    const int32_t total = std::max(h.Track_Count, 0);
    // Duplicates count too: the room is that of every row of the other.
    if (int64_t{t.Track_Count} + total > kMaxTracks) {
        d.MsgBox("Η παρούσα συλλογή μαζί με την νέα ξεπερνούν το όριο κομματιών --> " + Str(kMaxTracks) +
                     " <-- New Collection plus the old exceeds this limit!",
                 MsgButtons::OK, MsgIcon::Critical, "");
        finish();
        return -1;
    }

    int32_t new_count = 0;
    Count_New_Tracks(ctx, to_read.files, total, new_count);
    t.Grow_Columns(t.Track_Count + new_count);
    Log_Line(ctx, "-> Ανάγνωση αρχείων από Συλλογή σε πρόσθεση... - Reading files from Collection in add...\n" +
                      to_read.main + "\n" + to_read.files + "\n" + other.filters);
    bool error = false;
    Read_Files_In_Add(ctx, to_read.files, error, total);
    if (error)
        Log_Line(ctx, "-> Λάθη στην ανάγνωση αρχείων συλλογής... - Error Reading Collection Files...\n" +
                          to_read.main + "\n" + to_read.files);
    else
        Log_Line(ctx, "Σύνολο νέων κομματιών: " + std::to_string(total) + ": New Items were Loaded" +
                          " -> Τέλος φορτώματος - End loading");
    finish();

    if (d.MsgBox("Θέλετε τα κομμάτια της εισαγώμενης συλλογής που είχαν αναπαραχθεί να λογισθούν ως "
                 "αναπαραγμένα και στην παρούσα συλλογή;\nWould you like to consider the allready reproduced media of "
                 "the imported Collection as reproduced also in this one?",
                 MsgButtons::YesNo, MsgIcon::Question, "") == MsgAnswer::Yes) {
        Shift_Played_Numbers(ctx, total);
    } else {
        for (int32_t row = std::max(f.List2.ListCount() - 1 - total, 0); row < t.Track_Count; ++row) {
            if (t.Played_Number[row] == 0) continue;
            t.Played_Number[row] = 0;
            t.Saved[row] = false;
        }
    }
    return total;
}

void Count_New_Tracks(AppContext& ctx, const std::string& files_path, int32_t total, int32_t& new_count) {
    Form1& f = ctx.form1;
    Log_Line(ctx, "--> Έλεγχος για ύπαρξη νέων πολυμέσων στην συλλογή πριν το οριστικό φόρτωμα --> " +
                      Quoted(files_path) + ". Checking for new Files before loading...");
    new_count = 0;
    RecordFile file;
    if (file.Open(files_path, kFilesRecordLength, RecordFile::Mode::ReadOnly)) {
        std::string path;
        for (int32_t k = 0; k < total; ++k) {
            if (!file.GetString(Track_Record(k, track_record::kTrackPath), path)) break;
            if (!Is_Pathless(path) && ListBoxFindString(f.List2, path, -1, true) == -1) ++new_count;
            if (Progress_Due(k, total)) Show_Progress(f, k, total, 1);
        }
    }
    Log_Line(ctx, "--> Νέα πολυμέσα προς ένωση -->" + std::to_string(new_count) + " από -->" + std::to_string(total) +
                      "\nNew media to merge -->" + std::to_string(new_count) + " out of -->" + std::to_string(total));
}

void Read_Files_In_Add(AppContext& ctx, const std::string& files_path, bool& error, int32_t total) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    RecordFile file;
    if (!file.Open(files_path, kFilesRecordLength, RecordFile::Mode::ReadOnly)) {
        error = true;
        return;
    }
    StoredTrack s;
    MirrorRows mirrors;
    for (int32_t k = 0; k < total; ++k) {
        if (!Read_Track(file, k, s) || !Track_Fault(k, s).empty()) {
            error = true;
            break;
        }
        // Rows stay in step with List2: a row passed over as a double takes
        // no room in the columns.
        const int32_t row = f.List2.ListCount();
        if (!Is_Pathless(s.Track_Path) && ListBoxFindString(f.List2, s.Track_Path, -1, true) == -1) {
            // Giving way to events may have let a handler reshape the table.
            if (row > t.Bound()) {
                error = true;
                break;
            }
            Take_Stored(t, row, s);
            t.Total_Duration += s.Duration;
            t.Total_Size += s.File_Size;
            if (s.Rating_Class >= 1 && s.Rating_Class <= 5) {
                t.Class_Count[s.Rating_Class] += Currency(1);
                t.Class_Size[s.Rating_Class] += s.File_Size;
                t.Class_Duration[s.Rating_Class] += s.Duration;
            }
            f.List2.AddItem(s.Track_Path);
            mirrors.Add({Row_Number_Text(row), Class_Letter(s.Rating_Class), Duration_Text(s.Duration),
                         Size_Text(s.File_Size), Bitrate_Text(s.Bitrate)});
        }
        ctx.ports.loop.DoEvents();
        if (Progress_Due(k, total)) Show_Progress(f, k, total, 1);
    }
    mirrors.Flush(f);
    t.Track_Count = f.List2.ListCount();
}

void Shift_Played_Numbers(AppContext& ctx, int32_t added) {
    TrackTable& t = ctx.table;
    const int32_t count = t.Track_Count;
    int32_t highest = 0;
    for (int32_t row = 0; row < count; ++row) highest = std::max(highest, t.Played_Number[row]);
    for (int32_t row = std::max(count - 1 - added, 0); row < count; ++row) {
        if (t.Played_Number[row] <= 0) continue;
        t.Played_Number[row] += highest;
        t.Saved[row] = false;
    }
}

}  // namespace velmora
