// The preview pane's engine on libmpv: what the handler asks goes out from
// the loop as one batch, and the state comes back from mpv's events.

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "media_folder.h"
#include "platform/mpv_pane_engine.h"
#include "platform/qt_event_loop.h"
#include "support/child_process.h"

namespace velmora {
namespace {

using testing::Within;

const testing::MediaFolder& Films() {
    static const testing::MediaFolder folder([](testing::MediaFolder& f) {
        f.Ffmpeg("-f lavfi -i testsrc=size=160x90:rate=25 -t 12 -g 25 -c:v mpeg4 " + f.Q("film.mkv"));
        f.Run("head -c 3000 /dev/urandom > " + f.Q("noise.mkv"));
    });
    return folder;
}

// Threads of this process that run at a lower priority than the test's own.
int Threads_Giving_Way() {
    const int ours = getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)));
    int giving_way = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(task.path() / "stat");
        const std::string stat((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        // The niceness is field 19; the name before field 3 is in parentheses and may hold spaces.
        std::istringstream fields(stat.substr(stat.rfind(')') + 2));
        std::string field;
        for (int i = 3; i <= 19; ++i) fields >> field;
        if (!field.empty() && std::stoi(field) > ours) ++giving_way;
    }
    return giving_way;
}

TEST(MpvPaneEngine, StartsAtItsPointMutedLetsGoOnCloseAndEndsAFilmItCannotOpenInReady) {
    ASSERT_EQ(Films().error, "");
    const int giving_way_before = Threads_Giving_Way();
    QtEventLoop loop;
    MpvPaneEngine pane(loop, {.ao = "null", .vo = "null", .wid = 0});
    ASSERT_EQ(pane.InitError(), "");
    const std::string film = Films().Path("film.mkv");
    ASSERT_TRUE(pane.setURL(film).ok());
    ASSERT_TRUE(pane.setCurrentPosition(6).ok());
    pane.setMute(true);
    ASSERT_TRUE(pane.play().ok());
    // Nothing has gone to mpv yet: the handler is still running.
    EXPECT_EQ(std::tuple(pane.URL(), pane.playState(), pane.currentPosition().value_or(-1)),
              std::tuple(film, PS_Transitioning, 6.0));
    ASSERT_TRUE(Within(loop, 5000, [&] { return pane.playState() == PS_Playing; }));
    auto item = pane.currentMedia();
    ASSERT_NE(item, nullptr);
    EXPECT_NEAR(item->duration(), 12, 0.5);
    EXPECT_NEAR(pane.currentPosition().value_or(-1), 6, 1.5) << "started at its point, not at the beginning";
    EXPECT_GT(Threads_Giving_Way(), giving_way_before) << "the pane decodes below the window's priority";

    ASSERT_TRUE(pane.close().ok());
    EXPECT_EQ(std::tuple(pane.URL(), pane.playState(), pane.currentMedia() == nullptr), std::tuple("", PS_Ready, true));

    // Not in a load that never ends.
    ASSERT_TRUE(pane.setURL(Films().Path("noise.mkv")).ok());
    ASSERT_TRUE(pane.play().ok());
    EXPECT_TRUE(Within(loop, 5000, [&] { return pane.playState() != PS_Transitioning; }));
    EXPECT_NE(pane.playState(), PS_Playing);
}

}  // namespace
}  // namespace velmora
