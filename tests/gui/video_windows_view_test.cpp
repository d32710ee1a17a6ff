// The video window and the second player window drawn offscreen over the
// stub engines: their closing, sizes and buttons reach the logic.
#include <QApplication>
#include <QToolButton>

#include <gtest/gtest.h>

#include "app/startup.h"
#include "desktop/qt/preview_panes_view.h"
#include "desktop/qt/second_player_window.h"
#include "desktop/qt/video_window.h"
#include "gui_support.h"
#include "playback/second_player.h"
#include "playback/transport.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::Eventually;

struct Windows : ::testing::Test {
    Windows() {
        Form_Load(app.ctx);
        rows = testing::Numbered_Rows((app.folder.Path() / "media").string(), 2, 300.0);
        testing::Make_Files(app, rows);
        testing::Fill_Tracks(app.ctx, rows);
        Command3_Click(app.ctx, 0);
        app.loop.Advance(20'000);
    }
    testing::TestApp app;
    std::vector<testing::TrackRow> rows;
};

TEST_F(Windows, TheVideoWindowTakesItsSizeGoesFullScreenAndClosingPlaysOnInTheMainWindow) {
    app.ctx.settings.Video_Width = 400;
    app.ctx.settings.Video_Height = 300;
    VideoWindow window(app.ctx.form2);
    app.ctx.form1.Menus("mnuvideoshow", 0).Click.emit();
    ASSERT_TRUE(Eventually([&] { return window.isVisible(); }));
    EXPECT_EQ(window.size(), QSize(400, 300));

    testing::Mouse(window, QPoint(5, 5), {QEvent::MouseButtonDblClick});
    ASSERT_TRUE(Eventually([&] { return app.ctx.form2.Full_Screen; }));
    QApplication::processEvents();
    EXPECT_EQ(std::tuple(app.ctx.settings.Video_Width, app.ctx.settings.Video_Height), std::tuple(400, 300))
        << "the screen's size is not the window's";
    testing::Key(window, Qt::Key_Escape);
    EXPECT_FALSE(app.ctx.form2.Full_Screen);

    window.close();
    ASSERT_TRUE(Eventually([&] { return !window.isVisible(); }));
    EXPECT_EQ(std::tuple(app.ctx.table.Video_Mode, app.player.URL()), std::tuple(0, rows[0].path));
}

TEST_F(Windows, TheSecondWindowsButtonAndItsCloseGoBackToTheMainWindow) {
    SecondPlayerWindow window(app.ctx.form4);
    app.ctx.form1.Command15[3].Click.emit();
    ASSERT_TRUE(Eventually([&] { return window.isVisible(); }));
    EXPECT_EQ(app.second.URL(), rows[0].path);
    testing::Child<QToolButton>(window, "Form4.Command1").click();
    EXPECT_EQ(std::tuple(app.ctx.settings.Second_Player, app.player.URL(), app.second.URL()),
              std::tuple(0, rows[0].path, ""));
    ASSERT_TRUE(Eventually([&] { return !window.isVisible(); }));

    Passage(app.ctx, -1);
    ASSERT_TRUE(Eventually([&] { return window.isVisible(); }));
    window.close();
    EXPECT_EQ(app.ctx.settings.Second_Player, 0);
}

TEST_F(Windows, ThePanesStripDoesItsFirstShowingsWorkAfterTheShowingInOrderAndOnce) {
    PreviewPanesView strip(app.ctx.form1);
    std::vector<int> done;
    strip.SetFirstShowWork({[&] { done.push_back(0); }, [&] { done.push_back(1); }, [&] { done.push_back(2); }});
    strip.show();
    EXPECT_TRUE(done.empty()) << "the showing itself stays short";
    ASSERT_TRUE(Eventually([&] { return done.size() == 3; }));
    strip.hide();
    strip.show();
    Eventually([] { return false; }, 100);
    EXPECT_EQ(done, (std::vector<int>{0, 1, 2}));
}

}  // namespace
}  // namespace velmora
