#include <gtest/gtest.h>

#include <string>

#include "app/startup.h"
#include "desktop/tray.h"
#include "playback/play_state.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using namespace testing;

TEST(Tray, LeftClicksHideAndBringBackThePlayingWindowOnTopRowsStayEqualAndAutostartFollows) {
    Running app;
    Form1& f = app.ctx.form1;
    ASSERT_TRUE(f.Visible());
    ASSERT_EQ(f.Timer1.Interval(), 1000);

    // The right button and stray mouse moves leave everything as it is.
    for (int message : {kTrayRightDown, 512, 0}) Form_MouseMove(app.ctx, message);
    EXPECT_TRUE(f.Visible());
    EXPECT_EQ(f.Timer1.Interval(), 1000);

    Form_MouseMove(app.ctx, kTrayLeftDown);
    EXPECT_FALSE(f.Visible());
    EXPECT_EQ(f.WindowState(), 1);
    EXPECT_EQ(f.Timer1.Interval(), 6000);
    EXPECT_EQ(app.ctx.form4.Timer1.Interval(), 6000);
    EXPECT_EQ(app.ctx.settings.Window_Visible, 0);

    Form_MouseMove(app.ctx, kTrayLeftDown);
    EXPECT_TRUE(f.Visible());
    EXPECT_EQ(f.WindowState(), 0);
    EXPECT_EQ(f.Timer1.Interval(), 1000);
    EXPECT_EQ(app.ctx.form4.Timer1.Interval(), 1000);

    // Both "Always on top" rows stay equal whichever is clicked.
    MenuItem& more = f.Menus("MnuMoreOnTop");
    MenuItem& tray = f.Tray("MnuSystemTrayTop");
    bool expected = tray.Checked();
    for (MenuItem* clicked : {&more, &more, &tray, &more, &tray, &tray}) {
        clicked->Click.emit();
        expected = !expected;
        EXPECT_EQ(more.Checked(), expected);
        EXPECT_EQ(tray.Checked(), expected);
        EXPECT_EQ(app.shell.on_top["Form1"], expected);
    }

    // With the second player in use, its window is the one the icon hides.
    f.Menus("MnuMoreMinimize").Click.emit();
    ASSERT_TRUE(app.ctx.form4.Visible());
    Form_MouseMove(app.ctx, kTrayLeftDown);
    EXPECT_FALSE(app.ctx.form4.Visible());
    EXPECT_FALSE(f.Visible());
    Form_MouseMove(app.ctx, kTrayLeftDown);
    EXPECT_TRUE(app.ctx.form4.Visible());
    EXPECT_FALSE(f.Visible());

    // The autostart entry follows the menu row; failures show their number.
    MenuItem& row = app.ctx.form1.Menus("MnuMoreWindows");
    const std::string name = app.ctx.core.Executable_Name;
    EXPECT_FALSE(Run_Key_Exists(app.ctx, name));

    row.Click.emit();
    EXPECT_TRUE(row.Checked());
    EXPECT_TRUE(Run_Key_Exists(app.ctx, name));
    row.Click.emit();
    EXPECT_FALSE(row.Checked());
    EXPECT_FALSE(Run_Key_Exists(app.ctx, name));
    EXPECT_TRUE(app.dialogs.Messages().empty());

    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    app.shell.autostart_fault = AutostartFault{13, false, "Permission denied"};
    row.Click.emit();
    EXPECT_TRUE(row.Checked()) << "the mark stays as set";
    app.shell.autostart_fault = AutostartFault{20, true, "Not a directory"};
    row.Click.emit();
    ASSERT_EQ(app.dialogs.Messages().size(), 2u);
    EXPECT_EQ(app.dialogs.Messages()[0].text, "Error 13 setting key\nPermission denied");
    EXPECT_EQ(app.dialogs.Messages()[1].text, "Error 20 opening key\nNot a directory");
}

// A run that ended hidden in the tray, started where there is no tray.
TEST(Tray, WithoutATrayTheWindowComesUpAndTheLogSaysSoOnce) {
    Running first;
    Form_MouseMove(first.ctx, kTrayLeftDown);
    Form_QueryUnload(first.ctx);

    TestApp app(first.folder.Str());
    app.shell.has_tray = false;
    Form_Load(app.ctx);
    EXPECT_TRUE(app.ctx.form1.Visible());
    EXPECT_EQ(app.ctx.form1.Timer1.Interval(), 1000);
    Show(app.ctx, "pause", kIconPaused);  // every change of the play state puts the icon up again
    EXPECT_EQ(Count(app.Log(), "No system tray"), 1u);
}

}  // namespace
}  // namespace velmora
