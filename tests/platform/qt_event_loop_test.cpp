#include "platform/qt_event_loop.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "core/controls.h"
#include "support/child_process.h"

namespace velmora {
namespace {

// Gives the loop turns until the condition holds, for up to five seconds.
bool Until(QtEventLoop& loop, const std::function<bool()>& holds) { return testing::Within(loop, 5000, holds); }

TEST(QtEventLoop, PostedCallsRunOnTheLoopThreadWhoeverPosts) {
    QtEventLoop loop;
    const auto main_thread = std::this_thread::get_id();
    std::vector<std::thread::id> ran_on;
    std::thread poster([&] {
        for (int i = 0; i < 3; ++i) loop.Post([&] { ran_on.push_back(std::this_thread::get_id()); });
    });
    poster.join();
    EXPECT_TRUE(ran_on.empty()) << "nothing runs inside Post";
    EXPECT_TRUE(Until(loop, [&] { return ran_on.size() == 3; }));
    EXPECT_EQ(ran_on, std::vector<std::thread::id>(3, main_thread));

    // Several engines' threads post at once while the loop runs the calls:
    // each runs once, none is lost or torn.
    int ran = 0, elsewhere = 0;
    std::vector<std::thread> posters;
    for (int t = 0; t < 4; ++t)
        posters.emplace_back([&] {
            for (int i = 0; i < 5000; ++i)
                loop.Post([&] {
                    ++ran;
                    if (std::this_thread::get_id() != main_thread) ++elsewhere;
                });
        });
    EXPECT_TRUE(Until(loop, [&] { return ran == 20000; })) << ran;
    for (std::thread& poster : posters) poster.join();
    loop.DoEvents();
    EXPECT_EQ(std::tuple(ran, elsewhere), std::tuple(20000, 0));

    // A call that waits still sees the calls queued behind it run.
    bool second_ran = false, seen_while_waiting = false;
    loop.Post([&] {
        const int64_t start = loop.TickCount();
        while (!second_ran && loop.TickCount() - start < 1000) loop.WaitForEvents(10);
        seen_while_waiting = second_ran;
    });
    loop.Post([&] { second_ran = true; });
    EXPECT_TRUE(Until(loop, [&] { return second_ran; }));
    EXPECT_TRUE(seen_while_waiting);
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

TEST(QtEventLoop, WaitingSleepsAndAnAttachedTimerFollowsItsControlAndATickThatWaitsSeesItFireAgain) {
    QtEventLoop loop;
    Timer timer("t");
    int ticks = 0;
    auto sub = timer.Tick.connect([&] { ++ticks; });
    loop.Attach(timer);
    timer.SetInterval(50);
    const int64_t start = loop.TickCount();
    const std::clock_t cpu = std::clock();
    Wait(loop, 300);
    const double cpu_ms = 1000.0 * static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
    EXPECT_GE(loop.TickCount() - start, 300);
    EXPECT_LT(cpu_ms, 100.0) << "a wait must not spin";
    EXPECT_EQ(ticks, 0) << "not enabled";
    const int64_t enabled = loop.TickCount();
    timer.SetEnabled(true);
    ASSERT_TRUE(Until(loop, [&] { return ticks >= 3; }));
    // Qt's coarse timers may fire a twentieth early.
    EXPECT_GE(loop.TickCount() - enabled, 3 * 50 * 9 / 10) << "at its interval, not faster";

    timer.SetEnabled(false);
    const int stopped = ticks;
    Wait(loop, 150);
    EXPECT_EQ(ticks, stopped);

    int depth = 0, deepest = 0;
    auto waits = timer.Tick.connect([&] {
        deepest = std::max(deepest, ++depth);
        if (depth == 1) Wait(loop, 200);
        --depth;
    });
    timer.SetEnabled(true);
    EXPECT_TRUE(Until(loop, [&] { return deepest >= 2; }));
    timer.SetEnabled(false);

    waits.reset();
    timer.SetEnabled(true);
    loop.Detach(timer);
    const int detached = ticks;
    Wait(loop, 150);
    EXPECT_EQ(ticks, detached) << "detached";
}

}  // namespace
}  // namespace velmora
