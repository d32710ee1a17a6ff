#include "core/port_faults.h"

#include "core/app_context.h"
#include "core/running_report.h"

namespace velmora {

std::string Engine_Name(const AppContext& ctx, const MediaEngine& engine) {
    if (&engine == &ctx.ports.player) return "player";
    if (&engine == &ctx.ports.reader) return "reader";
    if (&engine == &ctx.ports.video) return "video";
    if (&engine == &ctx.ports.second) return "second";
    for (const MediaEngine* pane : ctx.ports.panes)
        if (&engine == pane) return "pane";
    return "engine";
}

void Log_Failure(AppContext& ctx, const std::string& call, const Status& status) {
    auto& failing = ctx.core.Failing_Calls;
    if (status.ok()) {
        failing.erase(call);
        return;
    }
    if (!failing.insert(call).second) return;  // logged when it began failing
    Log_Line(ctx, "-> Σφάλμα - Error [" + call + "]: " + status.error());
}

void Log_Failure(AppContext& ctx, const MediaEngine& engine, const char* operation, const Status& status) {
    Log_Failure(ctx, Engine_Name(ctx, engine) + "." + operation, status);
}

}  // namespace velmora
