#pragma once
// A media engine that plays nothing but keeps URL, position, duration, state,
// volume and mute on the virtual clock of a VirtualEventLoop, over files the
// test describes. Like the real engine it reports every state change later,
// from the loop: a load completes at the loop's next turn, and the end comes
// at the virtual moment the position reaches the duration.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "core/controls.h"
#include "core/media_engine.h"
#include "support/virtual_event_loop.h"

namespace velmora {

class StubEngine : public MediaEngine {
public:
    // How a file that loads goes wrong afterwards, as files an engine cannot
    // decode do: its load never ends; it says it plays and its position never
    // moves; or the engine lets go of it at the first play.
    enum class Trouble { None, LoadsForever, StandsStill, DroppedAtPlay };
    // What the stub knows of a file, shared with the media items it hands out
    // so that attributes written through one are read through another. A
    // failing file does not load.
    struct File {
        double duration = 0;
        bool failing = false;
        Trouble trouble = Trouble::None;
        std::map<std::string, std::string> attributes;
    };
    using Files = std::map<std::string, File>;

    explicit StubEngine(VirtualEventLoop& loop);
    ~StubEngine() override;

    void SetDuration(const std::string& path, double seconds) { (*m_files)[path].duration = seconds; }
    void SetFailing(const std::string& path) { (*m_files)[path].failing = true; }
    void SetTrouble(const std::string& path, Trouble trouble) { (*m_files)[path].trouble = trouble; }
    // As an engine that found no sound device, from the loop.
    void ReportNoSoundDevice();
    void SetAttribute(const std::string& path, const std::string& attribute, const std::string& value) {
        (*m_files)[path].attributes[attribute] = value;
    }
    // Every later call of that name ("play", "setVolume", ...) fails, as on
    // an engine whose output has gone, until the test lets it work again.
    void SetCallFailing(const std::string& call, bool failing = true) {
        if (failing) m_failing_calls.insert(call);
        else m_failing_calls.erase(call);
    }
    bool Muted() const { return m_mute; }
    bool AutoStart() const { return m_auto_start; }

    std::string URL() const override { return m_url; }
    Status setURL(const std::string& path) override;
    Status close() override;
    // Nothing is shown, so there is nothing to lay out; enabled is kept to be asked.
    void setEnabled(bool on) override { m_enabled = on; }
    bool Enabled() const { return m_enabled; }
    void setUiMode(const std::string&) override {}
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
    void setMute(bool on) override { m_mute = on; }
    int volume() const override { return m_volume; }
    Status setVolume(int volume) override;

private:
    // What a call asked for while the load was still under way.
    enum class Intent { Ready, Play, Pause, Stop };

    std::optional<Error> Refused(const char* call) const;
    // Lets go of the file held, whatever comes next.
    void Release();
    void CompleteLoad();
    void StartClock();
    void FreezeClock();
    void OnEnd();
    // Changes the state and reports it on the loop's next turn.
    void Enter(int state);
    // Runs fn on the loop's next turn unless the engine is gone by then.
    void Later(std::function<void()> fn);
    double Duration() const;
    Trouble TroubleOf(const std::string& path) const;

    VirtualEventLoop& m_loop;
    std::shared_ptr<Files> m_files = std::make_shared<Files>();
    std::set<std::string> m_failing_calls;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    Timer m_end_timer{"StubEngineEnd"};
    Subscription m_end_tick;

    std::string m_url;
    int m_state = PS_Undefined;
    bool m_loading = false;
    Intent m_intent = Intent::Ready;
    uint64_t m_load_id = 0;
    // The position is m_position while the clock stands, and m_position plus
    // the virtual time since m_clock_start while playing.
    double m_position = 0;
    std::optional<int64_t> m_clock_start;
    int m_volume = 100;
    bool m_mute = false;
    bool m_auto_start = false;
    bool m_enabled = true;
};

}  // namespace velmora
