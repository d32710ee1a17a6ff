#pragma once
// The event loop port on Qt's loop of the main thread. Needs a
// QCoreApplication (or QApplication) to exist for as long as it does.
// The header stays free of Qt's own headers, whose "emit" keyword would
// clash with the model's signals in whatever file includes both.

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "base/signal.h"
#include "core/event_loop.h"

class QElapsedTimer;
class QObject;
class QTimer;

namespace velmora {

class QtEventLoop : public EventLoop {
public:
    QtEventLoop();
    ~QtEventLoop() override;
    QtEventLoop(const QtEventLoop&) = delete;
    QtEventLoop& operator=(const QtEventLoop&) = delete;

    void DoEvents() override;
    // Blocks in Qt's loop until an event has been handled or max_ms has passed.
    void WaitForEvents(int max_ms) override;
    int64_t TickCount() const override;
    LocalTime Now() const override;
    // Safe to call from any thread: the call is queued to the main thread.
    void Post(std::function<void()> fn) override;
    void Attach(Timer& timer) override;
    void Detach(Timer& timer) override;
    void Quit() override;

private:
    struct Binding {
        QTimer* qtimer = nullptr;
        bool enabled = false;
        Subscription changed;
        std::shared_ptr<bool> alive = std::make_shared<bool>(true);
    };

    void Apply(Timer& timer, Binding& binding);
    void Drain();
    // The oldest posted call, taken from the queue; empty when there is none.
    std::function<void()> Next_Posted();

    // Receiver of the posted calls and parent of the timers; it lives in the
    // main thread, so queued calls run there whoever posts them.
    std::unique_ptr<QObject> m_context;
    std::unique_ptr<QElapsedTimer> m_clock;
    static constexpr int64_t kYieldSpacingMs = 16;
    static constexpr int kMaxStride = 128;
    static constexpr int64_t kDrainBudgetMs = 16;
    // The posted calls not yet run, and whether a drain of them is queued.
    std::mutex m_posted_lock;
    std::deque<std::function<void()>> m_posted;
    bool m_drain_pending = false;
    int64_t m_last_yield = -kYieldSpacingMs;
    // Calls of DoEvents between two readings of the clock, adapted to how
    // long a loop's row takes, and the calls left until the next reading.
    int m_stride = 1;
    int m_countdown = 0;
    mutable int64_t m_offset_minute = -1;  // the UTC minute the offset was taken in
    mutable int m_offset_seconds = 0;
    std::map<Timer*, std::unique_ptr<Binding>> m_bindings;
};

}  // namespace velmora
