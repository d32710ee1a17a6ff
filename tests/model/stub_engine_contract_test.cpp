// The engine contract on the stub and virtual time, and what only the stub
// promises: exact virtual timing.

#include "support/engine_contract.h"
#include "support/stub_engine.h"
#include "support/virtual_event_loop.h"

namespace velmora {
namespace {

class StubHarness : public contract::EngineHarness {
public:
    StubHarness() {
        m_engine.SetDuration(AudioFile(), AudioSeconds());
        m_engine.SetAttribute(AudioFile(), "Title", AudioTitle());
        m_engine.SetAttribute(AudioFile(), "MediaType", "audio");
        m_engine.SetDuration(VideoFile(), 1.0);
        m_engine.SetAttribute(VideoFile(), "MediaType", "video");
        m_engine.SetFailing(GarbageFile());
    }
    EventLoop& Loop() override { return m_loop; }
    MediaEngine& Engine() override { return m_engine; }
    std::string AudioFile() const override { return "/media/tone.mp3"; }
    double AudioSeconds() const override { return 2.0; }
    std::string AudioTitle() const override { return "Contract Tone"; }
    std::string VideoFile() const override { return "/media/clip.mp4"; }
    std::string MissingFile() const override { return "/media/missing.mp3"; }
    std::string GarbageFile() const override { return "/media/garbage.mp3"; }
    double Tolerance() const override { return 0.001; }
    int TimeoutMs() const override { return 10000; }

private:
    VirtualEventLoop m_loop;
    StubEngine m_engine{m_loop};
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
    const int64_t start = loop.TickCount();

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
    EXPECT_EQ(resumed - start, 5700);
}

TEST(StubEngine, PositionTextTurnsToHoursFromTheFirstHour) {
    VirtualEventLoop loop;
    StubEngine engine(loop);
    engine.SetDuration("/m/long.mkv", 4 * 3600);
    ASSERT_TRUE(engine.setURL("/m/long.mkv").ok());
    const struct {
        double at;
        const char* text;
    } cases[] = {{0, "00:00"}, {83.9, "01:23"}, {3599, "59:59"}, {3600, "1:00:00"}, {3723, "1:02:03"}};
    for (const auto& c : cases) {
        ASSERT_TRUE(engine.setCurrentPosition(c.at).ok());
        EXPECT_EQ(engine.currentPositionString(), c.text) << c.at;
    }
}

}  // namespace
}  // namespace velmora
