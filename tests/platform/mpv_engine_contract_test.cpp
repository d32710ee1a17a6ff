// The engine contract on libmpv (null audio and video outputs) and Qt's loop,
// over short files made with ffmpeg for the run.

#include <gtest/gtest.h>

#include <fstream>

#include "media_folder.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "support/engine_contract.h"

namespace velmora {
namespace {

const testing::MediaFolder& Files() {
    static const testing::MediaFolder folder([](testing::MediaFolder& f) {
        f.Ffmpeg("-f lavfi -i sine=frequency=440:duration=2 -metadata title='Contract Tone' " + f.Q("tone.mp3"));
        f.Ffmpeg("-f lavfi -i testsrc=size=160x120:rate=25:duration=1 -c:v mpeg4 -pix_fmt yuv420p " + f.Q("clip.mp4"));
        std::ofstream(f.dir / "garbage.mp3") << "this is not a media file, only text that looks nothing like one\n";
    });
    return folder;
}

struct MpvHarness : contract::EngineHarness {
    MpvHarness() {
        audio = Files().Path("tone.mp3"), video = Files().Path("clip.mp4");
        missing = Files().Path("missing.mp3"), garbage = Files().Path("garbage.mp3");
    }
    EventLoop& Loop() override { return loop; }
    MediaEngine& Engine() override { return engine; }

    QtEventLoop loop;
    MpvEngine engine{loop, MpvEngine::Options{"null", "null", 0}};
};

std::unique_ptr<contract::EngineHarness> MakeMpvHarness() {
    EXPECT_EQ(Files().error, "");
    auto harness = std::make_unique<MpvHarness>();
    EXPECT_EQ(harness->engine.InitError(), "");
    if (!Files().error.empty() || !harness->engine.InitError().empty()) return nullptr;
    return harness;
}

using contract::EngineContract;
INSTANTIATE_TEST_SUITE_P(Mpv, EngineContract, ::testing::Values(&MakeMpvHarness), contract::EngineContractName);

}  // namespace
}  // namespace velmora
