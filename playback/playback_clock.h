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

// One tick, every Interval ms: 1000 while the window shows, 6000 while it is
// hidden, 300 for the one short tick that the start or the end of a Track
// arms. While Busy_Working it does nothing. Otherwise, in this order: reads
// the active engine's position and length (a failed read ends the tick);
// puts the position on Slider1 and the times, size and bit rate in Text5 of
// both windows, and the totals in Label2; in preview, moves to the next point
// once Preview_Seconds have played, or to the next Track after the last
// point; counts a change of Current_Track in Stat_Files; writes the tray's
// tip; adds the tick to the listening time while the engine plays; saves the
// Collection when Save_Auto is on and ten minutes have passed; and last does
// what Tick_Action holds, restoring the period first: kTickStart plays the
// engine loaded for the new Track, kTickNext moves on as the next button does.
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
