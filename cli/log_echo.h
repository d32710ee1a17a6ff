#pragma once
// Prints each entry the program puts at the head of its log Text2(0), as it
// comes, for the terminal commands that run the window's procedures.

#include <iosfwd>

#include "base/signal.h"

namespace velmora {
struct Form1;
}

namespace velmora::cli {

// The entries are printed while the subscription lives.
Subscription Echo_Log(Form1& f, std::ostream& out);

}  // namespace velmora::cli
