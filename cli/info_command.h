#pragma once
// velmora-cli info FILE.qel: a short summary of a Collection for people.

#include <iosfwd>
#include <string>

namespace velmora::cli {

// The exit code: 0, or 1 when something could not be read (told on err).
int Info_Command(const std::string& main_path, std::ostream& out, std::ostream& err);

}  // namespace velmora::cli
