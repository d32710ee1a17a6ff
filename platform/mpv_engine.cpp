#include "platform/mpv_engine.h"

#include <mpv/client.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "platform/media_reader.h"

namespace velmora {

namespace {

// A seek that mpv never confirms (an unseekable stream) stops holding the
// position after this long, so the program sees the real one again.
constexpr int64_t kSeekPatienceMs = 2000;

std::string NumberText(double value) {
    char text[64];
    auto [end, ec] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3);
    return ec == std::errc() ? std::string(text, end) : std::string("0");
}

// A file as mpv's engine sees it: its duration and the attributes the probe read.
class MpvMediaItem : public MediaItem {
public:
    MpvMediaItem(std::string path, double duration, AvProbe probe)
        : m_path(std::move(path)), m_duration(duration), m_probe(std::move(probe)) {}

    double duration() const override { return m_duration; }
    std::string sourceURL() const override { return m_path; }
    std::string getItemInfo(const std::string& attribute) const override { return m_probe.Attribute(attribute); }
    Status setItemInfo(const std::string&, const std::string&) override {
        return Error{"writing attributes is not supported yet"};
    }
    bool isReadOnlyItem(const std::string&) const override { return true; }

private:
    std::string m_path;
    double m_duration;
    AvProbe m_probe;
};

}  // namespace

MpvEngine::MpvEngine(EventLoop& loop, const Options& options) : m_loop(loop) {
    // libmpv refuses to start under a locale that writes numbers with a
    // decimal comma; Qt sets the user's locale when the application starts.
    std::setlocale(LC_NUMERIC, "C");
    m_mpv = mpv_create();
    if (m_mpv == nullptr) {
        m_init_error = "libmpv: cannot create a player instance";
        return;
    }
    auto required = [&](const char* name, const std::string& value) {
        if (!m_init_error.empty() || value.empty()) return;
        if (int rc = mpv_set_option_string(m_mpv, name, value.c_str()); rc < 0)
            m_init_error = std::string("libmpv option ") + name + "=" + value + ": " + mpv_error_string(rc);
    };
    required("ao", options.ao);
    required("vo", options.vo);
    required("wid", options.wid != 0 ? std::to_string(options.wid) : std::string());
    required("idle", "yes");
    required("keep-open", "yes");
    required("pause", "yes");
    // Optional ones: a build without scripting or without the OSC lacks some.
    for (const char* off : {"input-default-bindings", "input-vo-keyboard", "osc", "ytdl", "load-scripts",
                            "audio-display"})
        mpv_set_option_string(m_mpv, off, "no");
    // Without a sound device mpv would refuse every audio-only file; it plays
    // them silently instead, and current-ao tells the program so.
    mpv_set_option_string(m_mpv, "audio-fallback-to-null", "yes");
    for (const auto& [name, value] : options.extra) mpv_set_option_string(m_mpv, name.c_str(), value.c_str());
    m_sound_expected = options.ao != "null";
    if (m_init_error.empty()) {
        if (int rc = mpv_initialize(m_mpv); rc < 0) m_init_error = std::string("libmpv: ") + mpv_error_string(rc);
    }
    if (!m_init_error.empty()) {
        mpv_terminate_destroy(m_mpv);
        m_mpv = nullptr;
        return;
    }
    mpv_observe_property(m_mpv, 0, "pause", MPV_FORMAT_FLAG);
    mpv_observe_property(m_mpv, 0, "eof-reached", MPV_FORMAT_FLAG);
    mpv_observe_property(m_mpv, 0, "duration", MPV_FORMAT_DOUBLE);
    mpv_observe_property(m_mpv, 0, "volume", MPV_FORMAT_DOUBLE);
    mpv_observe_property(m_mpv, 0, "current-ao", MPV_FORMAT_STRING);
    double volume = 100;
    if (mpv_get_property(m_mpv, "volume", MPV_FORMAT_DOUBLE, &volume) >= 0)
        m_volume = m_reported_volume = std::clamp(static_cast<int>(std::lround(volume)), 0, 100);
    m_wake->engine = this;
    mpv_set_wakeup_callback(m_mpv, &MpvEngine::OnWakeup, m_wake.get());
}

MpvEngine::~MpvEngine() {
    *m_alive = false;
    // mpv calls the callback under the lock this takes, so after it returns
    // OnWakeup neither runs nor will run, and the drains already queued find
    // the engine gone.
    if (m_mpv != nullptr) mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
    m_wake->engine = nullptr;
    if (m_mpv != nullptr) mpv_terminate_destroy(m_mpv);
}

