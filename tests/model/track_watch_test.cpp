#include "playback/track_watch.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <tuple>

#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;
using Trouble = StubEngine::Trouble;

constexpr const char* kCannotPlay = "cannot be played, going on to the next one";
constexpr const char* kStandsStill = "made no progress for 5 seconds, going on to the next one";

// A walk that stalls spins the virtual clock for ever: end the test program
// with a message rather than wait for the suite's time limit.
struct Guarded : Player {
    explicit Guarded(int tracks, double seconds = 2.0) : Player(tracks, seconds) {
        ctx.settings.Random_Order = 0;
        m_guard.SetInterval(600'000);
        m_tick = m_guard.Tick.connect([] {
            std::fputs("ten virtual minutes without the walk ending: playing hangs\n", stderr);
            std::abort();
        });
        loop.Attach(m_guard);
        m_guard.SetEnabled(true);
    }
    ~Guarded() { loop.Detach(m_guard); }

    std::string Line(int row, const char* what) const {
        return "File ( " + std::to_string(row + 1) + ")" + Path(row) + " " + what;
    }
    int64_t Started_At(int row) const {
        for (const auto& s : started)
            if (s.row == row) return s.at;
        return -1;
    }

private:
    Timer m_guard{"Guard"};
    Subscription m_tick;
};

TEST(TrackWatch, AFileTheEngineCannotStartIsNamedKeepsItsRowAndIsPassedAtOnce) {
    Guarded app(4);
    TrackTable& t = app.ctx.table;
    app.player.SetFailing(app.Path(1));
    t.Rating_Class[1] = 4, t.Stop_Position[1] = Currency(7);
    app.Press();
    ASSERT_TRUE(app.RunToCycleEnd(60'000));

    EXPECT_EQ(app.Rows(), (std::vector<int>{0, 2, 3}));
    EXPECT_EQ(Count(app.Log(), app.Line(1, kCannotPlay)), 1u) << app.Log();
    EXPECT_TRUE(Holds(app.Log(), "-> Το αρχείο ( 2)" + app.Path(1) + " δεν αναπαράγεται, πάμε στο επόμενο - File"));
    // Passed within a few short ticks, not after the stall limit.
    EXPECT_LT(app.Started_At(2) - app.Started_At(0), 2'000 + kStallLimitMs);
    EXPECT_EQ(std::tuple(t.Rating_Class[1], t.Stop_Position[1]), std::tuple(4, Currency(7)))
        << "the row keeps its class and exit point";
}

TEST(TrackWatch, AFileThatLoadsAndThenDoesNotPlayIsGivenUpInBoundedTime) {
    struct Case {
        Trouble trouble;
        const char* line;
        int64_t earliest, latest;  // ms from its start to the next Track's
    };
    for (const Case& c : {Case{Trouble::StandsStill, kStandsStill, kStallLimitMs, kStallLimitMs + 2'000},
                          Case{Trouble::LoadsForever, kStandsStill, kStallLimitMs, kStallLimitMs + 2'000},
                          Case{Trouble::DroppedAtPlay, kCannotPlay, 0, 2'000}}) {
        SCOPED_TRACE(c.line);
        Guarded app(3);
        app.player.SetTrouble(app.Path(1), c.trouble);
        app.Press();
        ASSERT_TRUE(app.RunToCycleEnd(120'000));
        EXPECT_EQ(app.Rows(), (std::vector<int>{0, 1, 2}));
        EXPECT_EQ(Count(app.Log(), app.Line(1, c.line)), 1u) << app.Log();
        EXPECT_EQ(Count(app.Log(), "going on to the next one"), 1u) << "the good files play through";
        const int64_t waited = app.Started_At(2) - app.Started_At(1);
        EXPECT_GE(waited, c.earliest);
        EXPECT_LE(waited, c.latest);
    }
}

TEST(TrackWatch, TracksThatStandStillForAReasonAreLeftAloneAndNoSoundDeviceIsToldOnce) {
    Guarded paused(2, 30.0);
    paused.PressThenRun(3'000);
    Command11_Click(paused.ctx);
    paused.loop.Advance(60'000);
    EXPECT_EQ(paused.player.playState(), PS_Paused);
    Command11_Click(paused.ctx);
    ASSERT_TRUE(paused.RunToCycleEnd(120'000));

    // Hidden in the tray, the clock ticks every six seconds.
    Guarded hidden(2, 40.0);
    hidden.ctx.form1.Timer1.SetInterval(6'000);
    hidden.Press();
    ASSERT_TRUE(hidden.RunToCycleEnd(200'000));

    // One row: the end of the cycle lets go of the file it played. No sound
    // device is told once, however often the engines report it.
    Guarded single(1);
    single.player.ReportNoSoundDevice();
    single.video.ReportNoSoundDevice();
    single.Press();
    single.player.ReportNoSoundDevice();
    ASSERT_TRUE(single.RunToCycleEnd(60'000));
    single.loop.Advance(30'000);
    EXPECT_EQ(Count(single.Log(), "-> Δεν βρέθηκε συσκευή ήχου, τα αρχεία παίζουν χωρίς ήχο - "
                                  "No sound device found, files play without sound\n"),
              1u);

    for (Guarded* app : {&paused, &hidden, &single}) {
        EXPECT_EQ(Count(app->Log(), "going on to the next one"), 0u) << app->Log();
        EXPECT_EQ(app->started.size(), app->rows.size());
    }
}

}  // namespace
}  // namespace velmora
