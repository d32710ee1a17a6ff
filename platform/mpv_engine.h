#pragma once
// The media engine port on libmpv. One mpv instance per engine, paused before
// every load so that loading never starts playing, kept open at the end of a
// file so that the end is a state the program can see. mpv's events are read
// on the event loop after its wakeup callback has asked for it, and every
// state change is handed to the program from the loop, never from inside the
// call that caused it.

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/event_loop.h"
#include "core/media_engine.h"
#include "platform/av_probe.h"

struct mpv_handle;
struct mpv_event;

namespace velmora {

class MpvEngine : public MediaEngine {
public:
    struct Options {
        std::string ao;   // audio output, empty for mpv's choice; "null" in tests
        std::string vo;   // video output, empty for mpv's choice; "null" in tests
        int64_t wid = 0;  // native window to draw video into, 0 for none
        // Further options by name, set where the library knows them.
        std::vector<std::pair<std::string, std::string>> extra = {};
    };

    // When libmpv cannot be set up, the engine still exists and every call
    // returns the reason (InitError), so that the program goes on without sound.
    // The loop must outlive the engine: mpv's thread posts to it.
    MpvEngine(EventLoop& loop, const Options& options);
    ~MpvEngine() override;
    MpvEngine(const MpvEngine&) = delete;
    MpvEngine& operator=(const MpvEngine&) = delete;

    const std::string& InitError() const { return m_init_error; }
    // The instance, for the widget that draws its picture through the
    // render API (vo "libmpv"); null when it could not be set up.
    mpv_handle* Handle() const { return m_mpv; }
    // For the video widget, which draws the controls by these.
    bool IsEnabled() const { return m_enabled; }
    const std::string& UiMode() const { return m_ui_mode; }

    std::string URL() const override { return m_url; }
    Status setURL(const std::string& path) override;
    Status close() override;
    void setEnabled(bool enabled) override { m_enabled = enabled; }
    void setUiMode(const std::string& mode) override { m_ui_mode = mode; }
    std::unique_ptr<MediaItem> newMedia(const std::string& path) override;
    std::unique_ptr<MediaItem> currentMedia() override;
    int playState() const override { return m_state; }

    Status play() override;
    Status pause() override;
    Status stop() override;
    Result<double> currentPosition() const override;
    Status setCurrentPosition(double seconds) override;
    std::string currentPositionString() const override;

    void setAutoStart(bool on) override { m_auto_start = on; }
    void setMute(bool on) override;
    int volume() const override { return m_volume; }
    Status setVolume(int volume) override;

private:
    // What the program asked for while a load was under way.
    enum class Intent { Ready, Play, Pause, Stop };

    // Shared with the wakeup callback (mpv's thread) and with queued drains,
    // which may outlive the engine.
    struct Wake {
        std::atomic<bool> queued{false};
        MpvEngine* engine = nullptr;  // main thread only; null once the engine is gone
    };

    static void OnWakeup(void* context);
    void Drain();
    void Handle(const mpv_event& event);
    void OnLoaded();
    void CheckEnd();
    // The file has reached its end while playing.
    void Ended();
    Status Load(const std::string& path, Intent intent);
    void Unload();
    // Sends the held position to mpv, or leaves it for when the seek under way is done.
    Status SendHeldSeek();
    // A seek is under way and not yet overdue.
    bool Seeking() const;
    Status SetPause(bool on);
    bool FlagProperty(const char* name, bool fallback) const;
    double KnownDuration() const;
    Status Fail(int code, const char* what) const;
    // Changes the state and reports it from the loop.
    void Enter(int state);

    EventLoop& m_loop;
    mpv_handle* m_mpv = nullptr;
    std::string m_init_error;
    std::shared_ptr<Wake> m_wake = std::make_shared<Wake>();
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);

    std::string m_url;
    AvProbe m_probe;          // of the loaded file
    int m_state = PS_Undefined;
    bool m_loading = false;
    bool m_unloaded_at_end = false;  // mpv let the file go at its end after all
    Intent m_intent = Intent::Ready;
    int64_t m_entry_id = -1;         // mpv's playlist entry of our load; -1 none
    int64_t m_started_entry = -1;    // of the last start-file event
    double m_duration = 0;           // as mpv reports it for the loaded file

    // A position the program has set and that holds until playing shows it:
    // while not playing, and while the seek that carries it is under way.
    std::optional<double> m_held;
    bool m_held_sent = false;             // mpv has been asked to go to m_held
    bool m_seek_in_flight = false;
    bool m_seek_started = false;          // mpv has begun the seek in flight
    int64_t m_seek_sent_at = 0;

    bool m_sound_expected = true;  // the audio output asked for is a real one
    bool m_told_no_sound = false;

    int m_volume = 100;
    int m_reported_volume = 100;
    bool m_auto_start = false;
    bool m_enabled = true;
    std::string m_ui_mode = "full";
};

}  // namespace velmora
