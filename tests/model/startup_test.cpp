#include "core/startup.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::TestApp;

TEST(Startup, AFirstRunMakesTheFoldersAndStartsTheClockLast) {
    TestApp app;
    int ticks_during_load = 0;
    auto sub = app.ctx.form1.Timer1.Tick.connect([&] { ++ticks_during_load; });
    const int64_t t0 = app.loop.TickCount();

    Form_Load(app.ctx);

    for (const char* f : {"velmora_reports", "velmora_sylloges", "velmora_preferences", "velmora_filtra"})
        EXPECT_TRUE(fs::is_directory(app.folder.Path() / f)) << f;
    EXPECT_EQ(app.ctx.core.App_Path, app.folder.Str());
    ASSERT_FALSE(app.shell.beeps.empty());
    EXPECT_EQ(std::pair(app.shell.beeps.front().frequency, app.shell.beeps.front().ms), std::pair(1500, 50));

    // The start screen stood for two seconds, during which the clock was off.
    EXPECT_GE(app.loop.TickCount() - t0, 2000);
    EXPECT_FALSE(app.ctx.splash.Visible());
    EXPECT_EQ(ticks_during_load, 0);

    EXPECT_TRUE(app.ctx.form1.Visible());
    EXPECT_TRUE(app.ctx.form1.Timer1.Enabled());
    EXPECT_TRUE(app.shell.tray_shown);
    EXPECT_EQ(app.shell.tray_tip, "Velmora II");
    EXPECT_FALSE(app.player.AutoStart());
    EXPECT_FALSE(app.second.AutoStart());
    EXPECT_FALSE(app.ctx.form1.Command14.Enabled());
    EXPECT_EQ(app.ctx.form1.List2.ListCount(), 0) << "a first run plays nothing";

    app.loop.Advance(3000);
    EXPECT_EQ(ticks_during_load, 3) << "the PlaybackClock ticks every second";
}

TEST(Startup, TheTablesKeepTheirOddRowsAndAFirstRunHasSound) {
    TestApp app;
    app.loop.SetNow(LocalTime{2026, 11, 23, 9, 5, 0});
    Form_Load(app.ctx);
    const Form1& f = app.ctx.form1;

    ASSERT_EQ(f.Combo1.ListCount(), 128);
    EXPECT_EQ(f.Combo1.List(2), "002- Κάντρυ - Country");
    EXPECT_EQ(f.Combo1.List(31), "031 - Τρανς - Trance");
    EXPECT_EQ(f.Combo1.List(32), "033 - Classical");
    EXPECT_EQ(f.Combo1.List(33), "034 - Instrumental");
    EXPECT_EQ(f.Combo1.List(34), "034 - Acid");
    EXPECT_EQ(f.Combo1.List(35), "035 - House");
    EXPECT_EQ(f.Combo1.List(127), "127 - Drum & Bass");

    ASSERT_EQ(f.List3.ListCount(), 32);
    EXPECT_EQ(f.List3.List(0), "*.mp3");
    EXPECT_EQ(f.List3.List(25), "*.wmv") << "duplicates stand as they are";
    EXPECT_EQ(f.List3.List(31), "*.wvx");
    EXPECT_EQ(f.List3.ListIndex(), 0);

    ASSERT_EQ(f.Combo3.ListCount(), 3);
    EXPECT_TRUE(f.Combo3.List(0).ends_with("results?search_query=") && f.Combo3.List(2).ends_with("#q="));

    EXPECT_EQ(f.HScroll1.Value(), 2000) << "a first run is not silent";
    EXPECT_EQ(app.ctx.settings.Delete_From_Disk, 0) << "a first run removes from the Collection, never from the disk";
    EXPECT_EQ(app.ctx.settings.Trigger_Date, "23/11/2026") << "an empty trigger date takes today's";
}

TEST(Startup, TheAutostartMenuFollowsTheDesktopEntry) {
    TestApp app;
    app.shell.autostart.insert("velmora");
    Form_Load(app.ctx);
    EXPECT_TRUE(app.ctx.form1.Menus("MnuMoreWindows").Checked());

    TestApp other;
    Form_Load(other.ctx);
    EXPECT_FALSE(other.ctx.form1.Menus("MnuMoreWindows").Checked());
}

TEST(Startup, LeavingRunsTheShutDownOrderOnce) {
    TestApp app;
    Form_Load(app.ctx);
    const int64_t t0 = app.loop.TickCount();
    Form_QueryUnload(app.ctx);
    EXPECT_FALSE(app.shell.tray_shown);
    EXPECT_GE(app.loop.TickCount() - t0, 500) << "waits half a second before ending";
    EXPECT_FALSE(app.ctx.form1.Timer1.Enabled());
    EXPECT_TRUE(app.ctx.core.Ended);
    EXPECT_TRUE(app.loop.QuitRequested()) << "the program ends";

    app.shell.tray_shown = true;
    Form_QueryUnload(app.ctx);
    EXPECT_TRUE(app.shell.tray_shown) << "a second close does nothing";
}

TEST(Startup, TheExitRowsOfTheFileAndTrayMenusLeave) {
    for (bool from_tray : {false, true}) {
        TestApp app;
        Form_Load(app.ctx);
        MenuItem& exit = from_tray ? app.ctx.form1.Tray("mnusystemtrayexit") : app.ctx.form1.Menus("mnufilecollection", 4);
        exit.Click.emit();
        EXPECT_TRUE(app.ctx.core.Ended) << from_tray;
        EXPECT_TRUE(app.loop.QuitRequested()) << from_tray;
        EXPECT_FALSE(app.shell.tray_shown) << from_tray;
    }
}

TEST(Startup, AppPathIsTheProgramFolderWhenWritableElseTheUserDataFolder) {
    testing::TempFolder exe, data;
    EXPECT_EQ(Resolve_App_Path(exe.Path().string(), data.Path().string()), exe.Str());
    const std::string missing = (exe.Path() / "not-there").string();
    const std::string path = Resolve_App_Path(missing, data.Path().string());
    EXPECT_EQ(path, data.Str() + "velmora/");
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(path.back(), '/');
}

}  // namespace
}  // namespace velmora
