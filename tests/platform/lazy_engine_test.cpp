// The engines start on first use:
// until then they answer as an idle player does, and what was set before is
// handed on when they start.
#include "platform/lazy_engine.h"

#include <gtest/gtest.h>

#include "support/stub_engine.h"
#include "support/virtual_event_loop.h"

namespace velmora {
namespace {

TEST(LazyEngine, StartsOnFirstUseWithWhatWasSetBefore) {
    VirtualEventLoop loop;
    StubEngine* made = nullptr;
    StubEngine reading(loop);
    reading.SetDuration("/m/b.mp3", 20);
    LazyEngine engine(
        [&]() -> std::unique_ptr<MediaEngine> {
            auto stub = std::make_unique<StubEngine>(loop);
            stub->SetDuration("/m/a.mp3", 30);
            made = stub.get();
            return stub;
        },
        [&](const std::string& path) { return reading.newMedia(path); });

    // Start-up stops and closes every engine and sets its loudness: none of it starts one.
    EXPECT_TRUE(engine.stop());
    EXPECT_TRUE(engine.close());
    EXPECT_TRUE(engine.setVolume(40));
    engine.setMute(true);
    EXPECT_FALSE(engine.pause());
    EXPECT_EQ(std::tuple(engine.Started(), engine.playState(), engine.URL(), engine.volume()),
              std::tuple(false, int{PS_Undefined}, std::string(), 40));
    EXPECT_EQ(engine.currentPosition().value_or(-1), 0.0);
    EXPECT_EQ(engine.newMedia("/m/b.mp3")->duration(), 20.0) << "a file is read without a player";

    int states = 0;
    auto counted = engine.PlayStateChange.connect([&](int) { ++states; });
    ASSERT_TRUE(engine.setURL("/m/a.mp3"));
    ASSERT_TRUE(engine.Started());
    EXPECT_EQ(std::tuple(made->volume(), made->Muted()), std::tuple(40, true)) << "what was set before the start";
    int silent = 0;
    auto told = engine.SoundDeviceMissing.connect([&] { ++silent; });
    ASSERT_TRUE(engine.play());
    made->ReportNoSoundDevice();
    loop.Advance(1000);
    EXPECT_GT(states, 0) << "the started engine's events reach the program";
    EXPECT_EQ(silent, 1);
    EXPECT_EQ(engine.playState(), made->playState());
}

}  // namespace
}  // namespace velmora
