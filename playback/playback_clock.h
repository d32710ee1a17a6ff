#pragma once
// The PlaybackClock, Timer1 of the main window: it reads the engine, keeps the
// time displays, the slider and the tray tip, walks the preview's points,
// counts the listening time, saves the Collection every ten minutes, and does
// the one action that the start of a Track or its end left for it. Nothing
// else starts the engine for a new Track or moves on after a Track ends.

#include <cstdint>
#include <string>

namespace velmora {

struct AppContext;
struct CollectionState;

void Timer1_Timer(AppContext& ctx);
// The totals of the labels above the list, from the last tick's figures.
void Show_Progress_Labels(AppContext& ctx);

// Leaves `action` for the next tick and makes that tick come after 300 ms;
// the period in force is kept in Saved_Interval, to be restored then.
void Arm_Short_Tick(AppContext& ctx, uint8_t action, int saved_interval);

// Adds one tick's playing time to the listening statistics and carries it
// up: 60 seconds, 60 minutes, 24 hours, 30 days, 13 months.
void Count_Listening_Time(CollectionState& stats, int interval_ms);

}  // namespace velmora
