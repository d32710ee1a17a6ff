#include "desktop/pages.h"

#include "catalogue/filter_query.h"
#include "core/app_context.h"
#include "intake/directory_search.h"
#include "playback/preview_panes.h"

namespace velmora {

void MultiPage1_Change(AppContext& ctx) {
    Set_Check2(ctx, 0);
    if (ctx.form1.MultiPage1.Value() == kResultsPage) Refresh_Stale_Results(ctx);
    // The results frame, and the preview panes in it, show on their page
    // alone; leaving it stops the panes.
    Frame& results = ctx.form1.Frame6;
    const bool was_shown = results.Visible();
    results.SetVisible(ctx.form1.MultiPage1.Value() == kResultsPage);
    if (was_shown && !results.Visible()) Multi_Preview(ctx, 0);
}

}  // namespace velmora
