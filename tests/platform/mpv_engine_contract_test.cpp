// The engine contract on libmpv (null audio and video outputs) and Qt's loop,
// over short files made with ffmpeg for the run.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "support/engine_contract.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

// The files, made once for the whole run and removed at its end.
class MediaFolder {
public:
    static const MediaFolder& Get() {
        static MediaFolder folder;
        return folder;
    }
    fs::path dir;
    std::string error;

    ~MediaFolder() {
        std::error_code ec;
        if (!dir.empty()) fs::remove_all(dir, ec);
    }

private:
    MediaFolder() {
        std::string pattern = (fs::temp_directory_path() / "velmora-engine-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            error = "cannot make a temporary folder";
            return;
        }
        dir = pattern;
        const std::string d = dir.string();
        Run("ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=2 -metadata title='Contract Tone' '" + d +
            "/tone.mp3'");
        Run("ffmpeg -v error -y -f lavfi -i testsrc=size=160x120:rate=25:duration=1 -c:v mpeg4 -pix_fmt yuv420p '" +
            d + "/clip.mp4'");
        std::ofstream(dir / "garbage.mp3") << "this is not a media file, only text that looks nothing like one\n";
    }
    void Run(const std::string& command) {
        if (error.empty() && std::system(command.c_str()) != 0) error = "failed: " + command;
    }
};

class MpvHarness : public contract::EngineHarness {
public:
    EventLoop& Loop() override { return m_loop; }
    MediaEngine& Engine() override { return m_engine; }
    std::string AudioFile() const override { return (MediaFolder::Get().dir / "tone.mp3").string(); }
    double AudioSeconds() const override { return 2.0; }
    std::string AudioTitle() const override { return "Contract Tone"; }
    std::string VideoFile() const override { return (MediaFolder::Get().dir / "clip.mp4").string(); }
    std::string MissingFile() const override { return (MediaFolder::Get().dir / "missing.mp3").string(); }
    std::string GarbageFile() const override { return (MediaFolder::Get().dir / "garbage.mp3").string(); }
    double Tolerance() const override { return 0.3; }
    int TimeoutMs() const override { return 5000; }
    const std::string& InitError() const { return m_engine.InitError(); }

private:
    QtEventLoop m_loop;
    MpvEngine m_engine{m_loop, MpvEngine::Options{"null", "null", 0}};
};

std::unique_ptr<contract::EngineHarness> MakeMpvHarness() {
    const MediaFolder& media = MediaFolder::Get();
    EXPECT_EQ(media.error, "");
    auto harness = std::make_unique<MpvHarness>();
    EXPECT_EQ(harness->InitError(), "");
    if (!media.error.empty() || !harness->InitError().empty()) return nullptr;
    return harness;
}

using contract::EngineContract;
INSTANTIATE_TEST_SUITE_P(Mpv, EngineContract, ::testing::Values(&MakeMpvHarness), contract::EngineContractName);

}  // namespace
}  // namespace velmora
