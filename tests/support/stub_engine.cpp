#include "support/stub_engine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace velmora {

namespace {

Error NoMedia() { return Error{"no media loaded"}; }

}  // namespace

// ---- StubMediaItem

StubMediaItem::StubMediaItem(std::shared_ptr<StubMediaLibrary> library, std::string path, bool opened)
    : m_library(std::move(library)), m_path(std::move(path)), m_opened(opened) {}

const StubMediaLibrary::File* StubMediaItem::Find() const {
    auto it = m_library->files.find(m_path);
    if (it == m_library->files.end() || it->second.failing) return nullptr;
    return &it->second;
}

double StubMediaItem::duration() const {
    const auto* file = Find();
    return (file != nullptr && m_opened) ? file->duration : 0.0;
}

std::string StubMediaItem::getItemInfo(const std::string& attribute) const {
    const auto* file = Find();
    if (file == nullptr) return {};
    auto it = file->attributes.find(attribute);
    return it == file->attributes.end() ? std::string() : it->second;
}

Status StubMediaItem::setItemInfo(const std::string& attribute, const std::string& value) {
    auto it = m_library->files.find(m_path);
    if (it == m_library->files.end() || it->second.failing) return Error{"cannot open " + m_path};
    if (it->second.read_only) return Error{"attribute is read-only: " + attribute};
    it->second.attributes[attribute] = value;
    return {};
}

bool StubMediaItem::isReadOnlyItem(const std::string&) const {
    const auto* file = Find();
    return file == nullptr || file->read_only;
}

// ---- StubEngine

StubEngine::StubEngine(VirtualEventLoop& loop) : m_loop(loop) {
    m_end_tick = m_end_timer.Tick.connect([this] { OnEnd(); });
    m_loop.Attach(m_end_timer);
}

StubEngine::~StubEngine() {
    *m_alive = false;
    m_loop.Detach(m_end_timer);
}

void StubEngine::SetDuration(const std::string& path, double seconds) {
    m_library->files[path].duration = seconds;
}

void StubEngine::SetFailing(const std::string& path) { m_library->files[path].failing = true; }

void StubEngine::SetAttribute(const std::string& path, const std::string& attribute, const std::string& value) {
    m_library->files[path].attributes[attribute] = value;
}

void StubEngine::SetReadOnly(const std::string& path) { m_library->files[path].read_only = true; }

double StubEngine::Duration() const {
    auto it = m_library->files.find(m_url);
    return it == m_library->files.end() ? 0.0 : it->second.duration;
}

void StubEngine::Enter(int state) {
    if (state == m_state) return;
    m_state = state;
    m_loop.Post([this, alive = m_alive, state] {
        if (*alive) PlayStateChange.emit(state);
    });
}

Status StubEngine::setURL(const std::string& path) {
    // The file held so far is let go first, whether the new one loads or not.
    FreezeClock();
    m_end_timer.SetEnabled(false);
    m_url.clear();
    m_loading = false;
    m_position = 0;
    ++m_load_id;

    auto it = m_library->files.find(path);
    if (it == m_library->files.end() || it->second.failing) {
        Enter(PS_Ready);
        return Error{(it == m_library->files.end() ? "file not found: " : "cannot play: ") + path};
    }
    m_url = path;
    m_loading = true;
    m_intent = m_auto_start ? Intent::Play : Intent::Ready;
    Enter(PS_Transitioning);
    m_loop.Post([this, alive = m_alive, id = m_load_id] {
        if (*alive && id == m_load_id && m_loading) CompleteLoad();
    });
    return {};
}

void StubEngine::CompleteLoad() {
    m_loading = false;
    switch (m_intent) {
    case Intent::Ready: Enter(PS_Ready); break;
    case Intent::Pause: Enter(PS_Paused); break;
    case Intent::Stop:
        m_position = 0;
        Enter(PS_Stopped);
        break;
    case Intent::Play:
        StartClock();
        Enter(PS_Playing);
        break;
    }
}

Status StubEngine::close() {
    FreezeClock();
    m_end_timer.SetEnabled(false);
    m_url.clear();
    m_loading = false;
    m_position = 0;
    ++m_load_id;
    Enter(PS_Undefined);
    return {};
}

std::unique_ptr<MediaItem> StubEngine::newMedia(const std::string& path) {
    return std::make_unique<StubMediaItem>(m_library, path);
}

std::unique_ptr<MediaItem> StubEngine::currentMedia() {
    if (m_url.empty()) return nullptr;
    return std::make_unique<StubMediaItem>(m_library, m_url, !m_loading);
}

Status StubEngine::play() {
    if (m_url.empty()) return NoMedia();
    if (m_loading) {
        m_intent = Intent::Play;
        return {};
    }
    if (m_state == PS_Playing) return {};
    StartClock();
    Enter(PS_Playing);
    return {};
}

Status StubEngine::pause() {
    if (m_url.empty()) return NoMedia();
    if (m_loading) {
        m_intent = Intent::Pause;
        return {};
    }
    if (m_state == PS_MediaEnded) return {};
    FreezeClock();
    Enter(PS_Paused);
    return {};
}

Status StubEngine::stop() {
    if (m_url.empty()) return {};
    if (m_loading) {
        m_intent = Intent::Stop;
        return {};
    }
    FreezeClock();
    m_position = 0;
    Enter(PS_Stopped);
    return {};
}

void StubEngine::StartClock() {
    m_clock_start = m_loop.TickCount();
    ArmEnd();
}

void StubEngine::FreezeClock() {
    if (m_clock_start) {
        m_position = std::min(Duration(), m_position + (m_loop.TickCount() - *m_clock_start) / 1000.0);
        m_clock_start.reset();
    }
    m_end_timer.SetEnabled(false);
}

void StubEngine::ArmEnd() {
    // The end timer fires at the first virtual millisecond at which the
    // position has reached the duration.
    const double left = std::max(0.0, Duration() - m_position);
    const int ms = std::max(1, static_cast<int>(std::ceil(left * 1000.0)));
    m_end_timer.SetEnabled(false);
    m_end_timer.SetInterval(ms);
    m_end_timer.SetEnabled(true);
}

void StubEngine::OnEnd() {
    m_end_timer.SetEnabled(false);
    m_clock_start.reset();
    // A finished item reads position 0, so that resuming it starts it over.
    m_position = 0;
    Enter(PS_MediaEnded);
}

Result<double> StubEngine::currentPosition() const {
    if (m_url.empty()) return 0.0;
    if (!m_clock_start) return m_position;
    const double played = (m_loop.TickCount() - *m_clock_start) / 1000.0;
    return std::min(Duration(), m_position + played);
}

Status StubEngine::setCurrentPosition(double seconds) {
    if (m_url.empty()) return NoMedia();
    if (!std::isfinite(seconds)) return Error{"invalid position"};
    const double duration = Duration();
    seconds = std::max(0.0, seconds);
    if (duration > 0) seconds = std::min(seconds, duration);
    m_position = seconds;
    if (m_clock_start) StartClock();
    return {};
}

std::string StubEngine::currentPositionString() const { return Position_Text(currentPosition().value_or(0.0)); }

Status StubEngine::setVolume(int volume) {
    const int clamped = std::clamp(volume, 0, 100);
    if (clamped != m_volume) {
        m_volume = clamped;
        m_loop.Post([this, alive = m_alive] {
            if (*alive) StatusChange.emit();
        });
    }
    return {};
}

}  // namespace velmora
