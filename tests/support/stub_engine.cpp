#include "support/stub_engine.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

Error NoMedia() { return Error{"no media loaded"}; }

// A file the stub does not know, or one that fails, reads as empty, with
// duration 0, and takes no writes.
class StubMediaItem : public MediaItem {
public:
    StubMediaItem(std::shared_ptr<StubEngine::Files> files, std::string path, bool opened)
        : m_files(std::move(files)), m_path(std::move(path)), m_opened(opened) {}

    double duration() const override { return Find() != nullptr && m_opened ? Find()->duration : 0.0; }
    std::string sourceURL() const override { return m_path; }
    std::string getItemInfo(const std::string& attribute) const override {
        const StubEngine::File* file = Find();
        if (file == nullptr || !file->attributes.contains(attribute)) return {};
        return file->attributes.at(attribute);
    }
    Status setItemInfo(const std::string& attribute, const std::string& value) override {
        if (Find() == nullptr) return Error{"cannot open " + m_path};
        Find()->attributes[attribute] = value;
        return {};
    }
    bool isReadOnlyItem(const std::string&) const override { return Find() == nullptr; }

private:
    StubEngine::File* Find() const {
        auto it = m_files->find(m_path);
        return it == m_files->end() || it->second.failing ? nullptr : &it->second;
    }

    std::shared_ptr<StubEngine::Files> m_files;
    std::string m_path;
    bool m_opened;
};

}  // namespace

StubEngine::StubEngine(VirtualEventLoop& loop) : m_loop(loop) {
    m_end_tick = m_end_timer.Tick.connect([this] { OnEnd(); });
    m_loop.Attach(m_end_timer);
}

StubEngine::~StubEngine() {
    *m_alive = false;
    m_loop.Detach(m_end_timer);
}

std::optional<Error> StubEngine::Refused(const char* call) const {
    if (!m_failing_calls.contains(call)) return std::nullopt;
    return Error{std::string(call) + " failed"};
}

double StubEngine::Duration() const {
    auto it = m_files->find(m_url);
    return it == m_files->end() ? 0.0 : it->second.duration;
}

StubEngine::Trouble StubEngine::TroubleOf(const std::string& path) const {
    auto it = m_files->find(path);
    return it == m_files->end() ? Trouble::None : it->second.trouble;
}

void StubEngine::Later(std::function<void()> fn) {
    m_loop.Post([alive = m_alive, fn = std::move(fn)] {
        if (*alive) fn();
    });
}

void StubEngine::ReportNoSoundDevice() {
    Later([this] { SoundDeviceMissing.emit(); });
}

void StubEngine::Enter(int state) {
    if (state == m_state) return;
    m_state = state;
    Later([this, state] { PlayStateChange.emit(state); });
}

void StubEngine::Release() {
    FreezeClock();
    m_url.clear();
    m_loading = false;
    m_position = 0;
    ++m_load_id;
}

Status StubEngine::setURL(const std::string& path) {
    if (auto refused = Refused("setURL")) return *refused;
    // The file held so far is let go first, whether the new one loads or not.
    Release();
    auto it = m_files->find(path);
    if (it == m_files->end() || it->second.failing) {
        Enter(PS_Ready);
        return Error{(it == m_files->end() ? "file not found: " : "cannot play: ") + path};
    }
    m_url = path;
    m_loading = true;
    m_intent = m_auto_start ? Intent::Play : Intent::Ready;
    Enter(PS_Transitioning);
    if (it->second.trouble == Trouble::LoadsForever) return {};
    Later([this, id = m_load_id] {
        if (id == m_load_id && m_loading) CompleteLoad();
    });
    return {};
}

void StubEngine::CompleteLoad() {
    // What was asked for during the load is done now.
    m_loading = false;
    switch (m_intent) {
    case Intent::Ready: Enter(PS_Ready); break;
    case Intent::Play: (void)play(); break;
    case Intent::Pause: (void)pause(); break;
    case Intent::Stop: (void)stop(); break;
    }
}

Status StubEngine::close() {
    if (auto refused = Refused("close")) return *refused;
    Release();
    Enter(PS_Undefined);
    return {};
}

std::unique_ptr<MediaItem> StubEngine::newMedia(const std::string& path) {
    return std::make_unique<StubMediaItem>(m_files, path, true);
}

std::unique_ptr<MediaItem> StubEngine::currentMedia() {
    if (m_url.empty()) return nullptr;
    return std::make_unique<StubMediaItem>(m_files, m_url, !m_loading);
}

Status StubEngine::play() {
    if (auto refused = Refused("play")) return *refused;
    if (m_url.empty()) return NoMedia();
    if (m_loading) {
        m_intent = Intent::Play;
    } else if (m_state != PS_Playing) {
        const Trouble trouble = TroubleOf(m_url);
        if (trouble == Trouble::DroppedAtPlay) {
            // Accepted, and let go a moment later, when decoding fails.
            Later([this, id = m_load_id] {
                if (id != m_load_id) return;
                Release();
                Enter(PS_Ready);
            });
        }
        if (trouble != Trouble::StandsStill) StartClock();
        Enter(PS_Playing);
    }
    return {};
}

Status StubEngine::pause() {
    if (auto refused = Refused("pause")) return *refused;
    if (m_url.empty()) return NoMedia();
    if (m_loading) {
        m_intent = Intent::Pause;
    } else if (m_state != PS_MediaEnded) {
        FreezeClock();
        Enter(PS_Paused);
    }
    return {};
}

Status StubEngine::stop() {
    if (auto refused = Refused("stop")) return *refused;
    if (m_loading) {
        m_intent = Intent::Stop;
    } else if (!m_url.empty()) {
        FreezeClock();
        m_position = 0;
        Enter(PS_Stopped);
    }
    return {};
}

void StubEngine::StartClock() {
    m_clock_start = m_loop.TickCount();
    // The end timer fires at the first virtual millisecond at which the
    // position has reached the duration.
    const double left = std::max(0.0, Duration() - m_position);
    m_end_timer.SetEnabled(false);
    m_end_timer.SetInterval(std::max(1, static_cast<int>(std::ceil(left * 1000.0))));
    m_end_timer.SetEnabled(true);
}

void StubEngine::FreezeClock() {
    if (m_clock_start) {
        m_position = std::min(Duration(), m_position + (m_loop.TickCount() - *m_clock_start) / 1000.0);
        m_clock_start.reset();
    }
    m_end_timer.SetEnabled(false);
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
    return std::min(Duration(), m_position + (m_loop.TickCount() - *m_clock_start) / 1000.0);
}

Status StubEngine::setCurrentPosition(double seconds) {
    if (auto refused = Refused("setCurrentPosition")) return *refused;
    if (m_url.empty()) return NoMedia();
    if (!std::isfinite(seconds)) return Error{"invalid position"};
    const double duration = Duration();
    m_position = duration > 0 ? std::clamp(seconds, 0.0, duration) : std::max(0.0, seconds);
    if (m_clock_start) StartClock();
    return {};
}

std::string StubEngine::currentPositionString() const { return Position_Text(currentPosition().value_or(0.0)); }

Status StubEngine::setVolume(int volume) {
    if (auto refused = Refused("setVolume")) return *refused;
    const int clamped = std::clamp(volume, 0, 100);
    if (clamped != m_volume) {
        m_volume = clamped;
        Later([this] { StatusChange.emit(); });
    }
    return {};
}

}  // namespace velmora
