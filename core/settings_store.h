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
// Writes the preferences in the file's order; a clean write renews the
// .backup copy, a failed one leaves the old copy alone.
void Save_Settings(AppContext& ctx, bool& error);

}  // namespace velmora
