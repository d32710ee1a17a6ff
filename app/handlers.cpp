#include "app/handlers.h"

#include <cstddef>

#include "app/about_handlers.h"
#include "app/metadata_handlers.h"
#include "app/startup.h"
#include "app/window_handlers.h"
#include "catalogue/catalogue_search.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_query.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "desktop/collection_commands.h"
#include "desktop/collection_merge.h"
#include "desktop/pages.h"
#include "desktop/playlist_commands.h"
#include "fileops/file_batch.h"
#include "fileops/file_marks.h"
#include "fileops/results_batch.h"
#include "intake/add_remove.h"
#include "intake/directory_search.h"
#include "intake/identification.h"
#include "playback/play_modes.h"
#include "playback/play_state.h"
#include "playback/playback_clock.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"
#include "ratings/rating_menus.h"
#include "timed/snooze_window.h"

namespace velmora {

const char* const kNotBuiltTip = "Δεν υπάρχει ακόμη - Not available yet";

namespace {

// Rows that stay enabled and do nothing when chosen: the sleep entries exist
// as menu entries only, and Cancel closes the tray menu, as any choice does.
constexpr const char* kInertRows[] = {"mnurepeatsleepstart", "mnurepeatsleepvolume", "mnurepeatalarm",
                                      "mnurepeatoff",        "mnurepeatexit",        "mnurepeatsleeprestore",
                                      "mnusystemtraycancel"};

bool Is_Inert(const MenuItem& item) {
    for (const char* name : kInertRows)
        if (item.Name() == name) return true;
    return false;
}

void Disable_Unbuilt(MenuSet& set) {
    for (const auto& item : set.All()) {
        if (!item->Children().empty() || !item->Click.empty() || Is_Inert(*item)) continue;
        item->SetEnabled(false);
        item->SetToolTip(kNotBuiltTip);
    }
}

}  // namespace

std::vector<std::string> Wire_Handlers(AppContext& ctx) {
    Form1& f = ctx.form1;
    MenuSet& m = f.Menus;
    MenuSet& tray = f.Tray;
    const size_t missed_before[] = {m.Missed().size(), tray.Missed().size()};
    auto& links = ctx.handlers;
    auto on = [&](Signal<>& signal, void (*handler)(AppContext&)) {
        links.push_back(signal.connect([&ctx, handler] { handler(ctx); }));
    };
    auto on_index = [&](Signal<>& signal, void (*handler)(AppContext&, int), int index) {
        links.push_back(signal.connect([&ctx, handler, index] { handler(ctx, index); }));
    };
    // A text box or scroll bar changes through its value, not a click.
    auto on_contents = [&](Control& control, void (*handler)(AppContext&)) {
        links.push_back(control.Changed.connect([&ctx, handler](Change kind) {
            if (kind == Change::Contents) handler(ctx);
        }));
    };

    on(f.Timer1.Tick, Timer1_Timer);

    // The engines' events.
    links.push_back(ctx.ports.player.PlayStateChange.connect(
        [&ctx](int) { WindowsMediaPlayer1_PlayStateChange(ctx, kWindowMain); }));
    links.push_back(ctx.ports.video.PlayStateChange.connect(
        [&ctx](int) { WindowsMediaPlayer1_PlayStateChange(ctx, kWindowVideo); }));
    links.push_back(ctx.ports.second.PlayStateChange.connect(
        [&ctx](int) { WindowsMediaPlayer1_PlayStateChange(ctx, kWindowSecond); }));
    links.push_back(ctx.ports.player.StatusChange.connect([&ctx] { WindowsMediaPlayer1_StatusChange(ctx); }));
    for (MediaEngine* engine : {&ctx.ports.player, &ctx.ports.video, &ctx.ports.second})
        links.push_back(engine->SoundDeviceMissing.connect([&ctx] { WindowsMediaPlayer1_SoundDeviceMissing(ctx); }));

    // The transport.
    on(f.Command11.Click, Command11_Click);
    for (int i = 0; i < 2; ++i) on_index(f.Command3[i].Click, Command3_Click, i);
    for (int i = 0; i < 4; ++i) on_index(f.Command15[i].Click, Command15_Click, i);
    for (int i = 0; i < 3; ++i) on_index(f.Command10[i].Click, Command10_Click, i);
    on(f.Command8.Click, Command8_Click);
    // Seeking follows the user's move only: the clock writes the slider's
    // value every tick, and that must not seek.
    on(f.Slider1.Scroll, Slider1_Change);
    on_contents(f.HScroll1, HScroll1_Change);
    on(f.HScroll1.Scroll, HScroll1_Scroll);
    on_contents(f.Text3, Text3_Change);
    on(f.List2.Click, list2_click);
    on(f.List2.DblClick, list2_dblclick);

    // The Play menu.
    on(m("MnuMoreAutoStart").Click, MnuMoreAutoStart_Click);
    for (int i = 0; i < 3; ++i) on_index(m("MnuPlayAutoStartP", i).Click, MnuPlayAutoStartP_Click, i);
    on(m("MnuMoreRandom").Click, MnuMoreRandom_Click);
    on(m("MnuMorePreview_Active").Click, MnuMorePreview_Active_Click);
    on(m("MnuMoreDuration").Click, MnuMoreDuration_Click);
    on(m("MnuMoreMultiPreview").Click, MnuMoreMultiPreview_Click);
    on(m("MnuMorePauseActive").Click, MnuMorePauseActive_Click);
    on(m("MnuMorePauseDur").Click, MnuMorePauseDur_Click);
    on(m("MnuMoreSound").Click, MnuMoreSound_Click);
    for (int i = 0; i < 3; ++i) on_index(m("mnumorereplayn", i).Click, mnumorereplayn_Click, i);

    // Playing limited to classes, from the Play menu and the tray: -1 is Unmarked.
    static constexpr const char* kPlayClass[] = {"PlayUnClass", "PlayX", "PlayC", "PlayB", "PlayA", "PlayS"};
    for (int k = 0; k < 6; ++k) {
        const int code = k == 0 ? -1 : k;
        on_index(m(std::string("MnuMore") + kPlayClass[k]).Click, MnuFavor_Play, code);
        on_index(tray(std::string("TrayFavor") + kPlayClass[k]).Click, MnuFavor_Play, code);
    }
    on_index(m("MnuMorePlayAll").Click, MnuFavor_Play, 0);
    on_index(tray("TrayFavorPlayAll").Click, MnuFavor_Play, 0);

    // The Rating menu. The selection rows have codes of their own.
    on_index(m("MnuMoreClassAll").Click, SelectFavor, 0);
    on_index(m("MnuMoreClassC").Click, SelectFavor, 1);
    on_index(m("MnuMoreClassB").Click, SelectFavor, 2);
    on_index(m("MnuMoreClassA").Click, SelectFavor, 3);
    on_index(m("MnuMoreUnClass").Click, SelectFavor, 4);
    on_index(m("MnuMoreClassS").Click, SelectFavor, 5);
    on_index(m("MnuMoreClassX").Click, SelectFavor, -1);
    on(m("MnuMoreCheckFavorites").Click, MnuMoreCheckFavorites_Click);
    on(m("mnufilefavorreset").Click, mnufilefavorreset_Click);
    on(m("MnuFavorAuto2").Click, MnuFavorAuto2_Click);
    for (int i = 0; i < 2; ++i) on_index(m("MnumoreStar_Active", i).Click, MnumoreStar_Active_Click, i);
    for (int i = 0; i < 4; ++i) on_index(m("MnumoreStar_Colors", i).Click, MnumoreStar_Colors_Click, i);

    // The search page. The folder box lists the folder it is set to before
    // its change is told, as a classic folder box does on its own; the
    // drive and folder boxes tell a change made by the logic as well.
    links.push_back(f.Dir1.PathChange.connect([&ctx] {
        Refresh_Dir_List(ctx.form1.Dir1);
        Dir1_change(ctx);
    }));
    on(f.Drive1.PathChange, Drive1_Change);
    on(f.List3.Click, List3_Click);
    for (int i = 0; i < 5; ++i) on_index(f.Command7[i].Click, Command7_Click, i);
    for (int i = 0; i < 2; ++i) on_index(f.Command1[i].Click, Command1_Click, i);
    on(f.Check2.Click, Check2_Click);
    on(f.Command2.Click, Command2_Click);
    for (int i = 0; i < 2; ++i) on_index(f.Command18[i].Click, Command18_Click, i);
    on(f.Command4.Click, Command4_Click);
    on(f.Command5.Click, Command5_Click);
    on_contents(f.MultiPage1, MultiPage1_Change);

    // The Filters menu.
    on(m("MnuMoreFiltersRemake").Click, MnuMoreFiltersRemake_Click);

    // The catalogue: the nine boxes, the result lists, the two searches.
    for (int k = 0; k < 9; ++k) {
        on_index(f.Combo4_0[k].Click, Combo4_0_Click, k);
        on_index(f.Combo4_0[k].Change_, Combo4_0_Change, k);
    }
    on(f.List4.MouseDown, List4_MouseDown);
    on(f.List5.MouseDown, List5_MouseDown);
    on_index(f.Command6[0].Click, Command6_Click, 0);
    on(f.Command17.Click, Command17_Click);
    on_index(f.Command16[1].Click, Command16_Click, 1);
    on(f.Command16[0].Click, Command16_Execute);
    for (int i = 0; i < 3; ++i) on_index(f.Option3[i].Click, Option3_Click, i);
    on(f.Check3.Click, Check3_Click);
    on(f.Command19.Click, Ask_Destination_Directory);

    // The Copy, Move and Delete menus: class codes 0 all, 1 C', 2 B', 3 A',
    // 4 X', 5 Unmarked, 6 S', -1 the selected rows.
    static constexpr const char* kCopyRow[] = {"MnuFileCopyAll",    "MnuFileCopyCClass", "MnuFileCopyBClass",
                                               "MnuFileCopyAClass", "MnuFileCopyXClass", "MnuFileCopyUnClass",
                                               "MnuFileCopySClass"};
    static constexpr const char* kMoveRow[] = {"mnufilemoveall",    "MnuFileMoveCClass", "MnuFileMoveBClass",
                                               "MnuFileMoveAClass", "MnuFileMoveXClass", "MnuFileMoveUnClass",
                                               "MnuFileMoveSClass"};
    static constexpr const char* kDeleteRow[] = {"mnufiledeleteall", "mnufiledeleteC", "mnufiledeleteB",
                                                 "mnufiledeleteA",   "mnufiledeleteX", "mnufiledeleteunclass",
                                                 "mnufiledeleteS"};
    auto batch = [&](MenuItem& row, void (*run)(AppContext&, int, int), int mode, int code) {
        links.push_back(row.Click.connect([&ctx, run, mode, code] { run(ctx, mode, code); }));
    };
    auto copy_or_move = [](AppContext& c, int mode, int code) { MoveSelected(c, mode, code); };
    auto remove = [](AppContext& c, int, int code) { Pro_File_Del(c, code); };
    for (int code = 0; code <= 6; ++code) {
        batch(m(kCopyRow[code]), copy_or_move, 0, code);
        batch(m(kMoveRow[code]), copy_or_move, -1, code);
        batch(m(kDeleteRow[code]), remove, 0, code);
    }
    batch(m("MnuFileCopy"), copy_or_move, 0, -1);
    batch(m("mnufilesmove"), copy_or_move, -1, -1);
    batch(m("mnufilesdelete"), remove, 0, -1);
    static constexpr const char* kMarkRow[] = {"MnuFilecopyreference", "MnuFileMoveReference", "mnufiledeletedisk",
                                               "mnufiledeleterecycle", "mnufiledeleteevendiskerror"};
    for (int k = 0; k < 5; ++k) on_index(m(kMarkRow[k]).Click, File_Mark_Click, k);

    // Identification, from the Filters menu.
    on(m("MnuMoreFileSizesAll").Click, MnuMoreFileSizesAll_Click);
    on(m("MnuMoreFileSizesUnknonw").Click, MnuMoreFileSizesUnknonw_Click);
    on(m("MnuMoreFileSizesReadRatings").Click, MnuMoreFileSizesReadRatings_Click);
    on(m("MnuMoreFileSizesKeepRatings").Click, MnuMoreFileSizesKeepRatings_Click);

    // The tray's rating entries: codes 9 to 14 name the class outright.
    static constexpr const char* kTrayMark[] = {"TrayFavorUnclass", "TrayFavorX", "TrayFavorC",
                                                "TrayFavorB",       "TrayFavorA", "TrayFavorS"};
    for (int k = 0; k < 6; ++k) on_index(tray(kTrayMark[k]).Click, Tray_Favor_Click, 9 + k);
    on(tray("TrayFavorAuto").Click, MnuFavorAuto2_Click);

    // The tray's transport entries.
    on(tray("mnusystemtrayback").Click, mnusystemtrayback_Click);
    on(tray("mnusystemtraybackwards").Click, mnusystemtraybackwards_Click);
    on(tray("mnusystemtrayforward").Click, mnusystemtrayforward_Click);
    on(tray("mnusystemtraynext").Click, mnusystemtraynext_Click);
    on(tray("mnusystemtraypause").Click, mnusystemtraypause_Click);
    on(tray("mnusystemtraysuffle").Click, MnuMoreRandom_Click);
    on(tray("MnuSysTrayDaCapo").Click, MnuSysTrayDaCapo_Click);
    on(tray("mnusystrayrepeat").Click, mnusystrayrepeat_Click);

    // The Collection as a whole.
    on(m("mnufilesnew").Click, mnufilesnew_Click);
    on(m("mnuFileOpen").Click, mnuFileOpen_Click);
    on(m("mnuFileSave").Click, mnuFileSave_Click);
    on(m("mnuFileSaveAs").Click, mnuFileSaveAs_Click);
    on(m("mnuFileSaveAsAuto").Click, mnuFileSaveAsAuto_Click);
    on(m("mnuFileReset").Click, mnuFileReset_Click);
    on(m("mnufiledelete").Click, mnufiledelete_Click);
    on(m("MnuFileMerge").Click, MnuFileMerge_Click);
    for (int i = 0; i < 4; ++i) on_index(m("mnuFileCreateWPL", i).Click, mnuFileCreateWPL_Click, i);

    // Leaving, from the File menu or the tray.
    on(m("mnufilecollection", 4).Click, Form_QueryUnload);
    on(tray("mnusystemtrayexit").Click, Form_QueryUnload);

    // The snooze window and the Triggers menu.
    Wire_Form5(ctx);
    Wire_Window_Handlers(ctx, links);
    Wire_About_Handlers(ctx, links);

    // The report's rows keep their links in the report's state.
    Wire_Report_Menus(ctx);
    Wire_Metadata_Handlers(ctx);

    std::vector<std::string> missing;
    const MenuSet* sets[] = {&m, &tray};
    for (int k = 0; k < 2; ++k) {
        const auto& missed = sets[k]->Missed();
        missing.insert(missing.end(), missed.begin() + static_cast<std::ptrdiff_t>(missed_before[k]), missed.end());
    }
    return missing;
}

void Disable_Unbuilt_Rows(AppContext& ctx) {
    Disable_Unbuilt(ctx.form1.Menus);
    Disable_Unbuilt(ctx.form1.Tray);
}

}  // namespace velmora
