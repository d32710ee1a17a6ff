// The terminal's sleep timer on virtual time: what durations it takes, and
// the fade, the pause and the one call at the end.

#include <gtest/gtest.h>

#include "support/test_app.h"
#include "timed/sleep_timer.h"

namespace velmora {
namespace {

TEST(SleepTimer, DurationsAreHoursMinutesSecondsInOrder) {
    for (auto [text, seconds] : {std::pair{"30m", 1800}, {"1h15m", 4500}, {"2h5s", 7205}, {"3s", 3}})
        EXPECT_EQ(Parse_Sleep_Duration(text), seconds) << text;
    for (const char* bad : {"", "30", "m", "15m1h", "1m1m", "0s", "-5m", "1.5h", "5 m", "10x"})
        EXPECT_EQ(Parse_Sleep_Duration(bad), std::nullopt) << bad;
}

TEST(SleepTimer, FadesOverTheLastMinuteThenPausesAndGivesTheVolumeBack) {
    testing::TestApp app;
    app.player.SetDuration("/m/long.mp3", 3600);
    ASSERT_TRUE(app.player.setURL("/m/long.mp3").ok());
    ASSERT_TRUE(app.player.play().ok());
    ASSERT_TRUE(app.player.setVolume(80).ok());
    app.loop.Advance(100);
    ASSERT_EQ(app.player.playState(), PS_Playing);

    int done = 0;
    SleepTimer sleep(app.ctx, 90, [&] { ++done; });
    app.loop.Advance(29'000);
    EXPECT_EQ(app.player.volume(), 80);
    app.loop.Advance(31'000);  // 30 s left
    EXPECT_EQ(app.player.volume(), 40);
    app.loop.Advance(29'750);  // a quarter second left
    EXPECT_EQ(app.player.volume(), 1);
    EXPECT_EQ(done, 0);
    app.loop.Advance(5'000);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(app.player.playState(), PS_Paused);
    EXPECT_EQ(app.player.volume(), 80);
}

}  // namespace
}  // namespace velmora
