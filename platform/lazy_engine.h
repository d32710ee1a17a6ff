#pragma once
// A media engine that starts its player on first use. The video window's and
// the second player's engines stay unused in most sessions, the reader's
// player is never needed to read a file, and the player not before the
// first file plays; each libmpv instance holds a few megabytes and threads.
// Settings given before then are kept and handed on when it starts.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/media_engine.h"

namespace velmora {

class LazyEngine : public MediaEngine {
public:
    using Factory = std::function<std::unique_ptr<MediaEngine>()>;
    using Reader = std::function<std::unique_ptr<MediaItem>(const std::string& path)>;
    // An engine whose newMedia reads the file without its player may be
    // given that reading: reading files then never starts the player.
    explicit LazyEngine(Factory factory, Reader reader = nullptr)
        : m_factory(std::move(factory)), m_reader(std::move(reader)) {}

    bool Started() const { return m_engine != nullptr; }
    // Starts the player now, as a first use would; the engine the factory made.
    MediaEngine& Start() { return Engine(); }

    std::string URL() const override { return m_engine ? m_engine->URL() : std::string(); }
    Status setURL(const std::string& path) override { return Engine().setURL(path); }
    // With nothing ever loaded, stopping and closing leave it as it is.
    Status close() override { return m_engine ? m_engine->close() : Status{}; }
    void setEnabled(bool enabled) override;
    void setUiMode(const std::string& mode) override;
    std::unique_ptr<MediaItem> newMedia(const std::string& path) override {
        return m_reader ? m_reader(path) : Engine().newMedia(path);
    }
    std::unique_ptr<MediaItem> currentMedia() override { return m_engine ? m_engine->currentMedia() : nullptr; }
    int playState() const override { return m_engine ? m_engine->playState() : PS_Undefined; }

    Status play() override { return Engine().play(); }
    Status pause() override { return m_engine ? m_engine->pause() : Status{Error{"no media loaded"}}; }
    Status stop() override { return m_engine ? m_engine->stop() : Status{}; }
    Result<double> currentPosition() const override;
    Status setCurrentPosition(double seconds) override { return Engine().setCurrentPosition(seconds); }
    std::string currentPositionString() const override;

    void setAutoStart(bool on) override;
    void setMute(bool on) override;
    int volume() const override { return m_engine ? m_engine->volume() : m_volume; }
    Status setVolume(int volume) override;

private:
    MediaEngine& Engine();

    Factory m_factory;
    Reader m_reader;
    std::unique_ptr<MediaEngine> m_engine;
    Subscription m_state_link, m_status_link, m_sound_link;
    // What was set before the engine started.
    std::optional<bool> m_enabled, m_auto_start, m_mute;
    std::optional<std::string> m_ui_mode;
    int m_volume = 100;  // a fresh player's loudness
    bool m_volume_set = false;
};

}  // namespace velmora
