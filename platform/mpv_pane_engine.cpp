#include "platform/mpv_pane_engine.h"

#include <mpv/client.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>

#include <charconv>
#include <thread>

#include "platform/media_reader.h"

namespace velmora {

namespace {

// How far below the window's threads the panes' threads run.
constexpr int kPaneNiceness = 10;

std::string Seconds_Text(double value) {
    char text[64];
    auto [end, ec] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3);
    return ec == std::errc() ? std::string(text, end) : std::string("0");
}

class PaneItem : public MediaItem {
public:
    PaneItem(std::string path, double duration) : m_path(std::move(path)), m_duration(duration) {}
    double duration() const override { return m_duration; }
    std::string sourceURL() const override { return m_path; }
    std::string getItemInfo(const std::string&) const override { return {}; }
    Status setItemInfo(const std::string&, const std::string&) override { return Error{"a pane writes nothing"}; }
    bool isReadOnlyItem(const std::string&) const override { return true; }

private:
    std::string m_path;
    double m_duration;
};

}  // namespace

MpvPaneEngine::MpvPaneEngine(EventLoop& loop, const MpvEngine::Options& options) : m_loop(loop) {
    std::setlocale(LC_NUMERIC, "C");
    // Made on a thread that has given up some of its priority: mpv's own
    // threads, decoding among them, take it over from there. Twelve panes
    // decoding a large film then leave the processor to the window and to
    // the film's sound first.
    std::thread([this, &options] {
        setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), kPaneNiceness);
        Create(options);
    }).join();
    if (m_mpv == nullptr) return;
    mpv_observe_property(m_mpv, 0, "duration", MPV_FORMAT_DOUBLE);
    m_wake->engine = this;
    mpv_set_wakeup_callback(m_mpv, &MpvPaneEngine::OnWakeup, m_wake.get());
}

void MpvPaneEngine::Create(const MpvEngine::Options& options) {
    m_mpv = mpv_create();
    if (m_mpv == nullptr) {
        m_init_error = "libmpv: cannot create a player instance";
        return;
    }
    auto set = [this](const char* name, const std::string& value) {
        if (!value.empty()) mpv_set_option_string(m_mpv, name, value.c_str());
    };
    set("ao", options.ao);
    set("vo", options.vo);
    for (const char* on : {"idle", "keep-open", "pause"}) set(on, "yes");
    for (const char* off : {"input-default-bindings", "input-vo-keyboard", "osc", "ytdl", "load-scripts"})
        set(off, "no");
    for (const auto& [name, value] : options.extra) set(name.c_str(), value);
    if (int rc = mpv_initialize(m_mpv); rc < 0) {
        m_init_error = std::string("libmpv: ") + mpv_error_string(rc);
        mpv_terminate_destroy(m_mpv);
        m_mpv = nullptr;
    }
}

MpvPaneEngine::~MpvPaneEngine() {
    *m_alive = false;
    if (m_mpv != nullptr) mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
    m_wake->engine = nullptr;
    if (m_mpv != nullptr) mpv_terminate_destroy(m_mpv);
}

void MpvPaneEngine::OnWakeup(void* context) {
    auto* wake = static_cast<Wake*>(context);
    if (wake->queued.exchange(true)) return;
    MpvPaneEngine* engine = wake->engine;
    if (engine == nullptr) return;
    engine->m_loop.Post([keep = engine->m_wake] {
        if (keep->engine != nullptr) keep->engine->Drain();
    });
}

void MpvPaneEngine::Enter(int state) {
    if (state == m_state) return;
    m_state = state;
    m_loop.Post([this, alive = m_alive, state] {
        if (*alive) PlayStateChange.emit(state);
    });
}

void MpvPaneEngine::Drain() {
    m_wake->queued = false;
    for (;;) {
        mpv_event* event = mpv_wait_event(m_mpv, 0);
        if (event == nullptr || event->event_id == MPV_EVENT_NONE) break;
        if (event->event_id == MPV_EVENT_FILE_LOADED && !m_url.empty() && !m_load_due) {
            m_loaded = true;
        } else if (event->event_id == MPV_EVENT_END_FILE) {
            const auto* end = static_cast<const mpv_event_end_file*>(event->data);
            if (end->reason == MPV_END_FILE_REASON_ERROR && !m_load_due) Enter(PS_Ready);
        } else if (event->event_id == MPV_EVENT_PROPERTY_CHANGE) {
            const auto* prop = static_cast<const mpv_event_property*>(event->data);
            if (std::strcmp(prop->name, "duration") == 0)
                m_duration = prop->format == MPV_FORMAT_DOUBLE ? *static_cast<double*>(prop->data) : 0.0;
        }
    }
    // Opened once its length is known: the panes are spaced by it.
    if (m_loaded && m_duration > 0 && m_state == PS_Transitioning) Enter(m_playing ? PS_Playing : PS_Paused);
}

