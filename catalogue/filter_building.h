#pragma once
// The catalogue's value lists and rows.

namespace velmora {

struct AppContext;

void Add_Filters(AppContext& ctx);
void Reboot_Filters(AppContext& ctx);
void Filtered_Songs_List(AppContext& ctx, int mode);

}  // namespace velmora
