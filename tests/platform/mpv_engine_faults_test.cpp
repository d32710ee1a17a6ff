// libmpv with files that end before they play and with no sound device to
// play on: the engine must come to a state the program moves on from.

#include <gtest/gtest.h>

#include <cstdlib>

#include "media_folder.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "support/child_process.h"

namespace velmora {
namespace {

using testing::Within;

const testing::MediaFolder& Files() {
    static const testing::MediaFolder folder([](testing::MediaFolder& f) {
        f.Ffmpeg("-f lavfi -i sine=duration=1 " + f.Q("tone.mp3"));
        f.Ffmpeg("-f lavfi -i sine=duration=0.2 -fflags +bitexact -flags:a +bitexact -map_metadata -1 -c:a pcm_s16le " +
                 f.Q("tone.wav"));
        // The header and no samples.
        f.Run("head -c 44 " + f.Q("tone.wav") + "> " + f.Q("header.wav"));
    });
    return folder;
}

// Loads the file, lets the load finish, plays it and waits for the state it comes to.
int Play_Until_Settled(QtEventLoop& loop, MpvEngine& engine, const std::string& path, double from = 0) {
    EXPECT_TRUE(engine.setURL(path).ok()) << path;
    EXPECT_TRUE(engine.setCurrentPosition(from).ok());
    Within(loop, 3000, [&] { return engine.playState() != PS_Transitioning; });
    (void)engine.play();  // a file with nothing in it may answer at once or a moment later
    Within(loop, 5000, [&] { return engine.playState() != PS_Playing; });
    return engine.playState();
}

TEST(MpvEngineFaults, FilesThatEndBeforeTheyPlayAndAMissingSoundDeviceLeaveAStateToGoOnFrom) {
    ASSERT_EQ(Files().error, "");
    // A sound server that is not there: the one output asked for cannot open.
    setenv("PULSE_SERVER", "unix:/nonexistent/velmora-no-sound", 1);
    QtEventLoop loop;
    MpvEngine silent(loop, {.ao = "pulse", .vo = "null", .wid = 0});
    MpvEngine null(loop, {.ao = "null", .vo = "null", .wid = 0});
    int told = 0;
    auto count = [&] { ++told; };
    const Subscription told_silent = silent.SoundDeviceMissing.connect(count);
    const Subscription told_null = null.SoundDeviceMissing.connect(count);
    // A Track resumed at its very end: mpv stands there paused and says nothing.
    EXPECT_EQ(Play_Until_Settled(loop, null, Files().Path("tone.mp3"), 60.0), PS_MediaEnded);
    EXPECT_EQ(Play_Until_Settled(loop, null, Files().Path("header.wav")), PS_Ready);
    EXPECT_EQ(null.URL(), "") << "a file with nothing in it is let go";
    EXPECT_EQ(Play_Until_Settled(loop, null, Files().Path("tone.wav")), PS_MediaEnded) << "and the next one plays";
    if (!silent.InitError().empty()) {
        unsetenv("PULSE_SERVER");
        GTEST_SKIP() << "this libmpv has no pulse output: " << silent.InitError();
    }
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Play_Until_Settled(loop, silent, Files().Path("tone.wav")), PS_MediaEnded);
    Within(loop, 200, [] { return false; });  // the notices come from the loop
    unsetenv("PULSE_SERVER");
    EXPECT_EQ(told, 1) << "once for the engine without sound, never for the one asked to be silent";
}

}  // namespace
}  // namespace velmora