void MpvPaneEngine::Schedule() {
    if (m_send_queued) return;
    m_send_queued = true;
    m_loop.Post([this, alive = m_alive] {
        if (*alive) Send();
    });
}

void MpvPaneEngine::Async(const char* name, const std::string& value) {
    mpv_node node{};
    node.format = MPV_FORMAT_STRING;
    node.u.string = const_cast<char*>(value.c_str());
    mpv_set_property_async(m_mpv, 0, name, MPV_FORMAT_NODE, &node);
}

void MpvPaneEngine::Command(const char* a, const char* b, const char* c) {
    const char* args[] = {a, b, c, nullptr};
    mpv_command_async(m_mpv, 0, args);
}

void MpvPaneEngine::Send() {
    m_send_queued = false;
    if (m_mpv == nullptr) return;
    if (m_load_due) {
        m_load_due = false;
        // mpv takes requests of one handle in order: the start point and the
        // pause are in place when the file opens.
        Async("start", Seconds_Text(m_start));
        Async("pause", m_playing ? "no" : "yes");
        Command("loadfile", m_url.c_str(), "replace");
        return;
    }
    Async("pause", m_playing ? "no" : "yes");
}

Status MpvPaneEngine::setURL(const std::string& path) {
    if (m_mpv == nullptr) return Error{m_init_error};
    m_url = path;
    m_start = 0;
    m_duration = 0;
    m_loaded = false;
    m_playing = false;
    if (path.empty()) {
        Command("stop");
        Enter(PS_Ready);
        return Error{"no media loaded"};
    }
    m_load_due = true;
    Enter(PS_Transitioning);
    Schedule();
    return {};
}

Status MpvPaneEngine::close() {
    if (m_mpv == nullptr) return Error{m_init_error};
    m_url.clear();
    m_load_due = m_loaded = m_playing = false;
    m_duration = 0;
    Command("stop");
    Enter(PS_Ready);
    return {};
}

std::unique_ptr<MediaItem> MpvPaneEngine::newMedia(const std::string& path) { return ReadMediaItem(path); }

std::unique_ptr<MediaItem> MpvPaneEngine::currentMedia() {
    if (m_url.empty()) return nullptr;
    return std::make_unique<PaneItem>(m_url, m_loaded ? m_duration : 0.0);
}

Status MpvPaneEngine::play() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    m_playing = true;
    if (m_loaded) Enter(PS_Playing);
    Schedule();
    return {};
}

Status MpvPaneEngine::pause() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    m_playing = false;
    if (m_loaded) Enter(PS_Paused);
    Schedule();
    return {};
}

Status MpvPaneEngine::stop() {
    if (m_mpv == nullptr) return Error{m_init_error};
    m_playing = false;
    if (!m_url.empty()) Async("pause", "yes");
    Enter(PS_Stopped);
    return {};
}

Result<double> MpvPaneEngine::currentPosition() const {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return 0.0;
    if (!m_loaded || m_load_due) return m_start;
    // Asked by nobody while the panes start; a reader waits for mpv's answer.
    double position = 0;
    if (mpv_get_property(m_mpv, "time-pos", MPV_FORMAT_DOUBLE, &position) < 0) return m_start;
    return std::max(0.0, position);
}

Status MpvPaneEngine::setCurrentPosition(double seconds) {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    if (!std::isfinite(seconds)) return Error{"invalid position"};
    m_start = std::max(0.0, seconds);
    if (!m_load_due) Command("seek", Seconds_Text(m_start).c_str(), "absolute");
    return {};
}

std::string MpvPaneEngine::currentPositionString() const {
    return Position_Text(currentPosition().value_or(0.0));
}

void MpvPaneEngine::setMute(bool on) {
    if (m_mpv != nullptr) Async("mute", on ? "yes" : "no");
}

Status MpvPaneEngine::setVolume(int volume) {
    if (m_mpv == nullptr) return Error{m_init_error};
    m_volume = std::clamp(volume, 0, 100);
    Async("volume", std::to_string(m_volume));
    return {};
}

}  // namespace velmora
