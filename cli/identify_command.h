#pragma once
// velmora-cli identify: reads every Track's duration, size, bit rate and tags
// into a Collection, headless, answering the program's questions with Yes.

namespace velmora::cli {

// argv after "identify": FILE.qel [--continue]. Returns the exit code.
int Identify_Command(int argc, char** argv);

}  // namespace velmora::cli
