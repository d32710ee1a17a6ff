#include "playback/track_watch.h"

#include <string>

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "playback/play_state.h"
#include "playback/playback_clock.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

// The log line, the engine let go of the file, and the next Track 300 ms
// from now, as after the end of a Track. The row keeps its class, its size
// and its exit point: the file may play another day, on another engine.
void Give_Up(AppContext& ctx, MediaEngine& engine, const std::string& greek, const std::string& english) {
    const std::string& file = ctx.playback.Current_File;
    const std::string n = Str(int64_t{ctx.table.Current_Track} + 1);
    Log_Line(ctx, "-> Το αρχείο (" + n + ")" + file + " " + greek + " - " + "File (" + n + ")" + file + " " +
                      english);
    Forget_Watch(ctx);
    // Closed, the engine has no position to give the move below as the
    // Track's exit point, and it no longer holds a file it cannot play.
    if (!engine.URL().empty()) Log_Failure(ctx, engine, "close", engine.close());
    Show(ctx, "stop", kIconStopped);
    Arm_Short_Tick(ctx, kTickNext, ctx.form1.Timer1.Interval());
}

void Cannot_Play(AppContext& ctx, MediaEngine& engine) {
    Give_Up(ctx, engine, "δεν αναπαράγεται, πάμε στο επόμενο", "cannot be played, going on to the next one");
}

}  // namespace

void Forget_Watch(AppContext& ctx) {
    ctx.playback.Watch_File.clear();
    ctx.playback.Watch_Position = -1;
}

bool Watch_Started(AppContext& ctx, MediaEngine& engine, const Status& played) {
    PlaybackState& p = ctx.playback;
    p.Watch_File = p.Current_File;
    p.Watch_Position = -1;
    p.Watch_Since = ctx.ports.loop.TickCount();
    // Nothing loaded (the engine refused the file) or a refused start.
    if (played.ok() && !engine.URL().empty()) return true;
    Cannot_Play(ctx, engine);
    return false;
}

bool Watch_Progress(AppContext& ctx) {
    PlaybackState& p = ctx.playback;
    if (p.Watch_File.empty()) return false;
    if (p.Watch_File != p.Current_File) {
        Forget_Watch(ctx);
        return false;
    }
    // A start or a move is already on its way.
    if (p.Tick_Action != kTickNothing) return false;
    MediaEngine* engine = Active_Engine(ctx);
    if (engine == nullptr) return false;

    // The engine gave the file up by itself, as it does with one it cannot decode.
    if (engine->URL().empty()) {
        Cannot_Play(ctx, *engine);
        return true;
    }
    const int64_t now = ctx.ports.loop.TickCount();
    const int state = engine->playState();
    // Paused, stopped or at its end the Track is not expected to move.
    if (state != PS_Playing && state != PS_Transitioning) {
        p.Watch_Since = now;
        return false;
    }
    const auto at = engine->currentPosition();
    if (at.ok() && at.value() != p.Watch_Position) {
        p.Watch_Position = at.value();
        p.Watch_Since = now;
        return false;
    }
    if (now - p.Watch_Since < kStallLimitMs) return false;
    const std::string seconds = std::to_string(kStallLimitMs / 1000);
    Give_Up(ctx, *engine, "δεν προχώρησε για " + seconds + " δευτερόλεπτα, πάμε στο επόμενο",
            "made no progress for " + seconds + " seconds, going on to the next one");
    return true;
}

}  // namespace velmora
