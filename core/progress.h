#pragma once
// The shared progress bars of the main window, drawn by every long loop.

#include <cstdint>

namespace velmora {

struct Form1;

// Bar `bar` of Shape1 and its label Label11(bar): current of total, in percent.
void Show_Progress(Form1& f, int64_t current, int64_t total, int bar);

}  // namespace velmora
