#pragma once
// The event loop port: the one thread's way of giving way to pending events,
// its clocks and its timers. The Qt adapter runs the real loop; tests use a
// virtual loop in which waiting moves time forward.

#include <cstdint>
#include <functional>

#include "base/local_time.h"

namespace velmora {

class Timer;

class EventLoop {
public:
    virtual ~EventLoop() = default;

    // Runs whatever is pending now (posted calls, due timers, input) and returns.
    virtual void DoEvents() = 0;
    // Runs what is pending; when nothing is, waits up to max_ms for something to
    // happen. Never busy-spins, so waiting loops cost no CPU.
    virtual void WaitForEvents(int max_ms) = 0;
    // Milliseconds from an arbitrary origin, never going backwards.
    virtual int64_t TickCount() const = 0;
    virtual LocalTime Now() const = 0;
    // Calls fn later, from the loop, never from inside this call.
    virtual void Post(std::function<void()> fn) = 0;
    // The loop drives a timer control from now on, following its Interval and
    // Enabled, until Detach or the loop's end.
    virtual void Attach(Timer& timer) = 0;
    virtual void Detach(Timer& timer) = 0;
    // Ends the loop, and with it the program, once the running handler returns.
    virtual void Quit() = 0;
};

// Waits the given milliseconds by the tick counter, giving way to events.
void Wait(EventLoop& loop, int milliseconds);

}  // namespace velmora
