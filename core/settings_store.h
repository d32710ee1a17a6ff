#pragma once
// The preferences file and its backup.

namespace velmora {

struct AppContext;

// error comes back true when a record could not be read.
void Load_Settings(AppContext& ctx, bool& error);
void Save_Settings(AppContext& ctx, bool& error);

}  // namespace velmora
