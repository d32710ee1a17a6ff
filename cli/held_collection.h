#pragma once
// An existing Collection opened by a terminal command that changes it:
// claimed for writing, the preferences read, and loaded whole.

#include <iosfwd>
#include <string>

namespace velmora {
struct AppContext;
}

namespace velmora::cli {

// False, with the reason on err, when the file is missing, another program
// holds it, or it could not be read whole: nothing is to be written then.
bool Open_Held_Collection(AppContext& ctx, const std::string& file, std::ostream& err);

// The Collection saved; false, with the reason on err, when it failed.
bool Save_Held_Collection(AppContext& ctx, std::ostream& err);

}  // namespace velmora::cli
