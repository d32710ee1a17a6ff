#include "app/metadata_handlers.h"

#include "core/app_context.h"
#include "ratings/ratings_in_files.h"

namespace velmora {

void Wire_Metadata_Handlers(AppContext& ctx) {
    MenuSet& m = ctx.form1.Menus;
    auto& links = ctx.handlers;
    auto on = [&](Signal<>& signal, void (*handler)(AppContext&)) {
        links.push_back(signal.connect([&ctx, handler] { handler(ctx); }));
    };

    // Ratings within the files, from the Rating menu.
    on(m("MnuMoreReadFavorFromFiles").Click, MnuMoreReadFavorFromFiles_Click);
    on(m("MnuMoreSaveFavorWithinFiles").Click, MnuMoreSaveFavorWithinFiles_Click);
    on(m("MnuMoreFavorWithinFiles").Click, MnuMoreFavorWithinFiles_Click);
}

}  // namespace velmora