void MpvEngine::OnWakeup(void* context) {
    // mpv's thread: only ask the loop for a drain, once until it has run.
    auto* wake = static_cast<Wake*>(context);
    if (wake->queued.exchange(true)) return;
    MpvEngine* engine = wake->engine;
    if (engine == nullptr) return;
    engine->m_loop.Post([keep = engine->m_wake] {
        if (keep->engine != nullptr) keep->engine->Drain();
    });
}

Status MpvEngine::Fail(int code, const char* what) const {
    return Error{std::string("libmpv ") + what + ": " + mpv_error_string(code)};
}

void MpvEngine::Enter(int state) {
    if (state == m_state) return;
    m_state = state;
    m_loop.Post([this, alive = m_alive, state] {
        if (*alive) PlayStateChange.emit(state);
    });
}

void MpvEngine::Drain() {
    // Cleared first: a wakeup during the drain asks for another one.
    m_wake->queued = false;
    for (;;) {
        mpv_event* event = mpv_wait_event(m_mpv, 0);
        if (event == nullptr || event->event_id == MPV_EVENT_NONE) break;
        Handle(*event);
    }
    CheckEnd();
}

void MpvEngine::Handle(const mpv_event& event) {
    switch (event.event_id) {
    case MPV_EVENT_START_FILE:
        m_started_entry = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id;
        break;
    case MPV_EVENT_FILE_LOADED:
        if (m_loading && (m_entry_id < 0 || m_started_entry == m_entry_id)) OnLoaded();
        break;
    case MPV_EVENT_END_FILE: {
        const auto* end = static_cast<const mpv_event_end_file*>(event.data);
        if (m_url.empty() || end->playlist_entry_id != m_entry_id) break;  // an earlier file's
        if (end->reason == MPV_END_FILE_REASON_ERROR) {
            // Opened by the probe but not playable after all: nothing is loaded.
            Unload();
            Enter(PS_Ready);
        } else if (end->reason == MPV_END_FILE_REASON_EOF) {
            m_loading = false;
            m_unloaded_at_end = true;
            m_held = 0.0;
            m_held_sent = false;
            Enter(PS_MediaEnded);
        }
        break;
    }
    case MPV_EVENT_SEEK:
        if (m_seek_in_flight) m_seek_started = true;
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        // Only a restart after our seek has begun confirms it: the restart of
        // a fresh load may still be queued when the first seek goes out.
        if (m_seek_in_flight && m_seek_started) {
            m_seek_in_flight = false;
            m_seek_started = false;
            if (m_held && !m_held_sent)
                (void)SendHeldSeek();  // moved again while the last seek ran
            else if (m_state == PS_Playing)
                m_held.reset();
        }
        break;
    case MPV_EVENT_PROPERTY_CHANGE: {
        const auto* prop = static_cast<const mpv_event_property*>(event.data);
        if (std::strcmp(prop->name, "volume") == 0 && prop->format == MPV_FORMAT_DOUBLE) {
            const int volume = std::clamp(static_cast<int>(std::lround(*static_cast<double*>(prop->data))), 0, 100);
            m_volume = volume;
            if (volume != m_reported_volume) {
                m_reported_volume = volume;
                m_loop.Post([this, alive = m_alive] {
                    if (*alive) StatusChange.emit();
                });
            }
        } else if (std::strcmp(prop->name, "current-ao") == 0 && prop->format == MPV_FORMAT_STRING) {
            // The null output where a real one was asked for: no device would open.
            const char* ao = *static_cast<char**>(prop->data);
            if (m_sound_expected && !m_told_no_sound && ao != nullptr && std::strcmp(ao, "null") == 0) {
                m_told_no_sound = true;
                m_loop.Post([this, alive = m_alive] {
                    if (*alive) SoundDeviceMissing.emit();
                });
            }
        } else if (std::strcmp(prop->name, "duration") == 0 && prop->format == MPV_FORMAT_DOUBLE) {
            if (!m_loading && !m_url.empty()) m_duration = *static_cast<double*>(prop->data);
        } else if (std::strcmp(prop->name, "pause") == 0 && prop->format == MPV_FORMAT_FLAG) {
            // The value may be stale by now; only mpv pausing on its own while
            // we play counts, and the end of the file is told apart in CheckEnd.
            if (m_state == PS_Playing && !m_loading && FlagProperty("pause", false) &&
                !FlagProperty("eof-reached", false))
                Enter(PS_Paused);
        }
        break;
    }
    default:
        break;
    }
}

bool MpvEngine::FlagProperty(const char* name, bool fallback) const {
    int flag = 0;
    if (mpv_get_property(m_mpv, name, MPV_FORMAT_FLAG, &flag) < 0) return fallback;
    return flag != 0;
}

