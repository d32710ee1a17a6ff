#include "intake/add_remove.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "base/collection_records.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/track_list_totals.h"
#include "catalogue/list_box_find.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "fileops/file_batch_confirm.h"
#include "fileops/file_engine.h"
#include "intake/directory_search.h"
#include "intake/identification.h"
#include "intake/playlist_import.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

constexpr const char* kNoFilesMessage =
    "Δεν υπάρχουν αρχεία αναζήτησης σε αυτό τον φάκελο - There aren't any under search type files in this Directory";
constexpr const char* kNoTypeMessage =
    "Eπιλέξτε τουλάχιστον έναν τύπο πολυμεσικού αρχείου - Select at least one type of media file";

void Set_Window_Enabled(AppContext& ctx, bool on) {
    ctx.form1.SetEnabled(on);
    ctx.form1.Tray("MnuSystemTray").SetEnabled(on);
}

// The Track list and its mirrors are hidden while rows come and go, so that
// a view has nothing to repaint until the end.
void Show_Lists(Form1& f, bool on) {
    f.List2.SetVisible(on);
    for (auto& box : f.List3_0) box.SetVisible(on);
}

bool Ends_With(const std::string& text, std::string_view tail) {
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

std::string With_Slash(std::string path) {
    if (path.empty() || path.back() != '/') path += '/';
    return path;
}

// What adding and removing share: the start of the run, the progress names,
// and the walk over the folders and files of the search page.
class PageWalk {
public:
    explicit PageWalk(AppContext& ctx) : m_ctx(ctx), m_f(ctx.form1) {}

    void Begin() {
        TrackTable& t = m_ctx.table;
        m_f.Text2[1].SetText("");
        Set_Window_Enabled(m_ctx, false);
        t.Current_Position = 0;
        m_ctx.core.Busy_Working = true;
        {
            SuppressEvents quiet(m_ctx.core);
            m_f.MultiPage1.SetValue(2);
        }
        m_f.SetMousePointer(FormState::kHourglass);
        if (m_ctx.settings.Report_On != 0) Report_Block(m_ctx, -1);
        if (t.Track_Count != 0 && t.Track_Count != m_f.List2.ListCount()) t.Track_Count = m_f.List2.ListCount();
        Show_Lists(m_f, false);

        IntakeState& in = m_ctx.intake;
        const bool selected = m_ctx.intake.Use_Subdirectories ? m_f.Option1_1.Value() != 0
                                                              : m_f.Option4[1].Value() != 0;
        if (in.Use_Subdirectories) {
            in.Source_Greek = selected ? "τους επιλεγμένους φάκελους" : "όλους τους φάκελους";
            in.Source_English = selected ? "selected directories" : "all directories";
        } else {
            const std::string where = m_f.File1.Path() + "]";
            in.Source_Greek = (selected ? "επιλογές ενός φακέλου [" : "ενός φακέλου [") + where;
            in.Source_English = (selected ? "selection of one directory [" : "one directory [") + where;
        }
    }

    // Calls visit(full path, name) for every file in turn; visit returns
    // false to leave both loops. In single-folder mode the outer loop still
    // runs once per file of File1, each time over the whole of File1: every
    // pass after the first meets only files it has already seen.
    template <class Visit>
    void Walk(Visit&& visit) {
        const bool subdirs = m_ctx.intake.Use_Subdirectories;
        const int last = (subdirs ? m_f.List1.ListCount() : m_f.File1.ListCount()) - 1;
        for (int i = 0; i <= last; ++i) {
            if (subdirs) {
                if (m_f.Option1_1.Value() != 0 && !m_f.List1.Selected(i)) continue;
                m_f.File1.SetPath(std::string(m_f.List1.List(i)));
                Refresh_File_List(m_f.File1);
            }
            const std::string folder = With_Slash(m_f.File1.Path());
            for (int j = 0; j < m_f.File1.ListCount(); ++j) {
                if (!subdirs && m_f.Option4[1].Value() != 0 && !m_f.File1.Selected(j)) continue;
                const std::string name(m_f.File1.List(j));
                if (!visit(folder + name, name)) return;
            }
            if ((i + 1) % 10 == 0 || i + 1 > last - 50) Show_Progress(m_f, i + 1, last + 1, 0);
        }
    }

    // Shows the lists again and gives every column its rows.
    void Resize() {
        TrackTable& t = m_ctx.table;
        Show_Lists(m_f, true);
        t.Track_Count = m_f.List2.ListCount();
        t.Grow_Columns();
    }

    void End() {
        m_ctx.core.Busy_Working = false;
        Etiketes_Synol_Songs(m_ctx);
        if (m_ctx.settings.Report_On != 0) Report_Block(m_ctx, 0);
        Set_Window_Enabled(m_ctx, true);
        m_f.SetMousePointer(FormState::kDefaultPointer);
    }

private:
    AppContext& m_ctx;
    Form1& m_f;
};

}  // namespace

