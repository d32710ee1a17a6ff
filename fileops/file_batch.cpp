#include "fileops/file_batch.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/codepage1253.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_fields.h"
#include "catalogue/filter_query.h"
#include "catalogue/track_list_totals.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "fileops/file_batch_confirm.h"
#include "fileops/file_copy.h"
#include "fileops/file_engine.h"
#include "ratings/rating_calculation.h"

namespace velmora {

namespace {

constexpr const char* kNoFiles = "Δεν υπάρχουν αρχεία αυτής της κατηγορίας - There aren't any files of this category";
constexpr const char* kNoDestination =
    "Δεν έχετε επιλέξει Φάκελο Μετακίνησης - You have not setted a Destination Directory";

// The class phrases by class code 0..6, then the selection (-1).
constexpr const char* kPhraseGreek[] = {" όλα τα αρχεία",
                                        "  όλα τα αρχεία C' Kλάσης",
                                        "  όλα τα αρχεία B' Kλάσης",
                                        "  όλα τα αρχεία A' Kλάσης",
                                        "  όλα τα αρχεία X' Kλάσης",
                                        "  όλα τα Ασημείωτα αρχεία",
                                        "  όλα τα αρχεία Υπέρ Kλάσης",
                                        "  όλα τα Επιλεγμένα αρχεία"};
constexpr const char* kPhraseEnglish[] = {" all",           "  all the C' Class", "  all the B' Class",
                                          "  all the A' Class", "  all the X' Class", "  all the Unmarked",
                                          "  all the Supper Class", "  all the Selected"};

int Phrase_Index(int class_code) { return class_code < 0 ? 7 : class_code; }

// How many files a command would take, from the class totals. The delete
// rows of C' and A' read each other's total.
int Files_Concerned(const AppContext& ctx, int class_code, bool delete_rows) {
    if (class_code == kBatchAll) return ctx.table.Track_Count;
    if (class_code == kBatchSelected) return ctx.form1.List2.SelCount();
    int code = class_code;
    if (delete_rows && code == 1) code = 3;
    else if (delete_rows && code == 3) code = 1;
    return static_cast<int>(ctx.table.Class_Count[Table_Class_Of(code)].ToDouble());
}

// Steps shared by the menus: false when there is nothing to act on.
bool Anything_To_Do(AppContext& ctx, int class_code, bool delete_rows) {
    if (ctx.form1.List2.ListCount() == 0) return false;
    if (Files_Concerned(ctx, class_code, delete_rows) <= 0) {
        ctx.ports.dialogs.MsgBox(kNoFiles, MsgButtons::OK, MsgIcon::Exclamation, "");
        return false;
    }
    return true;
}

MediaEngine& Playing_Engine(AppContext& ctx) {
    return ctx.form2.Visible() ? ctx.ports.video : ctx.form4.Visible() ? ctx.ports.second : ctx.ports.player;
}

std::string File_Name(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

void Remove_Row(AppContext& ctx, int row) {
    Form1& f = ctx.form1;
    Compact_TrackTable(ctx.table, row, f.List2.ListCount());
    f.List2.RemoveItem(row);
    for (auto& box : f.List3_0)
        if (row < box.ListCount()) box.RemoveItem(row);
}

// The Track of row `row` of the walked list, or -1 when the row is not taken.
int Track_Of_Row(const AppContext& ctx, const ListBox& list, bool from_results, int class_code, int row) {
    if (from_results) {
        if (!list.Selected(row)) return -1;
        const int number = Row_Track_Number(list.List(row));
        return number > 0 && number <= ctx.form1.List2.ListCount() ? number - 1 : -1;
    }
    if (class_code == kBatchSelected) return list.Selected(row) ? row : -1;
    if (class_code == kBatchAll) return row;
    const ListBox& letters = ctx.form1.List3_0[1];
    return row < letters.ListCount() && letters.List(row) == Class_Letter(Table_Class_Of(class_code)) ? row : -1;
}

// Copies or moves that the Tracks are to follow into a folder whose name the
// Collection's code page cannot hold would leave a Collection that cannot be
// saved, naming files that have gone: nothing is touched, and the log says why.
bool Refuse_Unstorable_Destination(AppContext& ctx, int mode) {
    const Settings& s = ctx.settings;
    const bool points = mode == kFileMove    ? s.Move_Points_To_New_Path != 0
                        : mode == kFileCopy ? s.Copy_Points_To_New_Path != 0
                                            : false;
    const std::string& dir = ctx.fileops.Destination_Directory;
    if (!points || FitsCp1253(dir)) return false;
    Log_Line(ctx, "-> Η Συλλογή δεν μπορεί να κρατήσει το όνομα του φακέλου προορισμού, δεν έγινε τίποτα - "
                  "The Collection cannot store the name of the destination folder, nothing was done ---> " +
                      dir);
    return true;
}

}  // namespace

int Table_Class_Of(int class_code) {
    static constexpr int kClass[] = {0, 2, 3, 4, 1, 0, 5};
    return class_code >= 1 && class_code <= 6 ? kClass[class_code] : 0;
}

BatchOutcome File_Batch(AppContext& ctx, bool from_results, int class_code, int mode, bool ask_move) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    const Settings& s = ctx.settings;
    BatchOutcome out;
    f.Text2[0].SetText("");
    if (Refuse_Unstorable_Destination(ctx, mode)) {
        out.refused = true;
        return out;
    }
    if ((mode == kFileMove && ask_move) || mode == kFileDelete) {
        if (Confirm_File_Batch(ctx, mode)) {
            out.cancelled = true;
            return out;
        }
    }
    ctx.core.Busy_Working = true;
    SuppressEvents quiet(ctx.core);
    const ListBox& list = !from_results ? f.List2 : f.List5.Enabled() ? f.List5 : f.List4;
    const int rows = list.ListCount();
    if (s.Report_On != 0) Report_Block(ctx, -1);

