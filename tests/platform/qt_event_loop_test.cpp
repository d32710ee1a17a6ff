#include "platform/qt_event_loop.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

#include "core/controls.h"

namespace velmora {
namespace {

TEST(QtEventLoop, PostedCallsRunOnTheLoopThreadWhoeverPosts) {
    QtEventLoop loop;
    const auto main_thread = std::this_thread::get_id();
    std::vector<std::thread::id> ran_on;
    std::thread poster([&] {
        for (int i = 0; i < 3; ++i) loop.Post([&] { ran_on.push_back(std::this_thread::get_id()); });
    });
    poster.join();
    EXPECT_TRUE(ran_on.empty()) << "nothing runs inside Post";
    for (int i = 0; i < 50 && ran_on.size() < 3; ++i) loop.WaitForEvents(20);
    EXPECT_EQ(ran_on, std::vector<std::thread::id>(3, main_thread));
}

TEST(QtEventLoop, NowIsTheLocalTimeInAnyZone) {
    const char* old_tz = std::getenv("TZ");
    const std::string saved = old_tz ? old_tz : "";
    for (const char* zone : {"Europe/Athens", "America/St_Johns", "UTC"}) {
        setenv("TZ", zone, 1);
        tzset();
        QtEventLoop loop;
        const LocalTime now = loop.Now();
        const std::time_t t = std::time(nullptr);
        std::tm local{};
        localtime_r(&t, &local);
        // Within the second that may have ticked between the two reads.
        const int mine = now.SecondsSinceMidnight();
        const int theirs = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
        EXPECT_LE(std::abs(mine - theirs) % (24 * 3600 - 1), 1) << zone;
        EXPECT_EQ(now.year, local.tm_year + 1900) << zone;
    }
    old_tz ? setenv("TZ", saved.c_str(), 1) : unsetenv("TZ");
    tzset();
}

TEST(QtEventLoop, WaitingSleepsForTheWholeTime) {
    QtEventLoop loop;
    const int64_t start = loop.TickCount();
    const std::clock_t cpu = std::clock();
    Wait(loop, 300);
    const int64_t waited = loop.TickCount() - start;
    const double cpu_ms = 1000.0 * static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
    EXPECT_GE(waited, 300);
    EXPECT_LT(waited, 450);
    EXPECT_LT(cpu_ms, 100.0) << "a wait must not spin";
}

TEST(QtEventLoop, AnAttachedTimerFollowsItsControl) {
    QtEventLoop loop;
    Timer timer("t");
    int ticks = 0;
    auto sub = timer.Tick.connect([&] { ++ticks; });
    loop.Attach(timer);
    timer.SetInterval(50);
    Wait(loop, 120);
    EXPECT_EQ(ticks, 0) << "not enabled";
    timer.SetEnabled(true);
    Wait(loop, 280);
    EXPECT_GE(ticks, 4);
    EXPECT_LE(ticks, 6);

    timer.SetEnabled(false);
    const int stopped = ticks;
    Wait(loop, 150);
    EXPECT_EQ(ticks, stopped);

    timer.SetEnabled(true);
    loop.Detach(timer);
    Wait(loop, 150);
    EXPECT_EQ(ticks, stopped) << "detached";
}

TEST(QtEventLoop, ATickThatWaitsSeesItsTimerFireAgain) {
    QtEventLoop loop;
    Timer timer("clock");
    int depth = 0, deepest = 0, ticks = 0;
    auto sub = timer.Tick.connect([&] {
        ++ticks;
        ++depth;
        deepest = std::max(deepest, depth);
        if (depth == 1) Wait(loop, 200);
        --depth;
    });
    loop.Attach(timer);
    timer.SetInterval(40);
    timer.SetEnabled(true);
    for (int i = 0; i < 100 && ticks == 0; ++i) loop.WaitForEvents(20);
    timer.SetEnabled(false);
    EXPECT_GE(deepest, 2);
    loop.Detach(timer);
}

}  // namespace
}  // namespace velmora
