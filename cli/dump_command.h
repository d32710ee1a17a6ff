#pragma once
// velmora-cli dump FILE.qel: the Collection as JSON on standard output.

#include <iosfwd>
#include <string>

namespace velmora::cli {

// The exit code: 0, or 1 when something could not be read (told on err).
int Dump_Command(const std::string& main_path, std::ostream& out, std::ostream& err);

}  // namespace velmora::cli
