#pragma once
// What stands below a folder, to compare before and after: each entry's
// kind, and its bytes or its link's target.

#include <filesystem>
#include <map>
#include <string>

namespace velmora::testing {

std::map<std::string, std::string> File_Tree(const std::filesystem::path& folder);

}  // namespace velmora::testing
