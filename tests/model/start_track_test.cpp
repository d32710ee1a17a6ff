#include "playback/start_track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include "collection/collection_file.h"
#include "playback/play_modes.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;

int Position(const StubEngine& engine) {
    return static_cast<int>(std::lround(engine.currentPosition().value_or(-1)));
}

TEST(StartTrack, APreviewSamplesAtOneFifthStepsThenMovesOnAndAShortTrackPlaysThrough) {
    Player app(3, 100.0);
    Settings& s = app.ctx.settings;
    s.Preview_Active = -1, s.Preview_Seconds = 10;
    s.Preview_Points.assign(4, 0);
    std::map<int, std::set<int>> heard;  // row -> positions seen at ticks while playing
    auto watch = app.ctx.form1.Timer1.Tick.connect([&] {
        if (app.player.playState() == PS_Playing) heard[app.ctx.table.Current_Track].insert(Position(app.player));
    });
    app.PressThenRun(60'000);

    ASSERT_GE(app.started.size(), 2u) << "the sampled Track moved on by itself";
    EXPECT_EQ(s.Preview_Points, (std::vector<int16_t>{20, 40, 60, 80}));
    const std::set<int>& first = heard[0];
    for (int point : {20, 40, 60, 80}) {
        EXPECT_TRUE(first.count(point + 5)) << "sampled at " << point;
        EXPECT_FALSE(first.count(point + 15)) << "no more than the sample at " << point;
    }
    EXPECT_FALSE(first.count(10) || first.count(95));

    // A Track shorter than the sample plays through and the walk moves on.
    Player brief(3, 4.0);
    brief.ctx.settings.Random_Order = 0, brief.ctx.settings.Preview_Active = -1, brief.ctx.settings.Preview_Seconds = 10;
    brief.PressThenRun(8'000);
    ASSERT_GE(brief.started.size(), 2u);
    EXPECT_EQ(brief.started[1].row, 1);
}

TEST(StartTrack, TheKindOfAFileAndAutoVideoModeStartsNothingForAFileThatIsNotVideo) {
    Player app(2, 100.0);
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"/m/a.avi", "audio", false}, {"/m/a.mp3", "PHOTO", true}, {"/m/a.mp3", "video", true},
        {"/m/a.mpeg", "other", true}, {"/m/a.MPG", "other", false}, {"/m/a.wmv", "", true},
        {"/m/a.mp3", "radio", false},
    };
    for (const auto& [path, media_type, video] : cases) {
        app.reader.SetAttribute(path, "MediaType", media_type);
        EXPECT_EQ(Is_Video_File(app.ctx, path), video) << path << " " << media_type;
    }

    app.ctx.table.Video_Mode = 1;
    app.reader.SetAttribute(app.Path(0), "MediaType", "Audio");
    app.reader.SetAttribute(app.Path(0), "Title", "Το πρώτο");
    app.PressThenRun(5'000);
    // Neither engine was given the file, the walk stands on the Track, the
    // tag boxes are filled all the same.
    EXPECT_EQ(std::tuple(app.player.URL() + app.video.URL(), app.ctx.table.Current_Track,
                         app.ctx.form1.Text1[0].Text()),
              std::tuple("", 0, "Το πρώτο"));
}

TEST(StartTrack, ReplacingThePlayingFileLetsGoAndResumesAtTheSamePointAndState) {
    for (bool paused : {false, true}) {
        SCOPED_TRACE(paused ? "paused" : "playing");
        Player app(2, 100.0);
        const std::string dump = Dump_File_Path(app.ctx);
        app.player.SetDuration(dump, 0.2);
        app.PressThenRun(30'000);
        if (paused) {
            (void)app.player.pause();
            app.loop.RunPosted();
        }
        const int before = Position(app.player);
        const std::string file = app.Path(0);
        std::string held;
        bool dump_there = false;
        Replace_Playing_File(app.ctx, file, "", "tags", [&] {
            held = app.player.URL();
            dump_there = std::filesystem::file_size(dump) > 0;
        });
        EXPECT_EQ(std::tuple(held, dump_there), std::tuple(dump, true))
            << "the engine held the dump file while the tags were written";
        EXPECT_FALSE(std::filesystem::exists(dump));
        app.loop.RunPosted();
        EXPECT_EQ(std::tuple(app.player.URL(), Position(app.player), app.player.playState(),
                             app.ctx.core.Suppress_Events),
                  std::tuple(file, before, paused ? PS_Paused : PS_Playing, false));
    }
}

TEST(StartTrack, ThePauseBetweenFilesIsTheTonesAndTheShortTickAlone) {
    Player app(3, 5.0);
    app.ctx.form1.Menus("MnuMorePauseActive").SetChecked(true);
    app.ctx.settings.Sound_On = -1, app.ctx.settings.Pause_Seconds = 8;
    std::vector<int64_t> playing_at;
    auto watch = app.player.PlayStateChange.connect([&](int) {
        if (app.player.playState() == PS_Playing) playing_at.push_back(app.loop.TickCount());
    });
    app.PressThenRun(13'000);
    ASSERT_GE(playing_at.size(), 2u);
    // Five seconds of the first Track, then the 300 ms tick, the load and the next start tick.
    EXPECT_LT(playing_at[1] - playing_at[0], 7'000) << "the configured eight seconds do not lengthen it";
    int tones = 0;
    for (const auto& b : app.shell.beeps)
        if ((b.frequency == 600 || b.frequency == 650) && b.ms == 100) ++tones;
    EXPECT_EQ(tones, 2 * static_cast<int>(app.started.size()));
}

// Leaving in the middle of a Track and starting again on the same folder.
TEST(Resume, ARestartGoesOnAtTheSameTrackByTheStartPointMode) {
    for (const auto& [mode, second] : {std::pair<uint8_t, int>{0, 0}, {1, 37}, {2, 37}}) {
        SCOPED_TRACE("Autostart_Index " + std::to_string(mode));
        Player first(5, 100.0);
        first.ctx.settings.Random_Order = 0;
        first.ctx.settings.Autostart_Index = mode;
        Save_Collection(first.ctx, false, true);  // the Collection as it stands on disk
        for (int press = 0; press < 3; ++press) first.Press();  // row 2, the third played
        first.loop.Advance(37'400);
        ASSERT_NEAR(first.player.currentPosition().value_or(0), 37, 0.5);
        Form_QueryUnload(first.ctx);

        TestApp again(first.folder.Str());
        for (int i = 0; i < 5; ++i) again.player.SetDuration(first.Path(i), 100.0);
        Form_Load(again.ctx);  // starts playing by itself
        again.loop.Advance(400);

        const TrackTable& t = again.ctx.table;
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Number[2], t.Played_Count), std::tuple(2, 3, 3));
        EXPECT_EQ(again.player.URL(), first.Path(2));
        EXPECT_EQ(again.player.playState(), PS_Playing);
        EXPECT_EQ(std::lround(again.player.currentPosition().value_or(-1)), second);

        again.ctx.form1.Command3[0].Click.emit();
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Number[3]), std::tuple(3, 4)) << "the walk goes on from there";
    }
}

// A Collection that was never played: the start numbers its current Track 1,
// and the row waits for the next save like any changed row.
TEST(Resume, TheFirstNumberGivenAtTheStartWaitsForTheSave) {
    Player first(3, 100.0);
    TrackTable& t = first.ctx.table;
    t.Played_Count = t.Played_High = 0;
    std::fill(t.Played_Number.begin(), t.Played_Number.end(), 0);
    t.Current_Track = 1;
    ASSERT_TRUE(Save_Collection(first.ctx, false, true));
    Form_QueryUnload(first.ctx);

    TestApp again(first.folder.Str());
    Form_Load(again.ctx);
    const TrackTable& loaded = again.ctx.table;
    EXPECT_EQ(std::tuple(loaded.Played_Count, loaded.Played_Number[1]), std::tuple(1, 1));
    EXPECT_FALSE(loaded.Saved[1]) << "a changed row waits for the next save";
}

}  // namespace
}  // namespace velmora
