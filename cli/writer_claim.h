#pragma once
// The terminal commands that write a Collection (add, identify, play) claim
// it before they touch anything, and stop when they cannot.

#include <iosfwd>

namespace velmora {
struct AppContext;
}

namespace velmora::cli {

// Claims the Collection at Collection_Path for writing. False, with the
// reason on err, when another program holds it or one of its files is not a
// regular file: the command is then to end with nothing written.
bool Claim_For_Writing(AppContext& ctx, std::ostream& err);

}  // namespace velmora::cli
