#include "support/virtual_event_loop.h"

#include <algorithm>
#include <chrono>

#include "core/controls.h"

namespace velmora {

namespace {

LocalTime AddSeconds(const LocalTime& base, int64_t seconds) {
    using namespace std::chrono;
    const sys_days day = year_month_day{year{base.year}, month(base.month), std::chrono::day(base.day)};
    const sys_seconds moved =
        day + hours{base.hour} + minutes{base.minute} + std::chrono::seconds{base.second + seconds};
    const sys_days moved_day = floor<days>(moved);
    const year_month_day ymd{moved_day};
    const hh_mm_ss clock{moved - moved_day};
    return LocalTime{static_cast<int>(ymd.year()), static_cast<int>(unsigned{ymd.month()}),
                     static_cast<int>(unsigned{ymd.day()}), static_cast<int>(clock.hours().count()),
                     static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count())};
}

}  // namespace

LocalTime VirtualEventLoop::Now() const { return AddSeconds(m_base_time, (m_now - m_base_tick) / 1000); }

void VirtualEventLoop::SetNow(const LocalTime& time) {
    m_base_time = time;
    m_base_tick = m_now;
}

void VirtualEventLoop::Post(std::function<void()> fn) { m_posted.push_back(std::move(fn)); }

void VirtualEventLoop::DoEvents() {
    // Only what was queued before this call: a handler that posts again is
    // served by the next call, as a real loop would do.
    RunPosted(static_cast<int>(m_posted.size()));
    FireDueNow();
}

void VirtualEventLoop::WaitForEvents(int max_ms) {
    if (!m_posted.empty() || NextDue(m_now) != nullptr) {
        DoEvents();
        return;
    }
    if (max_ms <= 0) return;
    Armed* next = NextDue(m_now + max_ms);
    if (next == nullptr) {
        m_now += max_ms;
        return;
    }
    m_now = std::max(m_now, next->due);
    FireDueNow();
}

void VirtualEventLoop::Advance(int64_t ms) {
    const int64_t target = m_now + std::max<int64_t>(ms, 0);
    for (;;) {
        RunPosted();
        Armed* next = NextDue(target);
        if (next == nullptr) break;
        m_now = std::max(m_now, next->due);
        Fire(*next);
    }
    m_now = std::max(m_now, target);
    RunPosted();
}

int VirtualEventLoop::RunPosted(int limit) {
    int ran = 0;
    while (!m_posted.empty() && ran < limit) {
        auto fn = std::move(m_posted.front());
        m_posted.pop_front();
        fn();
        ++ran;
    }
    return ran;
}

void VirtualEventLoop::Attach(Timer& timer) {
    if (std::any_of(m_timers.begin(), m_timers.end(), [&](const auto& a) { return a->timer == &timer; })) return;
    auto armed = std::make_unique<Armed>();
    armed->timer = &timer;
    armed->order = m_next_order++;
    Armed* raw = armed.get();
    armed->changed = timer.Changed.connect([this, raw](Change kind) {
        // An Interval write restarts the count even with the same value; of the
        // other changes only Enabled matters to a timer.
        if (kind == Change::Contents || raw->timer->Enabled() != raw->enabled) Restart(*raw);
    });
    Restart(*raw);
    m_timers.push_back(std::move(armed));
}

void VirtualEventLoop::Detach(Timer& timer) {
    std::erase_if(m_timers, [&](const auto& a) { return a->timer == &timer; });
}

void VirtualEventLoop::Restart(Armed& armed) {
    armed.enabled = armed.timer->Enabled();
    const int interval = armed.timer->Interval();
    armed.due = (armed.enabled && interval > 0) ? m_now + interval : -1;
}

VirtualEventLoop::Armed* VirtualEventLoop::NextDue(int64_t limit) {
    Armed* best = nullptr;
    for (auto& a : m_timers) {
        if (a->due < 0 || a->due > limit) continue;
        if (best == nullptr || a->due < best->due || (a->due == best->due && a->order < best->order))
            best = a.get();
    }
    return best;
}

void VirtualEventLoop::Fire(Armed& armed) {
    // Re-arm before the handler runs, so that a handler that changes the timer
    // has the last word, and a handler that waits sees its timer fire again
    // inside it: the program's clock is written for that.
    Timer* timer = armed.timer;
    const int interval = timer->Interval();
    armed.due = interval > 0 ? armed.due + interval : -1;
    if (armed.due >= 0 && armed.due <= m_now) armed.due = m_now + interval;
    timer->Tick.emit();  // armed may be gone after this
}

void VirtualEventLoop::FireDueNow() {
    // Each timer due now fires once; one re-armed into the past by a long
    // handler waits for the next call.
    std::vector<Timer*> fired;
    for (;;) {
        Armed* next = NextDue(m_now);
        if (next == nullptr) break;
        if (std::find(fired.begin(), fired.end(), next->timer) != fired.end()) break;
        fired.push_back(next->timer);
        Fire(*next);
    }
}

}  // namespace velmora
