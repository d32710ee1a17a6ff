#include <gtest/gtest.h>

#include <deque>
#include <tuple>

#include "playback/second_player.h"
#include "playback/video_window.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;

double Position(const MediaEngine& engine) { return engine.currentPosition().value_or(-1); }

TEST(VideoWindow, ShowsTheFilmAtTheAudioPositionClosingGoesOnInAudioAndTheSizeIsKept) {
    Player app(2, 100.0);
    app.PressThenRun(10'000);
    mnuvideoshow_Click(app.ctx, 0);
    app.loop.Advance(5'000);
    Form2& w = app.ctx.form2;
    EXPECT_TRUE(w.Visible());
    EXPECT_EQ(std::tuple(app.video.playState(), app.player.URL()), std::tuple(PS_Playing, ""))
        << "the sound comes from one engine";
    EXPECT_NEAR(Position(app.video), 15, 0.5);
    // A window that never had a size shows the picture at 320 by 240.
    EXPECT_EQ(std::tuple(w.WindowsMediaPlayer1.Width(), w.WindowsMediaPlayer1.Height(), w.Inner.Height()),
              std::tuple(320, 240, 240 + kVideoStripHeight));

    app.ctx.form2.QueryUnload.emit();
    app.loop.Advance(1'000);
    EXPECT_FALSE(w.Visible());
    EXPECT_EQ(std::tuple(app.ctx.table.Video_Mode, app.video.URL(), app.player.URL(), app.player.playState()),
              std::tuple(0, "", app.Path(0), PS_Playing));
    EXPECT_NEAR(Position(app.player), 16, 0.5);
    EXPECT_TRUE(app.ctx.form1.Menus("mnuvideoshow", 1).Checked());
    EXPECT_FALSE(app.ctx.form1.Menus("mnuvideoshow", 0).Checked());

    // Opened again at its stored size; a full screen is not the window's size.
    app.ctx.settings.Video_Width = 800;
    app.ctx.settings.Video_Height = 600;
    mnuvideoshow_Click(app.ctx, 0);
    EXPECT_EQ(std::tuple(w.WindowsMediaPlayer1.Width(), w.WindowsMediaPlayer1.Height()),
              std::tuple(800, 600 - kVideoStripHeight));
    w.Full_Screen = true;
    w.Inner.SetWidth(1920);
    w.Resize.emit();
    EXPECT_EQ(std::tuple(w.WindowsMediaPlayer1.Width(), app.ctx.settings.Video_Width), std::tuple(1920, 800));
    w.Full_Screen = false;
    w.Inner.SetWidth(640);
    w.Resize.emit();
    EXPECT_EQ(app.ctx.settings.Video_Width, 640);
}

TEST(SecondPlayer, PassageBothWaysKeepsPositionAndVolumeAndDisablesTheEngineLeft) {
    Player app(2, 100.0);
    app.ctx.settings.Volume_Step = 40;
    app.PressThenRun(10'000);
    Passage(app.ctx, -1);
    app.loop.Advance(3'000);
    EXPECT_EQ(std::tuple(app.second.URL(), app.second.playState(), app.second.volume()),
              std::tuple(app.Path(0), PS_Playing, 40));
    EXPECT_NEAR(Position(app.second), 13, 0.5);
    EXPECT_EQ(std::tuple(app.player.URL(), app.player.Enabled()), std::tuple("", false));
    EXPECT_EQ(std::tuple(app.ctx.form4.Visible(), app.ctx.form1.Visible()), std::tuple(true, false));
    EXPECT_NEAR(app.ctx.form4.Slider1.Value(), 13, 1) << "the second window's clock moves its slider";

    app.ctx.form4.Command1.Click.emit();
    app.loop.Advance(2'000);
    EXPECT_EQ(std::tuple(app.player.URL(), app.player.playState(), app.player.volume(), app.ctx.settings.Second_Player),
              std::tuple(app.Path(0), PS_Playing, 40, 0));
    EXPECT_NEAR(Position(app.player), 15, 0.5);
    EXPECT_EQ(std::tuple(app.second.URL(), app.second.Enabled(), app.player.Enabled()), std::tuple("", false, false))
        << "neither way enables an engine again";
    EXPECT_EQ(std::tuple(app.ctx.form4.Visible(), app.ctx.form1.Visible()), std::tuple(false, true));
}

struct Panes : Player {
    Panes() : Player(2, 110.0) {
        for (int i = 0; i < kPaneCount; ++i) engines.emplace_back(loop);
        for (auto& e : engines) e.SetDuration(Path(1), 110.0);
        for (int i = 0; i < kPaneCount; ++i) ctx.ports.panes[i] = &engines[i];
        reader.SetAttribute(Path(1), "MediaType", "video");
        reader.SetAttribute(Path(0), "MediaType", "audio");
        ctx.form1.MultiPage1.SetValue(4);
    }
    void Click(int row) { ctx.form1.List2.SetListIndex(row); }
    std::deque<StubEngine> engines;
};

TEST(PreviewPanes, OneFilmFromTwelvePointsStoppedByAnAudioClickOrLeavingThePageThenNoPassage) {
    Panes app;
    app.Click(1);
    const auto& shown = app.ctx.form1.WindowsMediaPlayer3;
    for (int i = 0; i < kPaneCount; ++i) {
        const StubEngine& e = app.engines[i];
        EXPECT_EQ(std::tuple(e.URL(), e.Muted(), shown[i].Visible()), std::tuple(app.Path(1), true, true)) << i;
        if (i > 0) {
            EXPECT_NEAR(Position(e), (i - 0.5) / 11 * 110, 0.1) << i;
        }
    }
    EXPECT_EQ(app.player.URL(), "") << "the walk is not touched";

    app.Click(0);
    app.loop.RunPosted();
    for (int i = 0; i < kPaneCount; ++i)
        EXPECT_EQ(std::tuple(app.engines[i].playState(), shown[i].Visible()), std::tuple(PS_Stopped, false)) << i;

    app.Click(1);
    app.ctx.form1.MultiPage1.SetValue(0);
    for (int i = 0; i < kPaneCount; ++i)
        EXPECT_EQ(std::tuple(app.engines[i].URL(), shown[i].Visible()), std::tuple("", false)) << i;
    app.Click(1);
    EXPECT_EQ(app.engines[5].URL(), "") << "no panes off their page";

    // The second player with nothing loaded, or with the flag off, leaves the windows.
    app.ctx.playback.Second_Player_Flag = 0;
    app.ctx.form1.Show();
    Passage(app.ctx, -1);
    app.loop.Advance(1'000);
    EXPECT_EQ(std::tuple(app.second.URL(), app.ctx.form1.Visible(), app.ctx.form4.Visible()),
              std::tuple("", true, false));
    EXPECT_FALSE(Holds(app.Log(), "second.")) << "an empty file is no fault";
}

}  // namespace
}  // namespace velmora
