#include "app/startup.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "app/handlers.h"
#include "base/collection_records.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_query.h"
#include "collection/collection_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "core/constant_tables.h"
#include "core/port_faults.h"
#include "core/program_folders.h"
#include "core/running_report.h"
#include "core/settings_store.h"
#include "core/tray_icon.h"
#include "desktop/tray.h"
#include "playback/second_player.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"

namespace fs = std::filesystem;

namespace velmora {

namespace {

// A handler wired to a row the menu tables lack could never be reached: a
// fault of the program itself, which must not start half wired.
void Stop_On_Missing_Rows(const std::vector<std::string>& missing) {
    if (missing.empty()) return;
    for (const auto& row : missing) std::fprintf(stderr, "velmora: no menu row %s to wire\n", row.c_str());
    std::abort();
}

}  // namespace

void Set_Defaults(AppContext& ctx) {
    ctx.settings = Settings{};
    ctx.form1.Text3.SetText(std::to_string(ctx.settings.Backtrack_Steps));
    // The volume bar stands at the default loudness until a preferences file
    // says otherwise; at 0 a first run would be silent.
    ctx.form1.HScroll1.SetValue(20 * ctx.settings.Volume_Step);
    ctx.form4.HScroll1.SetValue(20 * ctx.settings.Volume_Step);
}

void Apply_Class_Play(AppContext& ctx) {
    bool any = false;
    for (int c = 0; c < kClassCount; ++c) {
        if (ctx.table.Class_Play[c] == -1) {
            any = true;
            ctx.table.Class_Play[c] = 0;
            MnuFavor_Play(ctx, c == 0 ? -1 : c);
        }
    }
    if (!any) MnuFavor_Play(ctx, 0);
}

void Initialise(AppContext& ctx) {
    Form1& f = ctx.form1;
    CoreState& core = ctx.core;
    ctx.ports.shell.Beep(1500, 50);
    std::error_code ec;
    fs::current_path(core.App_Path, ec);
    core.Version_String = kCollectionVersion;
    f.Timer1.SetEnabled(false);
    ctx.table.Class_Play.fill(0);
    ctx.settings.Trigger_Time.fill(0);
    ctx.settings.Trigger_Countdown.fill(0);
    ctx.catalogue.Filter_Text.assign(1);

    core.Genre_List = Genre_Captions();
    f.Combo1.Assign({core.Genre_List.begin(), core.Genre_List.end()});
    core.Media_Extensions = Media_Extension_Table();
    std::vector<std::string> types;
    for (const auto& e : core.Media_Extensions) types.push_back("*" + e);
    f.List3.Assign(std::move(types));
    // Only "*.mp3" is chosen at first; its click gives File1 its pattern.
    f.List3.SetSelected(0, true);
    f.List3.SetListIndex(0);

    for (int i = 0; i < 2; ++i) {
        f.Shape1[i].SetWidth(0);
        f.Label11[i].SetCaption("0%");
    }
    f.MultiPage1.SetValue(0);
    Command11_Click(ctx);
    Set_Defaults(ctx);
    const auto& addresses = Search_Address_Table();
    core.Search_Addresses.assign(addresses.begin(), addresses.end());
    f.Combo3.Assign(core.Search_Addresses);
    f.MultiPage1.SetValue(0);
    // The catalogue's leading entries, the window sizes, the button pictures
    // and the preview panes come with their own work.
    f.Command11.SetPicture("stop");
}

void Form_Load(AppContext& ctx) {
    Form1& f = ctx.form1;
    Settings& s = ctx.settings;
    TrackTable& t = ctx.table;

    // The program folder, the clocks on the loop, the handlers, the
    // program's folders and the controls at their defaults.
    ctx.core.App_Path = WithSlash(ctx.program_folder);
    ctx.ports.loop.Attach(f.Timer1);
    ctx.ports.loop.Attach(ctx.form4.Timer1);
    ctx.ports.loop.Attach(ctx.form5.Timer1);
    // Wired before anything runs, so that the load's own presses and settings
    // reach their handlers as a user's would.
    Stop_On_Missing_Rows(Wire_Handlers(ctx));
    for (int i = 0; i < 4; ++i) Make_Folder(ctx, i);
    Initialise(ctx);
    Reset_Views(ctx, 0);

    // The preferences; a damaged file leaves the defaults and says so.
    bool error = false;
    Load_Settings(ctx, error);
    if (error) Log_Line(ctx, "-> Λάθος κατά τη φόρτωση προτιμήσεων - Error while loading preferences");
    Disable_Unbuilt_Rows(ctx);

    // The start screen, when wanted, then the classes to play and the window.
    if (s.Splash_Show == -1) {
        ctx.core.Splash_Started = ctx.ports.loop.TickCount();
        ctx.splash.Show();
        ctx.splash.SetTopMost(true);
    }
    Apply_Class_Play(ctx);
    f.Show();

    // The last Collection, its filters when it has none stored and they are
    // to be built at load, and the size of the report.
    Load_Pointer(ctx);
    // Another program writing this Collection: the user may look at it
    // read-only, or leave it be and end here, writing nothing.
    if (!Claim_Or_Offer_Read_Only(ctx)) {
        if (s.Splash_Show == -1) ctx.splash.Hide();
        ctx.core.Ended = true;
        ctx.ports.loop.Quit();
        return;
    }
    Load_Collection(ctx);
    if (ctx.catalogue.Filter_Text.size() <= 1 && s.Filters_Load == -1) {
        Add_Filters(ctx);
        Reboot_Filters(ctx);
        Filtered_Songs_List(ctx, -1);
    }
    Report_Size(ctx);

    // The start screen stays for two seconds from its showing.
    if (s.Splash_Show == -1 && !ctx.core.Windowless) {
        EventLoop& loop = ctx.ports.loop;
        while (loop.TickCount() - ctx.core.Splash_Started < 2000)
            loop.WaitForEvents(static_cast<int>(2000 - (loop.TickCount() - ctx.core.Splash_Started)));
        ctx.splash.Hide();
    }

    // The class labels, and a first date for the timed events.
    Update_Class_Labels(ctx);
    if (s.Trigger_Date.empty() || s.Trigger_Date == " ") s.Trigger_Date = DateText(ctx.ports.loop.Now());

    // The window that plays is shown with a fast clock, or hidden with a slow one.
    FormState& playing = s.Second_Player == -1 ? static_cast<FormState&>(ctx.form4) : f;
    if (s.Window_Visible == -1) {
        playing.Show();
        playing.SetWindowState(0);
        f.Timer1.SetInterval(1000);
    } else {
        playing.Hide();
        playing.SetWindowState(1);
        f.Timer1.SetInterval(6000);
    }

    // The stored search addresses, and the tray icon.
    if (s.Search_Count > 0)
        for (const auto& link : s.Search_Links) f.Combo3.AddItem(link);
    f.Combo3.SetListIndex(0);
    f.Command14.SetEnabled(false);
    AddIconToTray(ctx);

    // Nothing plays by itself.
    ctx.ports.player.setAutoStart(false);
    ctx.ports.video.setAutoStart(false);
    ctx.ports.second.setAutoStart(false);
    Log_Failure(ctx, ctx.ports.player, "stop", ctx.ports.player.stop());

    // A preview of less than two seconds is taken for unset; the second
    // player's window when it was in use; the start-with-the-system mark.
    if (s.Preview_Seconds < 2) s.Preview_Seconds = 10;
    if (s.Second_Player == -1) Passage(ctx, -1);
    f.Menus("MnuMoreWindows").SetChecked(Run_Key_Exists(ctx, ctx.core.Executable_Name));

    // The first Track is the first played.
    if (f.List2.ListCount() >= 1 && t.Played_Count == 0) {
        t.Played_Count = 1;
        if (t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
            t.Played_Number[t.Current_Track] = 1;
            t.Saved[t.Current_Track] = false;
        }
    }

    // Playing starts by itself when the user asked for it, and the clock runs.
    if (s.Auto_Start == -1) Command3_Click(ctx, 0);
    f.Timer1.SetEnabled(true);
    ctx.core.Last_Save = ctx.ports.loop.Now().SecondsSinceMidnight();
}

void Form_QueryUnload(AppContext& ctx) {
    if (ctx.core.Ended) return;
    Save_Pointer(ctx);
    Save_Collection(ctx, false, false);
    Release_Collection(ctx);
    bool error = false;
    Save_Settings(ctx, error);
    DeleteIconFromTray(ctx);
    if (!ctx.core.Windowless) Wait(ctx.ports.loop, 500);
    ctx.form1.Timer1.SetEnabled(false);
    ctx.core.Ended = true;
    ctx.ports.loop.Quit();
}

void Main() {}

}  // namespace velmora
