#pragma once
// Connects the controls' and engines' signals to the handlers: the clock, the
// transport, the list, the search page, the menus and the tray. A view only
// raises the signals; what they do is here.

namespace velmora {

struct AppContext;

// Once per context; the connections are kept in ctx.handlers and end with it.
void Wire_Handlers(AppContext& ctx);

}  // namespace velmora