void Command18_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    if (f.File1.ListCount() == 0) {
        ctx.ports.dialogs.MsgBox(kNoFilesMessage, MsgButtons::OK, MsgIcon::Exclamation, "");
        return;
    }
    if (f.List3.SelCount() == 0) {
        ctx.ports.dialogs.MsgBox(kNoTypeMessage, MsgButtons::OK, MsgIcon::None, "");
        return;
    }
    Set_Check2(ctx, 0);
    f.MultiPage1.SetValue(3);
    if (index == 0) {
        Add_Files_Under_Path(ctx);
    } else if (!Confirm_File_Batch(ctx, kBatchDelete)) {
        Removing_Files_Under_Path(ctx);
    }
}

void Command4_Click(AppContext& ctx) {
    Add_Files_Under_Path(ctx);
    ctx.form1.MultiPage1.SetValue(3);
    if (Identify_Properties(ctx, kIdentifyContinue)) {
        ctx.ports.loop.DoEvents();
        MnuMoreFiltersRemake_Click(ctx);
    }
}

void Command5_Click(AppContext& ctx) {
    if (Confirm_File_Batch(ctx, kBatchDelete)) return;
    Removing_Files_Under_Path(ctx);
    MnuMoreFiltersRemake_Click(ctx);
}

void Add_Files_Under_Path(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    IntakeState& in = ctx.intake;
    PageWalk walk(ctx);
    walk.Begin();
    in.Intake_Failed = false;

    int32_t added = 0, doubles = 0, refused = 0;
    // A name the Collection files cannot carry (a character outside their
    // code page, or too long for its record) is logged once, however many
    // passes meet it.
    std::unordered_set<std::string> refused_paths;
    const std::string head_greek = "-> Προστείθονται αρχεία από " + in.Source_Greek + ".Παρακαλώ περιμένετε... ";
    const std::string head_english = "- Adding files from " + in.Source_English + ". Please wait...";
    walk.Walk([&](const std::string& path, const std::string& name) {
        if (Ends_With(name, ".wpl") || Ends_With(name, ".m3u")) {
            Import_Playlist(ctx, -1, 0, path, path);
            return true;
        }
        if (!Storable_Track_Path(path)) {
            if (refused_paths.insert(path).second) {
                ++refused;
                in.Intake_Failed = true;
                Log_Line(ctx, "-> Το όνομα δεν χωρά στη συλλογή - The name cannot be stored in the Collection: " +
                                  path);
            }
            return true;
        }
        if (ListBoxFindString(f.List2, path, -1, true) >= 0) {
            ++doubles;
        } else {
            if (f.List2.ListCount() + 1 > kMaxTracks) {
                ctx.ports.dialogs.MsgBox(kIntakeFullMessage, MsgButtons::OK, MsgIcon::Critical, "");
                in.Intake_Failed = true;
                return false;
            }
            ++added;
            f.List2.AddItem(path);
            f.List3_0[0].AddItem(Format(int64_t{added} + t.Track_Count, "#00000"));
            f.List3_0[1].AddItem("-");
            f.List3_0[2].AddItem("00:00:00");
            f.List3_0[3].AddItem("00.00");
            f.List3_0[4].AddItem("000");
        }
        f.Text2[1].SetText(TimeText(loop.Now()) + head_greek + head_english + "\nΝέα αρχεία - New Files :" +
                           Str(added) + "\n ---> " + name +
                           "\nΔιπλά αρχεία που δεν προστέθηκαν [υπάρχουν στη συλλογή] - Double Files that were not "
                           "added [allready in Collection]:" +
                           Str(doubles));
        loop.DoEvents();
        return true;
    });

    walk.Resize();
    t.Class_Count[0] += Currency(int64_t{added});
    if (t.Current_Track < 0) t.Current_Track = 0;
    Class_Play_Totals(ctx);
    if (t.Current_Track < t.Track_Count) DeikseAgapi(ctx, t.Rating_Class[t.Current_Track], t.Current_Track);

    // Zero-length files are found only when they are identified; the count
    // stays in the line so that its readers find it where they expect it.
    TextBox& progress = f.Text2[1];
    progress.SetText(TimeText(loop.Now()) + "-> Αριθμός αρχείων που Προστέθηκαν - Number of Added files :" +
                     Str(added) + ". Λάθη σε αρχεία με μηδενικό μήκος - Error in files with zero bytes :" + Str(0) +
                     ". Διπλά αρχεία - Double Files :" + Str(doubles) + "\n" + progress.Text());
    if (refused > 0)
        Log_Line(ctx, "-> Αρχεία που δεν προστέθηκαν - Files not added :" + Str(refused));
    walk.End();
}

