// The engine contract on the stub and virtual time, and the engines' one way
// of writing a position.

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

// The engines' one way of writing a position.
TEST(PositionText, TurnsToHoursFromTheFirstHour) {
    const std::pair<double, const char*> cases[] = {
        {0, "00:00"}, {83.9, "01:23"}, {3599, "59:59"}, {3600, "1:00:00"}, {3723, "1:02:03"}};
    for (const auto& [at, text] : cases) EXPECT_EQ(Position_Text(at), text) << at;
}

}  // namespace
}  // namespace velmora
