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

// The files, made once for the whole run.
const testing::MediaFolder& Files() {
    static const testing::MediaFolder folder("velmora-engine", [](testing::MediaFolder& f) {
        f.Ffmpeg("-f lavfi -i sine=frequency=440:duration=2 -metadata title='Contract Tone' " + f.Q("tone.mp3"));
        f.Ffmpeg("-f lavfi -i testsrc=size=160x120:rate=25:duration=1 -c:v mpeg4 -pix_fmt yuv420p " + f.Q("clip.mp4"));
        std::ofstream(f.dir / "garbage.mp3") << "this is not a media file, only text that looks nothing like one\n";
    });
    return folder;
}

class MpvHarness : public contract::EngineHarness {
public:
    EventLoop& Loop() override { return m_loop; }
    MediaEngine& Engine() override { return m_engine; }
    std::string AudioFile() const override { return Files().Path("tone.mp3"); }
    double AudioSeconds() const override { return 2.0; }
    std::string AudioTitle() const override { return "Contract Tone"; }
    std::string VideoFile() const override { return Files().Path("clip.mp4"); }
    std::string MissingFile() const override { return Files().Path("missing.mp3"); }
    std::string GarbageFile() const override { return Files().Path("garbage.mp3"); }
    double Tolerance() const override { return 0.3; }
    int TimeoutMs() const override { return 5000; }
    const std::string& InitError() const { return m_engine.InitError(); }

private:
    QtEventLoop m_loop;
    MpvEngine m_engine{m_loop, MpvEngine::Options{"null", "null", 0}};
};

std::unique_ptr<contract::EngineHarness> MakeMpvHarness() {
    EXPECT_EQ(Files().error, "");
    auto harness = std::make_unique<MpvHarness>();
    EXPECT_EQ(harness->InitError(), "");
    if (!Files().error.empty() || !harness->InitError().empty()) return nullptr;
    return harness;
}

using contract::EngineContract;
INSTANTIATE_TEST_SUITE_P(Mpv, EngineContract, ::testing::Values(&MakeMpvHarness), contract::EngineContractName);

}  // namespace
}  // namespace velmora
