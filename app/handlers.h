#pragma once
// Connects the controls' and engines' signals to the handlers: the clock, the
// transport, the list, the search page, the menus and the tray. A view only
// raises the signals; what they do is here.

#include <string>
#include <vector>

namespace velmora {

struct AppContext;

// Once per context; the connections are kept in ctx.handlers and end with it.
// Answers the menu rows looked up and not found in the menu tables, as
// "name(index)": each is a handler that no click would ever reach, so the
// start-up refuses to go on with any.
[[nodiscard]] std::vector<std::string> Wire_Handlers(AppContext& ctx);

// The tip of a menu row whose behaviour is not built yet.
extern const char* const kNotBuiltTip;  // "Δεν υπάρχει ακόμη - Not available yet"

// Disables, with kNotBuiltTip, every menu row that a click would leave
// without effect: a row with no children and no handler, other than the rows
// that do nothing on purpose. Runs after the preferences are read, since they
// enable some rows by their marks.
void Disable_Unbuilt_Rows(AppContext& ctx);

}  // namespace velmora
