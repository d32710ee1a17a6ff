#include "core/running_report.h"

#include "core/app_context.h"
#include "core/text_format.h"

namespace velmora {

void Log_Line(AppContext& ctx, const std::string& text) {
    TextBox& log = ctx.form1.Text2[0];
    log.SetText(TimeText(ctx.ports.loop.Now()) + text + "\n" + log.Text());
}

void Report_Size(AppContext&) {
    // The report file comes with the collection files' work.
}

}  // namespace velmora
