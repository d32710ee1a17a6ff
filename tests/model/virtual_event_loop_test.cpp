// The virtual loop every model test runs on: if it fired timers out of order,
// let time move while posts wait, kept a changed timer's count or never
// re-entered a waiting tick, those tests would pass on a loop unlike the real one.
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

    void Watch(Timer& timer, int ms = -1) {
        loop.Attach(timer);
        subs.push_back(timer.Tick.connect([this, &timer] { log.push_back(timer.Name() + "@" + std::to_string(Ms())); }));
        if (ms >= 0) {
            timer.SetInterval(ms);
            timer.SetEnabled(true);
        }
    }
    int64_t Ms() const { return loop.TickCount() - VirtualEventLoop::kStartTick; }
};

TEST(VirtualEventLoop, PostsRunBeforeTimeMovesAndTimersFireInTimeOrder) {
    Clocks c;
    std::vector<int> ran;
    c.loop.Post([&] {
        ran.push_back(1);
        c.loop.Post([&] { ran.push_back(3); });  // queued during DoEvents: the next turn's
    });
    c.loop.Post([&] { ran.push_back(2); });
    EXPECT_TRUE(ran.empty());
    c.loop.DoEvents();
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
    c.loop.WaitForEvents(1000);
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(c.Ms(), 0) << "posts were pending, so time stood";

    Timer fast("fast"), slow("slow"), off("off"), zero("zero");
    c.Watch(fast, 300);
    c.Watch(slow, 500);
    c.Watch(off);
    off.SetInterval(100);  // never enabled
    c.Watch(zero, 0);
    c.loop.Advance(1000);
    EXPECT_EQ(c.log, (std::vector<std::string>{"fast@300", "slow@500", "fast@600", "fast@900", "slow@1000"}));

    c.log.clear();
    c.loop.WaitForEvents(1000);
    EXPECT_EQ(c.log, (std::vector<std::string>{"fast@1200"})) << "a wait ends at the first timer due";
    c.loop.WaitForEvents(50);
    EXPECT_EQ(c.Ms(), 1250) << "nothing due: the whole wait";
    Wait(c.loop, 550);  // covers the time exactly and fires what falls inside it
    EXPECT_EQ(c.log, (std::vector<std::string>{"fast@1200", "fast@1500", "slow@1500", "fast@1800"}));
    EXPECT_EQ(c.Ms(), 1800);
}

// A changed timer starts its count again; a tick that waits sees timers,
// its own too, fire inside it.
TEST(VirtualEventLoop, AChangedTimerRestartsItsCountAndATickThatWaitsSeesTimersFire) {
    Clocks c;
    Timer t("t");
    c.Watch(t, 1000);
    c.loop.Advance(700);
    t.SetInterval(1000);  // the same value still restarts
    c.loop.Advance(700);
    t.SetEnabled(false);
    t.SetEnabled(true);
    c.loop.Advance(999);
    EXPECT_TRUE(c.log.empty());
    c.loop.Advance(1);
    t.SetToolTip("no effect on the count");
    c.loop.Advance(1000);
    EXPECT_EQ(c.log, (std::vector<std::string>{"t@2400", "t@3400"}));
    c.loop.Detach(t);

    c.log.clear();
    Timer clock("clock"), other("other");
    c.Watch(clock, 300);
    c.Watch(other, 500);
    int depth = 0, deepest = 0;
    auto sub = clock.Tick.connect([&] {
        deepest = std::max(deepest, ++depth);
        if (depth == 1) Wait(c.loop, 700);
        --depth;
    });
    c.loop.Advance(300);
    EXPECT_EQ(c.log, (std::vector<std::string>{"clock@3700", "other@3900", "clock@4000", "clock@4300", "other@4400"}))
        << "the detached timer fires no more";
    EXPECT_EQ(deepest, 2) << "the clock ticked again inside its own handler";
    EXPECT_EQ(c.Ms(), 4400);
}

}  // namespace
}  // namespace velmora