void MpvEngine::OnLoaded() {
    m_loading = false;
    double duration = 0;
    if (mpv_get_property(m_mpv, "duration", MPV_FORMAT_DOUBLE, &duration) >= 0) m_duration = duration;
    if (m_held) (void)SendHeldSeek();
    switch (m_intent) {
    case Intent::Ready: Enter(PS_Ready); break;
    case Intent::Pause: Enter(PS_Paused); break;
    case Intent::Stop: Enter(PS_Stopped); break;
    case Intent::Play:
        if (!SetPause(false)) {
            Enter(PS_Ready);
            break;
        }
        if (!Seeking()) m_held.reset();
        Enter(PS_Playing);
        break;
    }
}

void MpvEngine::CheckEnd() {
    // Read live rather than from the (coalesced) property events: with
    // keep-open, mpv sits paused at the end with eof-reached set. A seek under
    // way may still show the end it is leaving.
    if (m_mpv == nullptr || m_url.empty() || m_loading || m_state != PS_Playing || Seeking()) return;
    if (FlagProperty("eof-reached", false)) Ended();
}

void MpvEngine::Ended() {
    double position = 0;
    if (mpv_get_property(m_mpv, "playback-time", MPV_FORMAT_DOUBLE, &position) < 0) position = 0;
    if (KnownDuration() <= 0 && position <= 0) {
        // Nothing in it to play (a header and no samples): let go, as of a
        // file mpv cannot open.
        const char* stop[] = {"stop", nullptr};
        mpv_command(m_mpv, stop);
        Unload();
        Enter(PS_Ready);
        return;
    }
    // A finished item reads position 0, so that resuming it starts it over;
    // the seek back goes out with the next play.
    m_held = 0.0;
    m_held_sent = false;
    Enter(PS_MediaEnded);
}

void MpvEngine::Unload() {
    m_url.clear();
    m_probe = AvProbe{};
    m_loading = false;
    m_unloaded_at_end = false;
    m_entry_id = -1;
    m_duration = 0;
    m_held.reset();
    m_held_sent = false;
    m_seek_in_flight = false;
    m_seek_started = false;
}

Status MpvEngine::Load(const std::string& path, Intent intent) {
    if (m_mpv == nullptr) return Error{m_init_error};
    auto probe = ProbeMediaFile(path);
    if (!probe) {
        // Whatever was loaded is let go all the same: the caller may load a
        // dummy precisely to release the file it had.
        if (!m_url.empty()) {
            const char* stop[] = {"stop", nullptr};
            mpv_command(m_mpv, stop);
        }
        Unload();
        Enter(PS_Ready);
        return Error{probe.error()};
    }
    Unload();
    if (Status paused = SetPause(true); !paused) {
        Enter(PS_Ready);
        return paused;
    }
    const char* load[] = {"loadfile", path.c_str(), "replace", nullptr};
    mpv_node result{};
    if (int rc = mpv_command_ret(m_mpv, load, &result); rc < 0) {
        const char* stop[] = {"stop", nullptr};
        mpv_command(m_mpv, stop);  // the file before is let go here too
        Enter(PS_Ready);
        return Fail(rc, "loadfile");
    }
    int64_t entry = -1;
    if (result.format == MPV_FORMAT_NODE_MAP) {
        for (int i = 0; i < result.u.list->num; ++i) {
            if (std::strcmp(result.u.list->keys[i], "playlist_entry_id") == 0 &&
                result.u.list->values[i].format == MPV_FORMAT_INT64)
                entry = result.u.list->values[i].u.int64;
        }
    }
    mpv_free_node_contents(&result);
    m_url = path;
    m_probe = std::move(probe.value());
    m_entry_id = entry;
    m_loading = true;
    m_intent = intent;
    Enter(PS_Transitioning);
    return {};
}

Status MpvEngine::setURL(const std::string& path) {
    return Load(path, m_auto_start ? Intent::Play : Intent::Ready);
}

Status MpvEngine::close() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (!m_url.empty()) {
        const char* stop[] = {"stop", nullptr};
        if (int rc = mpv_command(m_mpv, stop); rc < 0) return Fail(rc, "stop");
    }
    Unload();
    Enter(PS_Undefined);
    return {};
}

Status MpvEngine::SetPause(bool on) {
    int flag = on ? 1 : 0;
    if (int rc = mpv_set_property(m_mpv, "pause", MPV_FORMAT_FLAG, &flag); rc < 0) return Fail(rc, "pause");
    return {};
}

bool MpvEngine::Seeking() const {
    return m_seek_in_flight && m_loop.TickCount() - m_seek_sent_at < kSeekPatienceMs;
}

