#pragma once
// The walk that chooses the next Track: over the whole Collection, serial or
// shuffled, each Track once per cycle, numbered in the order played. The
// numbers are what going back looks up.
//
// The walk's procedures return a failure when a number would overflow or a
// row lies outside the table; that ends the procedure where it stands, and
// the event handler that started it reports it (see Report_Fault).

#include "base/result.h"

namespace velmora {

struct AppContext;
struct TrackTable;

// Finds the next Track and starts it.
Status Bres_Kommati(AppContext& ctx);
// One move forward: in shuffled order first through the history, by the step count.
Status Step_Forward(AppContext& ctx);
// The step count of moves back through the history.
Status Step_Backward(AppContext& ctx);
// Repeats the last move, by Step_Direction, after a Track was found missing.
Status Repeat_Step(AppContext& ctx);
// Puts Current_Track on the screen and makes it Current_File.
void Show_Current_Media(AppContext& ctx);
// Removes the selection from every row of List2 and of every mirror list.
void Clear_Selection(AppContext& ctx);

// Whether row may be played now: unplayed in this cycle and passing the class
// test, whose first clause, Class_Play(0) = 0, lets every row through.
bool Acceptable_Row(const TrackTable& t, int row);
// The next value of the walk's generator, uniform in [0, 1).
double Next_Random(AppContext& ctx);

// Logs a fault of a procedure that an event handler started; the handler
// then returns, and the next event starts afresh.
void Report_Fault(AppContext& ctx, const Status& status);

}  // namespace velmora
