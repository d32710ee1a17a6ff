// A failing engine call never stops the program and is never silent: its
// first failure is logged, and a call failing on every Track or tick logs no
// more until it has worked once in between.
#include "core/port_faults.h"

#include <gtest/gtest.h>

#include "base/text_format.h"
#include "core/suppress_events.h"
#include "playback_fixture.h"
#include "ratings/reset_views.h"

namespace velmora {
namespace {

using testing::Player;

TEST(PortFaults, ACallFailingAtEveryTrackIsLoggedOnceUntilItWorksAgain) {
    Player app(6, 2.0);
    app.ctx.settings.Random_Order = 0;
    auto play_until = [&](size_t starts) {
        for (int i = 0; i < 200 && app.started.size() < starts; ++i) app.loop.Advance(100);
        ASSERT_EQ(app.started.size(), starts) << "the walk goes on past the failing call";
    };
    const std::string line = "-> Σφάλμα - Error [player.setVolume]: setVolume failed\n";
    app.player.SetCallFailing("setVolume");
    app.Press();
    play_until(3);
    EXPECT_EQ(testing::Count(app.Log(), line), 1u);

    app.player.SetCallFailing("setVolume", false);
    play_until(4);
    app.player.SetCallFailing("setVolume");
    play_until(6);
    EXPECT_EQ(testing::Count(app.Log(), line), 2u) << "failing again after a success is news";
}

TEST(PortFaults, EachEngineAndOperationIsItsOwnCall) {
    Player app(2, 2.0);
    for (StubEngine* engine : {&app.player, &app.reader, &app.video}) engine->SetCallFailing("stop");
    Reset_Views(app.ctx, 0);
    Reset_Views(app.ctx, 0);
    EXPECT_EQ(app.Log().substr(0, app.Log().find('\n') + 1),
              TimeText(app.loop.Now()) + "-> Σφάλμα - Error [video.stop]: stop failed\n");
    for (const char* engine : {"player", "reader", "video"})
        EXPECT_EQ(testing::Count(app.Log(), std::string("Error [") + engine + ".stop]: stop failed\n"), 1u) << engine;
    EXPECT_EQ(testing::Count(app.Log(), "Error ["), 3u);
}

TEST(PortFaults, TheSuppressionGuardPutsBackWhatItFound) {
    CoreState core;
    {
        SuppressEvents outer(core);
        {
            SuppressEvents inner(core);
            EXPECT_TRUE(core.Suppress_Events);
        }
        EXPECT_TRUE(core.Suppress_Events) << "an inner guard must not let the handlers in under an outer one";
        outer.Restore();
        EXPECT_FALSE(core.Suppress_Events);
        core.Suppress_Events = true;  // set by hand after the early restore: the guard leaves it
    }
    EXPECT_TRUE(core.Suppress_Events);
}

}  // namespace
}  // namespace velmora
