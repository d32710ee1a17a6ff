#include "ratings/rating_menus.h"

#include <algorithm>
#include <array>

#include "base/text_format.h"
#include "catalogue/track_list_totals.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "ratings/rating_calculation.h"
#include "ratings/reset_views.h"

namespace velmora {

namespace {

// The class rows of the Play menu and of the tray's Play only menu, by flag index.
constexpr std::array<const char*, kClassCount> kPlayRow = {"MnuMorePlayUnClass", "MnuMorePlayX", "MnuMorePlayC",
                                                           "MnuMorePlayB",       "MnuMorePlayA", "MnuMorePlayS"};
constexpr std::array<const char*, kClassCount> kTrayPlayRow = {"TrayFavorPlayUnClass", "TrayFavorPlayX",
                                                               "TrayFavorPlayC",       "TrayFavorPlayB",
                                                               "TrayFavorPlayA",       "TrayFavorPlayS"};

// The selection menu's rows by its own codes: 0 All, 1 C, 2 B, 3 A, 4 Unmarked,
// 5 S, and -1 (X) last.
constexpr std::array<const char*, 7> kSelectRow = {"MnuMoreClassAll", "MnuMoreClassC",  "MnuMoreClassB",
                                                   "MnuMoreClassA",   "MnuMoreUnClass", "MnuMoreClassS",
                                                   "MnuMoreClassX"};

bool Any_Flag(const TrackTable& t) {
    return std::any_of(t.Class_Play.begin(), t.Class_Play.end(), [](int16_t on) { return on != 0; });
}

void Set_Favor_Caption(Form1& f, const std::string& caption) {
    f.Tray("MnuSystemTrayFavor").SetCaption(caption);
    f.Menus("MnuMoreFavor").SetCaption(caption);
}

}  // namespace

void MnuFavor_Play(AppContext& ctx, int class_code) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    MenuItem& play_all = f.Menus("MnuMorePlayAll");
    MenuItem& tray_all = f.Tray("TrayFavorPlayAll");
    std::string caption = f.Tray("MnuSystemTrayFavor").Caption();

    if ((class_code >= 1 && class_code <= 5) || class_code == -1) {
        const int flag = class_code == -1 ? 0 : class_code;
        t.Class_Play[flag] = t.Class_Play[flag] != 0 ? 0 : -1;
        for (MenuItem* row : {&f.Menus(kPlayRow[flag]), &f.Tray(kTrayPlayRow[flag])}) row->SetChecked(!row->Checked());
        play_all.SetChecked(false);
        tray_all.SetChecked(false);
    } else if (class_code == 0) {
        t.Class_Play[0] = 0;
        tray_all.SetChecked(!tray_all.Checked());
        play_all.SetChecked(!play_all.Checked());
        for (int k = 1; k < kClassCount; ++k) t.Class_Play[k] = 0;
        for (int k = 0; k < kClassCount; ++k) {
            f.Menus(kPlayRow[k]).SetChecked(false);
            f.Tray(kTrayPlayRow[k]).SetChecked(false);
        }
        // The mark goes with the blank in front of it.
        const size_t mark = caption.find('!');
        if (mark != std::string::npos) caption = caption.substr(0, mark == 0 ? 0 : mark - 1);
    }
    if (class_code != 0 && caption.find('!') == std::string::npos) caption += " ! ";
    Set_Favor_Caption(f, caption);

    // Nothing chosen any more: back to playing everything. Otherwise the
    // restriction is on, even after a press of All: the totals below take it
    // off again when no flag is set, but they stop short on an empty list,
    // where it stays on and the captions keep their class form.
    if (!play_all.Checked() && !Any_Flag(t)) {
        MnuFavor_Play(ctx, 0);
        t.Any_Class_Play = 0;
    } else {
        t.Any_Class_Play = -1;
    }

    Class_Play_Totals(ctx);
    Etiketes_Synol_Songs(ctx);
}

void ShowFavorites(AppContext& ctx) {
    Form1& f = ctx.form1;
    MenuItem& tray_favor = f.Tray("MnuSystemTrayFavor");
    MenuItem& more_favor = f.Menus("MnuMoreFavor");
    if (!Any_Flag(ctx.table)) {
        f.Tray("TrayFavorPlayAll").SetChecked(true);
        f.Menus("MnuMorePlayAll").SetChecked(true);
        for (int k = 0; k < kClassCount; ++k) {
            f.Menus(kPlayRow[k]).SetChecked(false);
            f.Tray(kTrayPlayRow[k]).SetChecked(false);
        }
        tray_favor.SetChecked(false);
        more_favor.SetChecked(false);
    } else {
        Set_Favor_Caption(f, tray_favor.Caption() + " (!)");
        f.Tray("TrayFavorPlayAll").SetChecked(false);
        f.Menus("MnuMorePlayAll").SetChecked(false);
        tray_favor.SetChecked(true);
        more_favor.SetChecked(true);
    }
}

void SelectFavor(AppContext& ctx, int class_code) {
    Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    const int count = f.List2.ListCount();
    if (count == 0) return;

    // Only this code's menu row marked, and nothing selected yet.
    SuppressEvents quiet(ctx.core);
    for (const char* name : kSelectRow) f.Menus(name).SetChecked(false);
    const int row_of_code = class_code == -1 ? 6 : class_code;
    if (row_of_code >= 0 && row_of_code < static_cast<int>(kSelectRow.size()))
        f.Menus(kSelectRow[row_of_code]).SetChecked(true);
    for (int i = 0; i < count; ++i) {
        f.List2.SetSelected(i, false);
        for (auto& box : f.List3_0) box.SetSelected(i, false);
    }

    // The codes are not the ratings; 4 stands for Unmarked, and -1 for no
    // rating at all, so the X row selects nothing.
    int64_t selected = 0;
    Currency size;
    const int rows = std::min(count, t.Bound() + 1);
    for (int i = 0; i < rows; ++i) {
        const int rating = t.Rating_Class[i];
        const bool take = class_code == 0 || (class_code == 4 ? rating == 0 : rating == class_code);
        if (!take) continue;
        f.List2.SetSelected(i, true);
        for (auto& box : f.List3_0) box.SetSelected(i, true);
        size += t.File_Size[i];
        ++selected;
    }

    // What was selected, counted in the log.
    quiet.Restore();
    Log_Line(ctx, "->" + std::string(" Αριθμός αρχείων : ") + std::to_string(selected) + " : Number of files" + "\n" +
                      "Μέγεθος (Mbytes): " + Trim(Str(size)) + " :Size (Mbytes)" + "\n");
}

void mnufilefavorreset_Click(AppContext& ctx) { Reset_Views(ctx, 2); }

void MnuMoreCheckFavorites_Click(AppContext& ctx) { Calculate_Ratings(ctx); }

}  // namespace velmora
