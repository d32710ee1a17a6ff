#pragma once
// A sleep timer for the terminal's player: after a given time playing
// pauses, the volume having come down over the last minute, and the owner is
// told so that it can save and leave.

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "core/controls.h"

namespace velmora {

struct AppContext;

// "30m", "1h15m", "45s", "2h": hours, minutes and seconds in that order,
// each at most once; seconds, or nothing for any other text or for none.
std::optional<int64_t> Parse_Sleep_Duration(std::string_view text);

class SleepTimer {
public:
    // The fade's length, and how often the volume steps within it.
    static constexpr int64_t kFadeMs = 60'000;
    static constexpr int kStepMs = 250;

    // Counts from now on the context's loop; `done` runs once, after the pause.
    SleepTimer(AppContext& ctx, int64_t seconds, std::function<void()> done);
    ~SleepTimer();
    SleepTimer(const SleepTimer&) = delete;
    SleepTimer& operator=(const SleepTimer&) = delete;

private:
    void Tick();

    AppContext& m_ctx;
    std::function<void()> m_done;
    int64_t m_end_tick;
    // The player's volume when the fade began; -1 before.
    int m_full_volume = -1;
    Timer m_timer{"SleepTimer"};
    Subscription m_tick;
};

}  // namespace velmora
