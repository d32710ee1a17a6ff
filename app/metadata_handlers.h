#pragma once
// The handlers of ratings kept within files, the tag page and the search
// links, wired apart from the rest so that each stays small.

namespace velmora {

struct AppContext;

// Called by Wire_Handlers; the connections are kept in ctx.handlers.
void Wire_Metadata_Handlers(AppContext& ctx);

}  // namespace velmora
