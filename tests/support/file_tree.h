#pragma once
// What stands below a folder, to compare before and after: each entry's
// kind, and its bytes or its link's target.

#include <filesystem>
#include <map>
#include <string>

#include "support/test_app.h"

namespace velmora::testing {

inline std::map<std::string, std::string> File_Tree(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    std::map<std::string, std::string> tree;
    for (const auto& e : fs::recursive_directory_iterator(folder)) {
        const fs::file_status st = e.symlink_status();
        std::string what = std::to_string(static_cast<int>(st.type())) + ":";
        if (fs::is_symlink(st)) what += fs::read_symlink(e.path()).string();
        else if (fs::is_regular_file(st)) what += Bytes(e.path());
        // Lexically: a loop of links has no canonical form.
        tree[e.path().lexically_relative(folder).string()] = what;
    }
    return tree;
}

}  // namespace velmora::testing
