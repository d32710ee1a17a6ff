#pragma once
// An event loop on virtual time for headless tests. Nothing happens by itself:
// time moves only when the code under test waits (WaitForEvents, Wait) or the
// test calls Advance, and then every timer due on the way fires in order. A
// whole play-through of hours of media so runs in milliseconds.

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "base/signal.h"
#include "core/event_loop.h"

namespace velmora {

class VirtualEventLoop : public EventLoop {
public:
    static constexpr int64_t kStartTick = 1'000'000;

    // Runs the calls posted before this call and the timers due now; time
    // stands, so code that waits for time to pass must wait through
    // WaitForEvents or Wait: a loop of DoEvents alone would spin here forever.
    void DoEvents() override;
    // Runs pending posts if there are any; otherwise moves time to the first
    // timer due within max_ms and fires it (and any due at the same moment),
    // or moves time by max_ms when none is due.
    void WaitForEvents(int max_ms) override;
    int64_t TickCount() const override { return m_now; }
    // The local time set by SetNow, moved on by the virtual time since.
    LocalTime Now() const override;
    void Post(std::function<void()> fn) override;
    // A timer must be detached before it is destroyed.
    void Attach(Timer& timer) override;
    void Detach(Timer& timer) override;
    void Quit() override { m_quit = true; }
    bool QuitRequested() const { return m_quit; }

    // Moves time forward by ms, firing every timer due on the way in order of
    // its due time, then runs the posted calls.
    void Advance(int64_t ms);
    // Runs posted calls until none is left (bounded, so a handler that keeps
    // posting cannot hang a test). Returns how many ran.
    int RunPosted(int limit = 100000);
    void SetNow(const LocalTime& time);

private:
    struct Armed {
        Timer* timer = nullptr;
        uint64_t order = 0;      // attach order, breaks ties between equal due times
        int64_t due = -1;        // -1: not running
        bool enabled = false;    // as last seen, to tell an Enabled change from others
        Subscription changed;
    };

    void Restart(Armed& armed);
    // The running timer due first at or before limit, or null.
    Armed* NextDue(int64_t limit);
    void Fire(Armed& armed);
    void FireDueNow();

    int64_t m_now = kStartTick;
    LocalTime m_base_time{2024, 3, 15, 12, 0, 0};
    int64_t m_base_tick = kStartTick;
    std::deque<std::function<void()>> m_posted;
    std::vector<std::unique_ptr<Armed>> m_timers;
    uint64_t m_next_order = 0;
    bool m_quit = false;
};

}  // namespace velmora
