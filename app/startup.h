#pragma once
// The order in which the program comes up and goes down.

#include <string>

namespace velmora {

struct AppContext;

void Form_Load(AppContext& ctx);
// Saves and ends; there is no question and no cancel.
void Form_QueryUnload(AppContext& ctx);

void Apply_Class_Play(AppContext& ctx);
// The tables, lists and controls at their first contents, set by Form_Load
// before the preferences and the Collection are read over them.
void Initialise(AppContext& ctx);
void Set_Defaults(AppContext& ctx);
void Main();

}  // namespace velmora
