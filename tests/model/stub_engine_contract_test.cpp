// The engine contract on the stub and virtual time, and what only the stub
// promises: exact virtual timing.

#include "support/engine_contract.h"
#include "support/stub_engine.h"
#include "support/virtual_event_loop.h"

namespace velmora {
namespace {

struct StubHarness : contract::EngineHarness {
    StubHarness() {
        audio = "/media/tone.mp3", video = "/media/clip.mp4";
        missing = "/media/missing.mp3", garbage = "/media/garbage.mp3";
        tolerance = 0.001, timeout_ms = 10000;
        engine.SetDuration(audio, audio_seconds);
        engine.SetAttribute(audio, "Title", audio_title);
        engine.SetAttribute(audio, "MediaType", "audio");
        engine.SetDuration(video, 1.0);
        engine.SetAttribute(video, "MediaType", "video");
        engine.SetFailing(garbage);
    }
    EventLoop& Loop() override { return loop; }
    MediaEngine& Engine() override { return engine; }

    VirtualEventLoop loop;
    StubEngine engine{loop};
};

std::unique_ptr<contract::EngineHarness> MakeStubHarness() { return std::make_unique<StubHarness>(); }

using contract::EngineContract;
INSTANTIATE_TEST_SUITE_P(Stub, EngineContract, ::testing::Values(&MakeStubHarness),
                         contract::EngineContractName);

TEST(StubEngine, EndsAtTheVirtualMillisecondTheDurationIsReached) {
    VirtualEventLoop loop;
    StubEngine engine(loop);
    engine.SetDuration("/m/a.mp3", 2.5);
    std::vector<int64_t> ended_at;
    auto sub = engine.PlayStateChange.connect([&](int) {
        if (engine.playState() == PS_MediaEnded) ended_at.push_back(loop.TickCount());
    });
    ASSERT_TRUE(engine.setURL("/m/a.mp3").ok());
    loop.DoEvents();
    ASSERT_TRUE(engine.setCurrentPosition(1.0).ok());
    ASSERT_TRUE(engine.play().ok());
    loop.Advance(700);
    ASSERT_TRUE(engine.pause().ok());  // 1.7 s in, 0.8 s left
    loop.Advance(5000);
    EXPECT_TRUE(ended_at.empty()) << "no end while paused";
    EXPECT_NEAR(engine.currentPosition().value(), 1.7, 1e-9);

    ASSERT_TRUE(engine.play().ok());
    const int64_t resumed = loop.TickCount();
    loop.Advance(799);
    EXPECT_EQ(engine.playState(), PS_Playing);
    loop.Advance(10);
    EXPECT_EQ(ended_at, std::vector<int64_t>{resumed + 800});
}

// The engines' one way of writing a position.
TEST(PositionText, TurnsToHoursFromTheFirstHour) {
    const std::pair<double, const char*> cases[] = {
        {0, "00:00"}, {83.9, "01:23"}, {3599, "59:59"}, {3600, "1:00:00"}, {3723, "1:02:03"}};
    for (const auto& [at, text] : cases) EXPECT_EQ(Position_Text(at), text) << at;
}

}  // namespace
}  // namespace velmora