Status MpvEngine::SendHeldSeek() {
    if (Seeking()) return {};  // sent when the one under way is done
    const std::string target = NumberText(m_held.value_or(0.0));
    const char* seek[] = {"seek", target.c_str(), "absolute", nullptr};
    if (int rc = mpv_command(m_mpv, seek); rc < 0) return Fail(rc, "seek");
    m_held_sent = true;
    m_seek_in_flight = true;
    m_seek_started = false;
    m_seek_sent_at = m_loop.TickCount();
    return {};
}

Status MpvEngine::play() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    if (m_unloaded_at_end) {
        const std::optional<double> held = m_held;
        Status loaded = Load(m_url, Intent::Play);
        m_held = held;
        return loaded;
    }
    if (m_loading) {
        m_intent = Intent::Play;
        return {};
    }
    if (m_state == PS_Playing) return {};
    if (m_held && !m_held_sent) {
        if (Status sought = SendHeldSeek(); !sought) return sought;
    }
    if (Status resumed = SetPause(false); !resumed) return resumed;
    if (!Seeking()) m_held.reset();
    // mpv does not play on from the end of a file, and says nothing when it
    // is asked to: a file standing at its end before it plays (started at
    // its end, or with nothing in it) is over at once.
    if (!Seeking() && FlagProperty("eof-reached", false)) {
        Ended();
        return m_url.empty() ? Status(Error{"nothing to play"}) : Status();
    }
    Enter(PS_Playing);
    return {};
}

Status MpvEngine::pause() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    if (m_loading) {
        m_intent = Intent::Pause;
        return {};
    }
    if (m_state == PS_MediaEnded) return {};
    if (Status paused = SetPause(true); !paused) return paused;
    Enter(PS_Paused);
    return {};
}

Status MpvEngine::stop() {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return {};
    if (m_loading) {
        m_intent = Intent::Stop;
        m_held.reset();
        return {};
    }
    if (Status paused = SetPause(true); !paused) return paused;
    m_held = 0.0;
    m_held_sent = false;
    if (!m_unloaded_at_end) {
        if (Status sought = SendHeldSeek(); !sought) return sought;
    }
    Enter(PS_Stopped);
    return {};
}

double MpvEngine::KnownDuration() const { return m_duration > 0 ? m_duration : m_probe.duration; }

Result<double> MpvEngine::currentPosition() const {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return 0.0;
    if (m_loading || m_unloaded_at_end) return m_held.value_or(0.0);
    if (m_held && (m_state != PS_Playing || Seeking())) return *m_held;
    double position = 0;
    if (int rc = mpv_get_property(m_mpv, "playback-time", MPV_FORMAT_DOUBLE, &position); rc < 0)
        return Error{std::string("libmpv playback-time: ") + mpv_error_string(rc)};
    return std::max(0.0, position);
}

Status MpvEngine::setCurrentPosition(double seconds) {
    if (m_mpv == nullptr) return Error{m_init_error};
    if (m_url.empty()) return Error{"no media loaded"};
    if (!std::isfinite(seconds)) return Error{"invalid position"};
    seconds = std::max(0.0, seconds);
    if (const double duration = KnownDuration(); duration > 0) seconds = std::min(seconds, duration);
    m_held = seconds;
    m_held_sent = false;
    // Sent now when mpv has the file, so a paused video shows the frame; the
    // program still reads the held value until playing shows it.
    if (!m_loading && !m_unloaded_at_end) return SendHeldSeek();
    return {};
}

std::string MpvEngine::currentPositionString() const { return Position_Text(currentPosition().value_or(0.0)); }

void MpvEngine::setMute(bool on) {
    if (m_mpv == nullptr) return;
    int flag = on ? 1 : 0;
    mpv_set_property(m_mpv, "mute", MPV_FORMAT_FLAG, &flag);
}

Status MpvEngine::setVolume(int volume) {
    if (m_mpv == nullptr) return Error{m_init_error};
    const int clamped = std::clamp(volume, 0, 100);
    double value = clamped;
    if (int rc = mpv_set_property(m_mpv, "volume", MPV_FORMAT_DOUBLE, &value); rc < 0) return Fail(rc, "volume");
    m_volume = clamped;
    return {};
}

std::unique_ptr<MediaItem> MpvEngine::newMedia(const std::string& path) { return ReadMediaItem(path); }

std::unique_ptr<MediaItem> MpvEngine::currentMedia() {
    if (m_url.empty()) return nullptr;
    // The duration is 0 until mpv has opened the file, as the program expects.
    return std::make_unique<MpvMediaItem>(m_url, m_loading ? 0.0 : KnownDuration(), m_probe);
}

}  // namespace velmora
