#pragma once
// A media engine for a preview pane: libmpv driven by asynchronous requests
// only. A pane's engine is busy for a while after each start, opening and
// seeking a large film; a call that waited for it would hold up the window,
// twelve times over. What a pane is asked (load, position, play, mute) is
// gathered during the handler and sent as one batch from the loop; the
// state comes back through mpv's events.

#include <atomic>
#include <memory>
#include <string>

#include "core/event_loop.h"
#include "core/media_engine.h"
#include "platform/mpv_engine.h"

struct mpv_handle;
struct mpv_event;

namespace velmora {

class MpvPaneEngine : public MediaEngine {
public:
    MpvPaneEngine(EventLoop& loop, const MpvEngine::Options& options);
    ~MpvPaneEngine() override;
    MpvPaneEngine(const MpvPaneEngine&) = delete;
    MpvPaneEngine& operator=(const MpvPaneEngine&) = delete;

    mpv_handle* Handle() const { return m_mpv; }
    const std::string& InitError() const { return m_init_error; }

    std::string URL() const override { return m_url; }
    Status setURL(const std::string& path) override;
    Status close() override;
    void setEnabled(bool) override {}
    void setUiMode(const std::string&) override {}
    std::unique_ptr<MediaItem> newMedia(const std::string& path) override;
    std::unique_ptr<MediaItem> currentMedia() override;
    int playState() const override { return m_state; }

    Status play() override;
    Status pause() override;
    Status stop() override;
    // The point the pane was started at until it plays, then mpv's position.
    Result<double> currentPosition() const override;
    Status setCurrentPosition(double seconds) override;
    std::string currentPositionString() const override;

    void setAutoStart(bool) override {}
    void setMute(bool on) override;
    int volume() const override { return m_volume; }
    Status setVolume(int volume) override;

private:
    struct Wake {
        std::atomic<bool> queued{false};
        MpvPaneEngine* engine = nullptr;
    };

    // Makes and starts the mpv instance, or says why it could not.
    void Create(const MpvEngine::Options& options);
    static void OnWakeup(void* context);
    void Drain();
    // Sends what the handler asked for, once, from the loop.
    void Schedule();
    void Send();
    void Async(const char* name, const std::string& value);
    void Command(const char* a, const char* b = nullptr, const char* c = nullptr);
    void Enter(int state);

    EventLoop& m_loop;
    mpv_handle* m_mpv = nullptr;
    std::string m_init_error;
    std::shared_ptr<Wake> m_wake = std::make_shared<Wake>();
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);

    std::string m_url;
    bool m_load_due = false;   // a load waits for the batch
    bool m_send_queued = false;
    bool m_loaded = false;     // mpv has opened the file of m_url
    bool m_playing = false;    // asked to play
    double m_start = 0;
    double m_duration = 0;
    int m_state = PS_Undefined;
    int m_volume = 100;
};

}  // namespace velmora
