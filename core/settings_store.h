#pragma once
// The preferences file and its backup.

#include <string>

namespace velmora {

struct AppContext;

// Record length of the preferences file: one value per record.
constexpr int kSettingsRecordLength = 257;

// velmora_preferences/default_pref.qr below the program's folder.
std::string Settings_File(const AppContext& ctx);

// Reads the preferences over the defaults and puts every value back on its
// menu mark or control. A missing file leaves the defaults and no error;
// error comes back true when a record could not be read, and the values read
// before it stand.
void Load_Settings(AppContext& ctx, bool& error);
// Writes the preferences in the file's order, as a new file that replaces
// the old one only when it is whole on the disk; a clean write renews the
// .backup copy the same way, a failed one leaves the old copy alone. A
// failure is logged and kept in ctx.core.Settings_Fault.
void Save_Settings(AppContext& ctx, bool& error);

}  // namespace velmora
