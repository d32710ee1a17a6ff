#include "core/settings_store.h"

namespace velmora {

// The preferences file is read and written with the collection files' work;
// until then the defaults stand.
void Load_Settings(AppContext&, bool& error) { error = false; }
void Save_Settings(AppContext&, bool& error) { error = false; }

}  // namespace velmora
