#include "app/about_handlers.h"

#include "core/app_context.h"
#include "desktop/about.h"

namespace velmora {

void Wire_About_Handlers(AppContext& ctx, std::vector<Subscription>& links) {
    MenuSet& m = ctx.form1.Menus;
    for (int i = 0; i < 2; ++i)
        links.push_back(m("mnuinfogr", i).Click.connect([&ctx, i] { mnuinfogr_Click(ctx, i); }));
    links.push_back(m("mnustats").Click.connect([&ctx] { mnustats_Click(ctx); }));
    links.push_back(m("mnustatsreset").Click.connect([&ctx] { mnustatsreset_Click(ctx); }));
    for (int i = 2; i <= 6; ++i)
        links.push_back(m("mnu_info2", i).Click.connect([&ctx, i] { mnu_info2_Click(ctx, i); }));
}

}  // namespace velmora
