#pragma once
// Connects the controls' and engines' signals to the handlers of playing: the
// clock, the transport buttons, the list, the Play menu and the tray's
// transport entries. A view only raises the signals; what they do is here.

namespace velmora {

struct AppContext;

// Once per context; the connections are kept in ctx.handlers and end with it.
void Wire_Handlers(AppContext& ctx);

}  // namespace velmora
