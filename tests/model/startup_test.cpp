#include "app/startup.h"

#include <gtest/gtest.h>

#include "core/program_folders.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::TestApp;

TEST(Startup, AFirstRunMakesTheFoldersAndStartsTheClockLast) {
    TestApp app;
    app.loop.SetNow(LocalTime{2026, 11, 23, 9, 5, 0});
    app.shell.autostart.insert("velmora");
    int ticks_during_load = 0;
    auto sub = app.ctx.form1.Timer1.Tick.connect([&] { ++ticks_during_load; });
    const int64_t t0 = app.loop.TickCount();
    // The hourglass from the reading of the preferences to the end of the
    // Collection's load; a first run has no preferences to read, and the
    // pointer comes back only with the load.
    std::vector<int> pointers;
    auto pointer_watch = app.ctx.form1.Changed.connect([&](Change) {
        if (pointers.empty() ? app.ctx.form1.MousePointer() != 0 : pointers.back() != app.ctx.form1.MousePointer())
            pointers.push_back(app.ctx.form1.MousePointer());
    });

    Form_Load(app.ctx);
    EXPECT_EQ(pointers, (std::vector<int>{FormState::kHourglass, FormState::kDefaultPointer}));

    for (const char* f : {"velmora_reports", "velmora_sylloges", "velmora_preferences", "velmora_filtra"})
        EXPECT_TRUE(fs::is_directory(app.folder.Path() / f)) << f;
    EXPECT_EQ(app.ctx.core.App_Path, app.folder.Str());
    ASSERT_FALSE(app.shell.beeps.empty());
    EXPECT_EQ(std::tuple(app.shell.beeps.front().frequency, app.shell.beeps.front().ms), std::tuple(1500, 50));

    // The start screen stood for two seconds, during which the clock was off.
    EXPECT_GE(app.loop.TickCount() - t0, 2000);
    EXPECT_FALSE(app.ctx.splash.Visible());
    EXPECT_EQ(ticks_during_load, 0);

    EXPECT_TRUE(app.ctx.form1.Visible() && app.ctx.form1.Timer1.Enabled() && app.shell.tray_shown);
    EXPECT_EQ(app.shell.tray_tip, "Velmora II");
    EXPECT_FALSE(app.player.AutoStart() || app.second.AutoStart() || app.ctx.form1.Command14.Enabled());
    EXPECT_EQ(app.ctx.form1.List2.ListCount(), 0) << "a first run plays nothing";
    EXPECT_TRUE(app.ctx.form1.Menus("MnuMoreWindows").Checked()) << "the autostart menu follows the desktop entry";

    app.loop.Advance(3000);
    EXPECT_EQ(ticks_during_load, 3) << "the PlaybackClock ticks every second";

    // The tables keep their odd rows, and a first run has sound.
    const Form1& f = app.ctx.form1;
    ASSERT_EQ(f.Combo1.ListCount(), 128);
    const std::pair<int, const char*> genres[] = {
        {2, "002- Κάντρυ - Country"}, {31, "031 - Τρανς - Trance"}, {32, "033 - Classical"},
        {33, "034 - Instrumental"},   {34, "034 - Acid"},           {35, "035 - House"},
        {127, "127 - Drum & Bass"},
    };
    for (const auto& [row, text] : genres) EXPECT_EQ(f.Combo1.List(row), text) << row;
    // Duplicates stand as they are.
    ASSERT_EQ(f.List3.ListCount(), 32);
    EXPECT_EQ(std::tuple(f.List3.List(0), f.List3.List(25), f.List3.List(31), f.List3.ListIndex()),
              std::tuple("*.mp3", "*.wmv", "*.wvx", 0));
    ASSERT_EQ(f.Combo3.ListCount(), 3);
    EXPECT_TRUE(f.Combo3.List(0).ends_with("results?search_query=") && f.Combo3.List(2).ends_with("#q="));
    EXPECT_EQ(f.HScroll1.Value(), 2000) << "a first run is not silent";
    EXPECT_EQ(app.ctx.settings.Delete_From_Disk, 0) << "a first run removes from the Collection, never from the disk";
    EXPECT_EQ(app.ctx.settings.Trigger_Date, "23/11/2026") << "an empty trigger date takes today's";
}

// Closing the window, and the exit rows of the file and tray menus.
TEST(Startup, EveryWayOutRunsTheShutDownOrderOnce) {
    for (int way = 0; way < 3; ++way) {
        SCOPED_TRACE(way);
        TestApp app;
        Form_Load(app.ctx);
        EXPECT_FALSE(app.ctx.form1.Menus("MnuMoreWindows").Checked()) << "no desktop entry";
        const int64_t t0 = app.loop.TickCount();
        if (way == 0) Form_QueryUnload(app.ctx);
        if (way == 1) app.ctx.form1.Menus("mnufilecollection", 4).Click.emit();
        if (way == 2) app.ctx.form1.Tray("mnusystemtrayexit").Click.emit();
        EXPECT_GE(app.loop.TickCount() - t0, 500) << "waits half a second before ending";
        EXPECT_FALSE(app.shell.tray_shown || app.ctx.form1.Timer1.Enabled());
        EXPECT_TRUE(app.ctx.core.Ended && app.loop.QuitRequested()) << "the program ends";

        app.shell.tray_shown = true;
        Form_QueryUnload(app.ctx);
        EXPECT_TRUE(app.shell.tray_shown) << "a second close does nothing";
    }
}

TEST(Startup, AppPathIsTheProgramFolderWhenWritableElseTheUserDataFolder) {
    testing::TempFolder exe, data;
    EXPECT_EQ(Resolve_App_Path(exe.Path().string(), data.Path().string()), exe.Str());
    const std::string missing = (exe.Path() / "not-there").string();
    const std::string path = Resolve_App_Path(missing, data.Path().string());
    EXPECT_EQ(path, data.Str() + "velmora/");
    EXPECT_TRUE(fs::is_directory(path));
}

}  // namespace
}  // namespace velmora
