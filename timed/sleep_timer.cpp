#include "timed/sleep_timer.h"

#include <charconv>

#include "core/app_context.h"
#include "core/port_faults.h"

namespace velmora {

std::optional<int64_t> Parse_Sleep_Duration(std::string_view text) {
    static constexpr struct {
        char unit;
        int64_t seconds;
    } kUnits[] = {{'h', 3600}, {'m', 60}, {'s', 1}};
    int64_t total = 0;
    size_t next_unit = 0;
    while (!text.empty()) {
        int64_t count = 0;
        auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), count);
        if (ec != std::errc() || end == text.data() + text.size() || count < 0 || count > 1'000'000) return {};
        size_t unit = next_unit;
        while (unit < std::size(kUnits) && kUnits[unit].unit != *end) ++unit;
        if (unit == std::size(kUnits)) return {};  // unknown, repeated or out of order
        total += count * kUnits[unit].seconds;
        next_unit = unit + 1;
        text.remove_prefix(static_cast<size_t>(end - text.data()) + 1);
    }
    if (total <= 0) return {};
    return total;
}

SleepTimer::SleepTimer(AppContext& ctx, int64_t seconds, std::function<void()> done)
    : m_ctx(ctx), m_done(std::move(done)), m_end_tick(ctx.ports.loop.TickCount() + seconds * 1000) {
    m_tick = m_timer.Tick.connect([this] { Tick(); });
    m_timer.SetInterval(kStepMs);
    m_ctx.ports.loop.Attach(m_timer);
    m_timer.SetEnabled(true);
}

SleepTimer::~SleepTimer() { m_ctx.ports.loop.Detach(m_timer); }

void SleepTimer::Tick() {
    MediaEngine& player = m_ctx.ports.player;
    const int64_t left = m_end_tick - m_ctx.ports.loop.TickCount();
    if (left > kFadeMs) return;
    if (m_full_volume < 0) m_full_volume = player.volume();
    if (left > 0) {
        // Down in a straight line, rounded up so that it reaches 0 only at the end.
        const int64_t volume = (m_full_volume * left + kFadeMs - 1) / kFadeMs;
        if (volume != player.volume()) Log_Failure(m_ctx, player, "setVolume", player.setVolume(static_cast<int>(volume)));
        return;
    }
    m_timer.SetEnabled(false);
    if (player.playState() == PS_Playing) Log_Failure(m_ctx, player, "pause", player.pause());
    // Paused, the volume can come back for whoever plays on.
    Log_Failure(m_ctx, player, "setVolume", player.setVolume(m_full_volume));
    if (m_done) m_done();
}

}  // namespace velmora
