#include "playback/preview_panes.h"

#include <string>

#include "core/app_context.h"
#include "core/port_faults.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

// What the panes show without their own controls.
constexpr const char* kPaneUiMode = "none";

bool Opening(int state) { return state == PS_Undefined || state == PS_Transitioning; }

}  // namespace

void Multi_Preview(AppContext& ctx, int show) {
    auto& engines = ctx.ports.panes;
    auto& panes = ctx.form1.WindowsMediaPlayer3;
    // A click while the first pane opens starts a newer run; the older one
    // then leaves the panes to it.
    const uint64_t run = ++ctx.playback.Preview_Run;
    const std::string file = ctx.playback.Selected_File;

    if (show == 0 || !Is_Video_File(ctx, file)) {
        for (int i = 0; i < kPaneCount; ++i) {
            if (MediaEngine* e = engines[i]) {
                Log_Failure(ctx, *e, "stop", e->stop());
                if (show == 0) Log_Failure(ctx, *e, "close", e->close());
                else e->setUiMode(kPaneUiMode);
            }
            panes[i].SetVisible(false);
        }
        return;
    }

    MediaEngine* first = engines[0];
    if (first == nullptr) return;
    Log_Failure(ctx, *first, "setURL", first->setURL(file));
    first->setUiMode(kPaneUiMode);
    first->setMute(true);
    Log_Failure(ctx, *first, "play", first->play());
    EventLoop& loop = ctx.ports.loop;
    const int64_t since = loop.TickCount();
    while (Opening(first->playState()) && loop.TickCount() - since < kPaneOpenLimit) {
        loop.WaitForEvents(20);
        if (run != ctx.playback.Preview_Run) return;
    }
    panes[0].SetVisible(true);
    auto media = first->currentMedia();
    const double duration = media ? media->duration() : 0.0;

    constexpr int n = kPaneCount - 1;
    for (int i = 1; i <= n; ++i) {
        MediaEngine* e = engines[i];
        if (e == nullptr) continue;
        e->setUiMode(kPaneUiMode);
        Log_Failure(ctx, *e, "setURL", e->setURL(file));
        Log_Failure(ctx, *e, "setCurrentPosition", e->setCurrentPosition((i - 0.5) / n * duration));
        e->setMute(true);
        Log_Failure(ctx, *e, "play", e->play());
        panes[i].SetVisible(true);
        // Each pane opens the film anew: the window gets a turn between them.
        loop.DoEvents();
        if (run != ctx.playback.Preview_Run) return;
    }
}

}  // namespace velmora
