#include "support/virtual_event_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/controls.h"

namespace velmora {
namespace {

// Timers attached to a loop, logging "name@virtual-ms-since-start".
struct Clocks {
    VirtualEventLoop loop;
    std::vector<std::string> log;
    std::vector<Subscription> subs;

    void Watch(Timer& timer) {
        loop.Attach(timer);
        subs.push_back(timer.Tick.connect([this, &timer] {
            log.push_back(timer.Name() + "@" + std::to_string(loop.TickCount() - VirtualEventLoop::kStartTick));
        }));
    }
    static void Start(Timer& timer, int ms) {
        timer.SetInterval(ms);
        timer.SetEnabled(true);
    }
};

TEST(VirtualEventLoop, PostedCallsRunLaterAndInOrder) {
    VirtualEventLoop loop;
    std::vector<int> ran;
    loop.Post([&] {
        ran.push_back(1);
        loop.Post([&] { ran.push_back(3); });  // queued during DoEvents: the next turn's
    });
    loop.Post([&] { ran.push_back(2); });
    EXPECT_TRUE(ran.empty());

    loop.DoEvents();
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
    loop.WaitForEvents(1000);
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(loop.TickCount(), VirtualEventLoop::kStartTick) << "posts were pending, so time stood";
}

TEST(VirtualEventLoop, AdvanceFiresEveryDueTickInTimeOrder) {
    Clocks c;
    Timer fast("fast"), slow("slow"), off("off"), zero("zero");
    c.Watch(fast);
    c.Watch(slow);
    c.Watch(off);
    c.Watch(zero);
    Clocks::Start(fast, 300);
    Clocks::Start(slow, 500);
    off.SetInterval(100);  // never enabled
    Clocks::Start(zero, 0);

    c.loop.Advance(1000);
    EXPECT_EQ(c.log, (std::vector<std::string>{"fast@300", "slow@500", "fast@600", "fast@900", "slow@1000"}));
    EXPECT_EQ(c.loop.TickCount() - VirtualEventLoop::kStartTick, 1000);
}

TEST(VirtualEventLoop, WaitForEventsWakesAtTheFirstDueTimer) {
    Clocks c;
    Timer t("t");
    c.Watch(t);
    Clocks::Start(t, 300);

    c.loop.WaitForEvents(1000);
    EXPECT_EQ(c.log, (std::vector<std::string>{"t@300"}));
    c.loop.WaitForEvents(100);
    EXPECT_EQ(c.loop.TickCount() - VirtualEventLoop::kStartTick, 400) << "nothing due: the whole wait";

    // Wait covers the time exactly and fires what falls inside it.
    Wait(c.loop, 500);
    EXPECT_EQ(c.log, (std::vector<std::string>{"t@300", "t@600", "t@900"}));
    EXPECT_EQ(c.loop.TickCount() - VirtualEventLoop::kStartTick, 900);
}

TEST(VirtualEventLoop, ChangingATimerRestartsItsCount) {
    Clocks c;
    Timer t("t");
    c.Watch(t);
    Clocks::Start(t, 1000);
    c.loop.Advance(700);
    t.SetInterval(1000);  // the same value still restarts
    c.loop.Advance(700);
    EXPECT_TRUE(c.log.empty());
    t.SetEnabled(false);
    t.SetEnabled(true);
    c.loop.Advance(999);
    EXPECT_TRUE(c.log.empty());
    c.loop.Advance(1);
    EXPECT_EQ(c.log, (std::vector<std::string>{"t@2400"}));

    t.SetToolTip("no effect on the count");
    c.loop.Advance(1000);
    EXPECT_EQ(c.log.back(), "t@3400");

    c.loop.Detach(t);
    c.loop.Advance(5000);
    EXPECT_EQ(c.log.size(), 2u);
}

TEST(VirtualEventLoop, ATickThatWaitsSeesTimersFireInsideIt) {
    Clocks c;
    Timer clock("clock"), other("other");
    c.Watch(clock);
    c.Watch(other);
    int depth = 0, deepest = 0;
    auto sub = clock.Tick.connect([&] {
        ++depth;
        deepest = std::max(deepest, depth);
        if (depth == 1) Wait(c.loop, 700);
        --depth;
    });
    Clocks::Start(clock, 300);
    Clocks::Start(other, 500);

    c.loop.Advance(300);
    EXPECT_EQ(c.log, (std::vector<std::string>{"clock@300", "other@500", "clock@600", "clock@900", "other@1000"}));
    EXPECT_EQ(deepest, 2) << "the clock ticked again inside its own handler";
    EXPECT_EQ(c.loop.TickCount() - VirtualEventLoop::kStartTick, 1000);
}

TEST(VirtualEventLoop, LocalTimeMovesWithVirtualTime) {
    VirtualEventLoop loop;
    loop.SetNow(LocalTime{2024, 2, 28, 23, 59, 58});
    loop.Advance(1999);
    EXPECT_EQ(loop.Now().second, 59);
    loop.Advance(1);
    const LocalTime t = loop.Now();
    EXPECT_EQ((std::vector<int>{t.year, t.month, t.day, t.hour, t.minute, t.second}),
              (std::vector<int>{2024, 2, 29, 0, 0, 0}));
    loop.Advance(24 * 3600 * 1000);
    EXPECT_EQ(loop.Now().month, 3);
    EXPECT_EQ(loop.Now().day, 1);
}

}  // namespace
}  // namespace velmora
