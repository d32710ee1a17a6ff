#include "desktop/pages.h"

#include "catalogue/filter_query.h"
#include "core/app_context.h"
#include "intake/directory_search.h"

namespace velmora {

void MultiPage1_Change(AppContext& ctx) {
    Set_Check2(ctx, 0);
    if (ctx.form1.MultiPage1.Value() == kResultsPage) Refresh_Stale_Results(ctx);
}

}  // namespace velmora
