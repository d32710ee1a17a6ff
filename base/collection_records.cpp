#include "base/collection_records.h"

#include <optional>

#include "base/codepage1253.h"

namespace velmora {

namespace {

// The main file's name less its extension, ".qel".
std::string Less_Extension(const std::string& s) { return s.size() > 4 ? s.substr(0, s.size() - 4) : std::string(); }

}  // namespace

SideFileNames Side_File_Names(const std::string& main_path, const std::string& program_folder) {
    SideFileNames n;
    const std::string stem = Less_Extension(main_path);
    n.files = stem + "_files.qqel";
    n.files_other = stem + "_Files.qqel";

    const size_t at = main_path.find(std::string(kCollectionsFolder) + "/");
    const std::string root = at == std::string::npos ? program_folder : main_path.substr(0, at);
    if (at == std::string::npos && program_folder.empty()) return n;
    const size_t slash = main_path.rfind('/');
    const std::string name = slash == std::string::npos ? main_path : main_path.substr(slash + 1);
    const std::string stem_there = root + kFiltersFolder + "/" + Less_Extension(name);
    n.filters = stem_there + "_filters.qqel";
    n.filters_other = stem_there + "_Filters.qqel";
    return n;
}

bool Storable_Track_Path(std::string_view utf8) {
    const std::optional<std::string> bytes = Utf8ToCp1253(utf8);
    return bytes && bytes->size() <= static_cast<size_t>(kFilesTextBytes);
}

std::string Backup_Path(const std::string& file) { return file + ".backup"; }

}  // namespace velmora
