#include "platform/lazy_engine.h"

#include <algorithm>

namespace velmora {

MediaEngine& LazyEngine::Engine() {
    if (m_engine) return *m_engine;
    m_engine = m_factory();
    m_state_link = m_engine->PlayStateChange.connect([this](int state) { PlayStateChange.emit(state); });
    m_status_link = m_engine->StatusChange.connect([this] { StatusChange.emit(); });
    m_sound_link = m_engine->SoundDeviceMissing.connect([this] { SoundDeviceMissing.emit(); });
    if (m_enabled) m_engine->setEnabled(*m_enabled);
    if (m_ui_mode) m_engine->setUiMode(*m_ui_mode);
    if (m_auto_start) m_engine->setAutoStart(*m_auto_start);
    if (m_mute) m_engine->setMute(*m_mute);
    if (m_volume_set) (void)m_engine->setVolume(m_volume);  // it reported success when it was set
    return *m_engine;
}

void LazyEngine::setEnabled(bool enabled) {
    if (m_engine) m_engine->setEnabled(enabled);
    else m_enabled = enabled;
}

void LazyEngine::setUiMode(const std::string& mode) {
    if (m_engine) m_engine->setUiMode(mode);
    else m_ui_mode = mode;
}

void LazyEngine::setAutoStart(bool on) {
    if (m_engine) m_engine->setAutoStart(on);
    else m_auto_start = on;
}

void LazyEngine::setMute(bool on) {
    if (m_engine) m_engine->setMute(on);
    else m_mute = on;
}

Status LazyEngine::setVolume(int volume) {
    if (m_engine) return m_engine->setVolume(volume);
    m_volume = std::clamp(volume, 0, 100);
    m_volume_set = true;
    return {};
}

// Nothing loaded: the start, as a started player with no file answers.
Result<double> LazyEngine::currentPosition() const {
    if (m_engine) return m_engine->currentPosition();
    return 0.0;
}

std::string LazyEngine::currentPositionString() const {
    return m_engine ? m_engine->currentPositionString() : Position_Text(0.0);
}

}  // namespace velmora
