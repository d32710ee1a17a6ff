#include "intake/directory_search.h"

#include <algorithm>
#include <cerrno>
#include <cctype>
#include <deque>
#include <fstream>
#include <sstream>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include "base/codepage1253.h"
#include "base/text_format.h"
#include "catalogue/list_box_find.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "core/suppress_events.h"

namespace velmora {

namespace {

constexpr const char* kSelectAll = "Επέλεξε Όλους - Select All";
constexpr const char* kSelectNone = "Κανένας - None";

// "*" any run, "?" one byte; both texts already folded.
bool Glob(std::string_view name, std::string_view pattern) {
    size_t n = 0, p = 0, star = std::string_view::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

std::string With_Slash(std::string path) {
    if (path.empty() || path.back() != '/') path += '/';
    return path;
}

// Sorted as a list box with its Sorted property sorts: case folded first.
void Sort_Names(std::vector<std::string>& names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (auto& n : names) keyed.emplace_back(FoldCase(n), std::move(n));
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& k : keyed) names.push_back(std::move(k.second));
}

// The names in a folder, files or folders; false when it cannot be read.
// Symbolic links count as files and are not followed, so a link loop cannot
// trap the search. Read with readdir, whose entry types spare a status call
// per name: the search must keep pace with the system's own find.
bool List_Folder(const std::string& folder, std::vector<std::string>* files, std::vector<std::string>* dirs) {
    DIR* d = ::opendir(folder.c_str());
    if (!d) return false;
    const int fd = ::dirfd(d);
    bool ok = true;
    for (;;) {
        errno = 0;
        const dirent* e = ::readdir(d);
        if (!e) {
            ok = errno == 0;
            break;
        }
        const std::string_view name = e->d_name;
        if (name == "." || name == "..") continue;
        unsigned char type = e->d_type;
        if (type == DT_UNKNOWN) {
            struct stat st {};
            if (::fstatat(fd, e->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0) continue;
            type = S_ISDIR(st.st_mode) ? DT_DIR : S_ISLNK(st.st_mode) ? DT_LNK : S_ISREG(st.st_mode) ? DT_REG : 0;
        }
        if (type == DT_DIR) {
            if (dirs) dirs->emplace_back(name);
        } else if (type == DT_REG || type == DT_LNK) {
            if (files) files->emplace_back(name);
        }
    }
    ::closedir(d);
    return ok;
}

// /proc/mounts writes blanks and a few other bytes as "\ooo".
std::string Unescape_Mount(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && std::isdigit(static_cast<unsigned char>(text[i + 1]))) {
            out += static_cast<char>(std::stoi(text.substr(i + 1, 3), nullptr, 8));
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

void Put_Head(TextBox& box, const std::string& text) { box.Prepend(text); }

}  // namespace

bool Matches_Patterns(std::string_view name, std::string_view patterns) {
    if (patterns.empty()) return true;
    const std::string folded = FoldCase(name);
    size_t start = 0;
    while (start <= patterns.size()) {
        size_t end = patterns.find(';', start);
        if (end == std::string_view::npos) end = patterns.size();
        const std::string one = FoldCase(Trim(patterns.substr(start, end - start)));
        if (!one.empty() && Glob(folded, one)) return true;
        start = end + 1;
    }
    return false;
}

void Refresh_File_List(FileSystemBox& file1) {
    std::vector<std::string> names, kept;
    if (!file1.Path().empty()) List_Folder(file1.Path(), &names, nullptr);
    for (auto& n : names)
        if (Matches_Patterns(n, file1.Pattern())) kept.push_back(std::move(n));
    Sort_Names(kept);
    file1.Assign(std::move(kept));
}

void Refresh_Dir_List(FileSystemBox& dir1) {
    std::vector<std::string> names;
    if (!dir1.Path().empty()) List_Folder(dir1.Path(), nullptr, &names);
    Sort_Names(names);
    const std::string parent = With_Slash(dir1.Path());
    for (auto& n : names) n = parent + n;
    dir1.Assign(std::move(names));
}

void Refresh_Drive_List(FileSystemBox& drive1, const std::string& mounts_file) {
    std::vector<std::string> points{"/"};
    std::ifstream in(mounts_file);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string device, point;
        if (!(fields >> device >> point)) continue;
        point = Unescape_Mount(point);
        if (std::find(points.begin(), points.end(), point) == points.end()) points.push_back(point);
    }
    drive1.Assign(std::move(points));
}

void Dir1_change(AppContext& ctx) {
    Form1& f = ctx.form1;
    ctx.intake.Search_Stale = true;
    f.File1.SetPath(f.Dir1.Path());
    Refresh_File_List(f.File1);
}

void Drive1_Change(AppContext& ctx) {
    Form1& f = ctx.form1;
    f.Dir1.SetPath(f.Drive1.Path());
    Refresh_Dir_List(f.Dir1);
}

void List3_Click(AppContext& ctx) {
    if (ctx.core.Suppress_Events) return;
    Form1& f = ctx.form1;
    std::string pattern;
    for (int i = 0; i < f.List3.ListCount(); ++i)
        if (f.List3.Selected(i)) pattern.append(f.List3.List(i)).append(";");
    if (!pattern.empty()) pattern.pop_back();
    ctx.intake.Search_Stale = true;
    f.File1.SetPattern(pattern);
    f.File1.SetPath(f.Dir1.Path());
    Refresh_File_List(f.File1);
}

void Command7_Click(AppContext& ctx, int index) {
    IntakeState& in = ctx.intake;
    ListBox& types = ctx.form1.List3;
    in.Type_Button_Fills = index == in.Last_Type_Button ? !in.Type_Button_Fills : true;
    SuppressEvents quiet(ctx.core);
    // The sound range ends before the second ".wmv", ".wmd" pair, the video
    // range before the play lists; "Extra" has only its first row so far.
    int first = 0, last = 0;
    switch (index) {
        case 0: last = types.ListCount() - 1; break;
        case 1: last = 13; break;
        case 2: first = 14, last = 28; break;
        case 3: first = 29, last = 31; break;
        default: break;
    }
    last = std::min(last, types.ListCount() - 1);
    for (int i = 0; i < types.ListCount(); ++i) types.SetSelected(i, false);
    for (int i = first; i <= last; ++i) types.SetSelected(i, in.Type_Button_Fills);
    quiet.Restore();
    List3_Click(ctx);
    in.Last_Type_Button = index;
}

void Command1_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    ListBox& dirs = f.List1;
    if (index == 0) {
        const bool select = f.Command1[0].Caption() != kSelectNone;
        f.Command1[0].SetCaption(select ? kSelectNone : kSelectAll);
        for (int i = 0; i < dirs.ListCount(); ++i) dirs.SetSelected(i, select);
    } else {
        for (int i = 0; i < dirs.ListCount(); ++i) dirs.SetSelected(i, !dirs.Selected(i));
    }
}

void Check2_Click(AppContext& ctx) {
    if (ctx.core.Suppress_Events) return;
    Form1& f = ctx.form1;
    if (f.Check2.Value() != 0) {
        ctx.intake.Use_Subdirectories = true;
        f.List1.SetEnabled(true);
        f.Frame10.SetVisible(true);
        if (!ctx.core.Suppress_Events && ctx.intake.Search_Stale) YpoFakel(ctx);
    } else {
        f.List1.SetEnabled(false);
        f.Frame10.SetVisible(false);
        ctx.intake.Use_Subdirectories = false;
    }
    if (f.List1.ListCount() == 0) {
        f.List1.SetEnabled(false);
        f.Command1[0].SetEnabled(false);
        f.Command2.SetEnabled(false);
        f.Option1_0.SetVisible(false);
        f.Option1_1.SetVisible(false);
        if (!ctx.core.Busy_Working) f.MultiPage1.SetValue(3);
    }
}

void Set_Check2(AppContext& ctx, int value) {
    if (ctx.form1.Check2.Value() == value) return;
    ctx.form1.Check2.SetValue(value);
    Check2_Click(ctx);
}

void Command2_Click(AppContext& ctx) { ctx.core.Esc_Key = 27; }

void YpoFakel(AppContext& ctx) {
    Form1& f = ctx.form1;
    if (!ctx.intake.Search_Stale || ctx.core.Suppress_Events) return;
    SuppressEvents quiet(ctx.core);
    if (f.List1.ListCount() > 0 && f.Dir1.Path() == f.List1.List(0) && !ctx.intake.Use_Subdirectories) {
        const MsgAnswer a = ctx.ports.dialogs.MsgBox("Νέα έρευνα για φακέλους; - New direcotry search?",
                                                     MsgButtons::YesNo, MsgIcon::Question, "");
        if (a == MsgAnswer::No) {
            Set_Check2(ctx, 0);
            return;
        }
    }
    f.List1.Clear();
    f.Frame1.SetEnabled(false);
    f.Check2.SetEnabled(false);
    Ypo_Fakeloi_Search(ctx, f.Dir1.Path());
    if (ctx.core.Esc_Key == 27) {
        ctx.core.Esc_Key = 0;
        Set_Check2(ctx, 0);
    } else {
        ctx.intake.Search_Stale = false;
    }
    f.Frame1.SetEnabled(true);
    f.Check2.SetEnabled(true);
}

void Ypo_Fakeloi_Search(AppContext& ctx, std::string path) {
    Form1& f = ctx.form1;
    EventLoop& loop = ctx.ports.loop;
    TextBox& progress = f.Text2[1];
    f.SetMousePointer(FormState::kHourglass);
    f.Command2.SetEnabled(true);
    std::deque<std::string> queue{With_Slash(std::move(path))};
    f.List1.SetVisible(false);
    Put_Head(progress, TimeText(loop.Now()) +
                           "-> Αναζήτηση Υποφακέλων με τα επιλεγμένα Αρχεία - Searching Subdirectories with Selected "
                           "Files\n");

    // The chosen types, without their "*". The test is exact, case included,
    // unlike File1's; a type chosen twice counts its files twice.
    std::vector<std::string> types;
    for (int i = 0; i < f.List3.ListCount(); ++i)
        if (f.List3.Selected(i)) types.emplace_back(f.List3.List(i).substr(1));

    int64_t dir_count = 0, file_count = 0;
    std::vector<std::string> files, dirs;
    bool cancelled = false;
    // The walk gives way after every name, and Esc or the stop button ends it
    // there; giving way is cheap, the loop reads the clock only now and then.
    auto stop_asked = [&] {
        loop.DoEvents();
        return ctx.core.Esc_Key == 27;
    };
    while (!queue.empty() && !cancelled) {
        const std::string folder = std::move(queue.front());
        queue.pop_front();
        files.clear();
        dirs.clear();
        // A folder that cannot be read leaves the walk at once, past its
        // closing lines: what was found stays in List1, hidden as the walk
        // keeps it, until the next search.
        if (!List_Folder(folder, &files, &dirs)) {
            f.SetMousePointer(FormState::kDefaultPointer);
            return;
        }
        // The order of the files changes no count, so only the folders,
        // which make the order of List1, are sorted.
        Sort_Names(dirs);
        for (const auto& d : dirs) {
            queue.push_back(folder + d + "/");
            f.Text2[2].SetText(Str(dir_count) + "--->" + folder + d);
            if ((cancelled = stop_asked())) break;
        }
        bool listed = false;  // once the folder is in List1, no file needs to look for it again
        for (size_t i = 0; i < files.size() && !cancelled; ++i) {
            const std::string& name = files[i];
            for (const auto& ext : types) {
                if (name.size() < ext.size() || name.compare(name.size() - ext.size(), ext.size(), ext) != 0)
                    continue;
                if (!listed && ListBoxFindString(f.List1, folder, -1, true) < 0) {
                    f.List1.AddItem(folder);
                    ++dir_count;
                }
                listed = true;
                ++file_count;
            }
            cancelled = stop_asked();
        }
        if (cancelled) {
            Put_Head(progress, TimeText(loop.Now()) + "-> Ακυρώθηκε - Canceled\n" + folder);
            Set_Check2(ctx, 0);
            ctx.intake.Search_Stale = true;
        }
    }

    f.List1.SetVisible(true);
    f.Command2.SetEnabled(false);
    const std::string counts =
        "Υποφάκελοι - Subdirectories -->" + Str(dir_count) + " Αρχεία - Files --->" + Str(file_count);
    const std::string now = TimeText(loop.Now());
    Put_Head(progress, now + counts + "\n" + now + "-> Έτοιμο - Ready\n");
    f.Text2[2].SetText("");
    f.Frame8.SetCaption(counts);
    f.SetMousePointer(FormState::kDefaultPointer);
}

}  // namespace velmora
