#include "core/event_loop.h"

namespace velmora {

void Wait(EventLoop& loop, int milliseconds) {
    const int64_t start = loop.TickCount();
    for (;;) {
        const int64_t elapsed = loop.TickCount() - start;
        if (elapsed >= milliseconds) break;
        // Wait for at most what is left, so a loop that wakes for every event
        // still ends on time and a quiet loop sleeps instead of spinning.
        loop.WaitForEvents(static_cast<int>(milliseconds - elapsed));
    }
}

}  // namespace velmora