void Removing_Files_Under_Path(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    PageWalk walk(ctx);
    walk.Begin();

    RemovalTally tally;
    walk.Walk([&](const std::string& path, const std::string&) {
        const int row = ListBoxFindString(f.List2, path, -1, true);
        if (row >= 0) Remove_the_Files(ctx, path, row, tally);
        f.Text2[2].SetText(TimeText(loop.Now()) + With_Slash(f.File1.Path()));
        loop.DoEvents();
        return true;
    });

    if (t.Current_Track > f.List2.ListCount() - 1) t.Current_Track = f.List2.ListCount() - 1;
    walk.Resize();
    if (t.Track_Count == 0) {
        t.Class_Count.fill(Currency());
        t.Class_Size.fill(Currency());
        t.Class_Duration.fill(Currency());
        t.Total_Size = Currency();
        t.Total_Duration = Currency();
    }
    // Four digits here where adding writes five: the lists have always been
    // numbered so after a removal.
    std::vector<std::string> numbers;
    numbers.reserve(static_cast<size_t>(f.List2.ListCount()));
    for (int r = 0; r < f.List2.ListCount(); ++r) numbers.push_back(Format(r + 1, "#0000"));
    f.List3_0[0].Assign(std::move(numbers));
    TextBox& progress = f.Text2[1];
    progress.SetText(TimeText(loop.Now()) + "-> Αριθμός αρχείων που αφαιρέθηκαν - Number of removed files :" +
                     Str(tally.removed) + ". Λάθη σε αρχεία - Error in files :" + Str(tally.errors) + "\n" +
                     progress.Text());
    walk.End();
}

void Remove_the_Files(AppContext& ctx, const std::string& path, int row, RemovalTally& tally) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    const bool from_disk = ctx.settings.Delete_From_Disk != 0;
    auto take_out = [&] {
        Compact_TrackTable(t, row, f.List2.ListCount());
        f.List2.RemoveItem(row);
        for (auto& box : f.List3_0)
            if (row < box.ListCount()) box.RemoveItem(row);
    };
    if (from_disk) {
        int error = 0;
        Copy_Move_Delete_File(ctx, path, "", kFileDelete, error);
        if (error == 0 || ctx.settings.Delete_On_Disk_Error != 0) {
            const bool in_table = row <= t.Bound();
            tally.freed_size += in_table ? t.File_Size[row] : Currency();
            tally.freed_duration += in_table ? t.Duration[row] : Currency();
            take_out();
            ++tally.removed;
            tally.status = "XXXXXXXX";
        } else {
            ++tally.errors;
            tally.status = "Αδύνατη η διαγραφή - ?X?X??X?X? - Impossible to delete file";
        }
    } else {
        // Taken out of the Collection only: counted nowhere, so the texts
        // of a removal from the list say 0, as they always have.
        take_out();
    }

    if (path == ctx.playback.Current_File && row == t.Current_Track) {
        // The removal stands whether or not the player manages to stop.
        MediaEngine& engine = ctx.form2.Visible()   ? ctx.ports.video
                              : ctx.form4.Visible() ? ctx.ports.second
                                                    : ctx.ports.player;
        Log_Failure(ctx, engine, "stop", engine.stop());
    }

    const IntakeState& in = ctx.intake;
    std::string text = TimeText(ctx.ports.loop.Now()) + "-> Αφαιρούνται αρχεία από " + in.Source_Greek +
                       ".Παρακαλώ περιμένετε... " + "- Removing files from " + in.Source_English +
                       ". Please wait...\n ---> " + tally.status;
    if (from_disk) {
        const bool giga = tally.freed_size > Currency(1024);
        text += "\n" + Format(giga ? tally.freed_size / Currency(1024) : tally.freed_size, "0.00") +
                (giga ? "Gb" : "Mb") + "\nΛάθη διαγραφής από δίσκο - Errors while deleting from disk:" +
                Str(tally.errors);
    } else {
        text += "\n-> Απομακρύνθηκαν - Removed :" + Str(tally.removed);
    }
    f.Text2[1].SetText(text);
}

}  // namespace velmora