    // Opened before the first copy, so that it hears of every write the disk
    // refuses from here on.
    std::optional<FolderSync> disk;
    if (mode == kFileCopy) disk.emplace(ctx.fileops.Destination_Directory);
    // The rows a copy pointed at its new file, with the source they named.
    std::vector<std::pair<int, std::string>> pointed;

    Currency moved;
    for (int row = rows - 1; row >= 0; --row) {
        const int i = Track_Of_Row(ctx, list, from_results, class_code, row);
        if (i < 0) continue;
        const std::string path(f.List2.List(i));
        int error = 0;
        const Currency size = i <= t.Bound() ? t.File_Size[i] : Currency();
        if (mode == kFileDelete) {
            if (s.Delete_From_Disk == 0) {
                Remove_Row(ctx, i);
            } else {
                Copy_Move_Delete_File(ctx, path, "", kFileDelete, error);
                if (error == 0 || s.Delete_On_Disk_Error != 0) Remove_Row(ctx, i);
            }
        } else {
            const bool playing = path == ctx.playback.Current_File && i == t.Current_Track;
            if (playing && mode == kFileMove) {
                Log_Failure(ctx, Playing_Engine(ctx), "stop", Playing_Engine(ctx).stop());
                out.stopped = true;
            }
            const std::string destination = ctx.fileops.Destination_Directory + File_Name(path);
            Copy_Move_Delete_File(ctx, path, destination, mode, error);
            if (mode == kFileMove && s.Move_Points_To_New_Path != 0) {
                if (error == 0) {
                    f.List2.SetList(i, destination);
                    t.Saved[i] = false;
                }
            } else if (mode == kFileMove) {
                // The file has gone with the move, so this deletion fails and
                // the Track counts as a failure; the count has always said so.
                // A file moved onto itself is still the only copy: it stays.
                Remove_Row(ctx, i);
                if (path != destination) Delete_File_And_Side_Files(ctx, path, error);
            } else if (s.Copy_Points_To_New_Path != 0 && error == 0) {
                pointed.emplace_back(i, path);
                f.List2.SetList(i, destination);
                // Row 0, whatever the row: the copied Track itself stays marked saved.
                t.Saved[0] = false;
            }
        }
        if (error == 0) {
            ++out.successes;
            moved += size;
        } else {
            ++out.failures;
        }
        ++out.tries;
        if (out.tries % 50 == 0 || out.tries > rows - 50) Show_Progress(f, out.tries, rows, 0);
        ctx.ports.loop.DoEvents();
        if (ctx.core.Esc_Key == 27) {
            ctx.core.Esc_Key = 0;
            f.Text2[0].Prepend("Ακυρώθηκε - Canceled\n");
            out.escaped = true;
            break;
        }
    }
    // The batch's copies reach the disk together, before anything (a saved
    // Collection pointing at them) can rest on them. Copies the disk may not
    // hold are no place to point the Tracks: they go back to their sources,
    // which a copy leaves whole.
    if (ctx.fileops.Copies_Unsynced) {
        ctx.fileops.Copies_Unsynced = false;
        if (!disk || !disk->Sync()) {
            Log_Line(ctx, "-> XXX τα αντίγραφα δεν επιβεβαιώθηκαν στο δίσκο, τα κομμάτια μένουν στα αρχεία "
                          "προέλευσης - The copies could not be confirmed on the disk, the Tracks keep their "
                          "source files ---> " +
                              ctx.fileops.Destination_Directory);
            for (const auto& [i, source] : pointed) f.List2.SetList(i, source);
        }
    }
    t.Track_Count = f.List2.ListCount();
    t.Grow_Columns();
    if (t.Current_Track > t.Track_Count - 1) t.Current_Track = t.Track_Count > 0 ? t.Track_Count - 1 : 0;

