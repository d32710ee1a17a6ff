#include "desktop/pages.h"

#include "core/app_context.h"
#include "intake/directory_search.h"

namespace velmora {

void MultiPage1_Change(AppContext& ctx) { Set_Check2(ctx, 0); }

}  // namespace velmora
