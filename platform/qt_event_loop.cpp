#include "platform/qt_event_loop.h"

#include <algorithm>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QDateTime>
#include <QEventLoop>
#include <QMetaObject>
#include <QTimer>

#include "core/controls.h"

namespace velmora {

QtEventLoop::QtEventLoop() : m_context(std::make_unique<QObject>()), m_clock(std::make_unique<QElapsedTimer>()) {
    m_clock->start();
    // Back in the main loop with nothing to do: whatever loop gives way next
    // starts reading the clock at every call again, however cheap the rows
    // of the loop before it were.
    if (auto* dispatcher = QAbstractEventDispatcher::instance())
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, m_context.get(), [this] {
            m_stride = 1;
            m_countdown = 0;
        });
}

QtEventLoop::~QtEventLoop() {
    for (auto& [timer, binding] : m_bindings) *binding->alive = false;
    m_bindings.clear();
    // Deleting the context drops the calls still queued to it.
    m_context.reset();
}

void QtEventLoop::DoEvents() {
    // Long loops give way once per row, tens of thousands of times, and one
    // pass of Qt's loop, which paints whatever changed, costs far more than a
    // row. Giving way at most once a frame keeps the window and Esc as lively
    // as a person can tell, and the loops as fast as their rows.
    // Reading the clock itself costs more than a cheap row, so it is read
    // only every m_stride calls: the stride doubles while readings come
    // early and drops to one when a reading comes late.
    if (--m_countdown > 0) return;
    const int64_t now = m_clock->elapsed();
    const int64_t since = now - m_last_yield;
    if (since < kYieldSpacingMs && since >= 0) {
        m_stride = std::min(m_stride * 2, kMaxStride);
        m_countdown = m_stride;
        return;
    }
    if (since > 2 * kYieldSpacingMs) m_stride = 1;
    m_countdown = m_stride;
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    // Spaced from the end of the pass: a window slow to paint still leaves
    // the loop a frame's time of work between two paints.
    m_last_yield = m_clock->elapsed();
}

void QtEventLoop::WaitForEvents(int max_ms) {
    if (max_ms <= 0) {
        DoEvents();
        return;
    }
    // The guard's timeout is itself an event, so the blocking call below
    // returns by then at the latest, and sleeps in the meantime.
    QTimer guard;
    guard.setSingleShot(true);
    guard.setTimerType(Qt::PreciseTimer);
    guard.start(max_ms);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

int64_t QtEventLoop::TickCount() const { return m_clock->elapsed(); }

LocalTime QtEventLoop::Now() const {
    // The local time proper reads the time zone file on every call, and long
    // loops put the time in front of every line they write: the offset from
    // UTC is taken once a minute, which is where a clock change can fall.
    const qint64 utc = QDateTime::currentSecsSinceEpoch();
    if (utc / 60 != m_offset_minute) {
        m_offset_minute = utc / 60;
        m_offset_seconds = QDateTime::currentDateTime().offsetFromUtc();
    }
    const QDateTime now = QDateTime::fromSecsSinceEpoch(utc + m_offset_seconds, Qt::UTC);
    const QDate date = now.date();
    const QTime time = now.time();
    LocalTime out;
    out.year = date.year();
    out.month = date.month();
    out.day = date.day();
    out.hour = time.hour();
    out.minute = time.minute();
    out.second = time.second();
    return out;
}

void QtEventLoop::Post(std::function<void()> fn) {
    // The engines' threads post too: the queue is shared under the lock.
    {
        std::lock_guard lock(m_posted_lock);
        m_posted.push_back(std::move(fn));
        if (m_drain_pending) return;
        m_drain_pending = true;
    }
    QMetaObject::invokeMethod(m_context.get(), [this] { Drain(); }, Qt::QueuedConnection);
}

std::function<void()> QtEventLoop::Next_Posted() {
    std::lock_guard lock(m_posted_lock);
    if (m_posted.empty()) return nullptr;
    std::function<void()> call = std::move(m_posted.front());
    m_posted.pop_front();
    return call;
}

void QtEventLoop::Drain() {
    // Posted calls run in order, never inside the call that posted them. A
    // call that posts the next (the walk past a drive that is gone posts one
    // per missing file) would otherwise give every call a turn of its own,
    // and every turn repaints the window: calls run on here for a frame's
    // time, then the loop paints and takes input once. A call that gives way
    // itself still runs the calls posted before it gave way.
    {
        std::lock_guard lock(m_posted_lock);
        m_drain_pending = false;
    }
    const int64_t start = m_clock->elapsed();
    // The loop has just painted and taken input: the calls' own yields wait
    // a frame from here.
    m_last_yield = start;
    while (std::function<void()> call = Next_Posted()) {
        // A call that gives way, waiting for what a later one brings (an
        // engine's events queued behind a tick that waits for the engine),
        // finds the rest run by the drain this asks for, not held behind it.
        bool invoke = false;
        {
            std::lock_guard lock(m_posted_lock);
            if (!m_posted.empty() && !m_drain_pending) invoke = m_drain_pending = true;
        }
        if (invoke) QMetaObject::invokeMethod(m_context.get(), [this] { Drain(); }, Qt::QueuedConnection);
        call();
        if (m_clock->elapsed() - start >= kDrainBudgetMs) break;
    }
    {
        std::lock_guard lock(m_posted_lock);
        if (m_posted.empty() || m_drain_pending) return;
        m_drain_pending = true;
    }
    QMetaObject::invokeMethod(m_context.get(), [this] { Drain(); }, Qt::QueuedConnection);
}

void QtEventLoop::Attach(Timer& timer) {
    if (m_bindings.count(&timer) != 0) return;
    auto binding = std::make_unique<Binding>();
    Binding* raw = binding.get();
    raw->qtimer = new QTimer(m_context.get());
    // The tick is handed on through the queue rather than emitted inside the
    // timeout: Qt never re-enters a timer whose timeout is still running, and
    // the program's clock expects to tick again inside a handler that waits.
    QObject::connect(raw->qtimer, &QTimer::timeout, m_context.get(), [this, &timer, alive = raw->alive] {
        Post([&timer, alive] {
            if (*alive) timer.Tick.emit();
        });
    });
    raw->changed = timer.Changed.connect([this, &timer, raw](Change kind) {
        if (kind == Change::Contents || timer.Enabled() != raw->enabled) Apply(timer, *raw);
    });
    Apply(timer, *raw);
    m_bindings.emplace(&timer, std::move(binding));
}

void QtEventLoop::Detach(Timer& timer) {
    auto it = m_bindings.find(&timer);
    if (it == m_bindings.end()) return;
    *it->second->alive = false;
    delete it->second->qtimer;
    m_bindings.erase(it);
}

void QtEventLoop::Apply(Timer& timer, Binding& binding) {
    binding.enabled = timer.Enabled();
    if (binding.enabled && timer.Interval() > 0)
        binding.qtimer->start(timer.Interval());  // start() restarts a running timer
    else
        binding.qtimer->stop();
}

void QtEventLoop::Quit() {
    // Queued, so the handler that asked finishes first.
    QMetaObject::invokeMethod(QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}

}  // namespace velmora