    const bool points = s.Move_Points_To_New_Path != 0 || s.Copy_Points_To_New_Path != 0;
    if ((mode == kFileDelete && s.Delete_From_Disk != 0) || points) {
        const double mb = moved.ToDouble();
        const std::string sum = mb > 1024 ? Format(mb / 1024, "0.00") + "Gb" : Format(mb, "0.00") + "Mb";
        Log_Line(ctx, "-> Προσπάθειες Αντιγραφής/Μετακίνησης/Διαγραφής - Copy/Move/Delete Tries: " + Str(out.tries) +
                          "\n. Αποτυχίες - Failures: " + Str(out.failures) + "\n. Επιτυχίες - Success :" +
                          Str(out.successes));
        Log_Line(ctx, "-> Αντιγράφηκαν/Μετακινήθηκαν/Διαγράφησαν " + sum + " have been copied/moved/deleted!");
    }
    if (mode != kFileCopy || s.Copy_Points_To_New_Path != 0) {
        Calculate_Ratings(ctx);
        Etiketes_Synol_Songs(ctx);
        Add_Filters(ctx);
    }
    if (s.Report_On != 0) Report_Block(ctx, 0);
    ctx.core.Busy_Working = false;
    return out;
}

void Save_After_Batch(AppContext& ctx) {
    Remake_Filters(ctx);
    if (Save_Collection(ctx, false, false)) Log_Line(ctx, " -> Σώθηκε - Saved");
}

BatchOutcome MoveSelected(AppContext& ctx, int mode, int class_code) {
    const BatchOutcome nothing{.cancelled = true};
    if (!Anything_To_Do(ctx, class_code, false)) return nothing;
    const std::string& dir = ctx.fileops.Destination_Directory;
    if (dir.empty()) {
        ctx.ports.dialogs.MsgBox(kNoDestination, MsgButtons::OK, MsgIcon::Critical, "");
        return nothing;
    }
    const bool move = mode != 0;
    if (Refuse_Unstorable_Destination(ctx, move ? kFileMove : kFileCopy)) return BatchOutcome{.refused = true};
    const int k = Phrase_Index(class_code);
    const std::string question = std::string("Πρόκειται να ") + (move ? "μετακινήσετε" : "αντιγράψετε") +
                                 kPhraseGreek[k] + " στον κατάλογο: " + dir + "\n - You are going to " +
                                 (move ? "move" : "copy") + kPhraseEnglish[k] + " files to directory: " + dir;
    if (ctx.ports.dialogs.MsgBox(question, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) return nothing;
    const BatchOutcome done = File_Batch(ctx, false, class_code, move ? kFileMove : kFileCopy, false);
    const bool points = move ? ctx.settings.Move_Points_To_New_Path != 0 : ctx.settings.Copy_Points_To_New_Path != 0;
    if (!done.cancelled && points) Save_After_Batch(ctx);
    return done;
}

BatchOutcome Pro_File_Del(AppContext& ctx, int class_code) {
    if (!Anything_To_Do(ctx, class_code, true)) return BatchOutcome{.cancelled = true};
    const BatchOutcome done = File_Batch(ctx, false, class_code, kFileDelete, false);
    if (done.cancelled) return done;
    Filtered_Songs_List(ctx, 0);
    Save_After_Batch(ctx);
    return done;
}

}  // namespace velmora
