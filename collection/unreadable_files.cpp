#include "collection/unreadable_files.h"

#include <sys/stat.h>

#include <cstdio>

namespace velmora {

namespace {

// Anything at all by that name, a dangling link too.
bool Taken(const std::string& path) {
    struct stat st {};
    return ::lstat(path.c_str(), &st) == 0;
}

}  // namespace

std::string Unreadable_Suffix(const LocalTime& now) {
    char text[40];
    std::snprintf(text, sizeof text, ".unreadable-%04d%02d%02d-%02d%02d", now.year, now.month, now.day, now.hour,
                  now.minute);
    return text;
}

std::optional<std::vector<std::string>> Move_Aside_Unreadable(const CollectionPaths& paths, const LocalTime& now) {
    std::vector<std::string> files;
    for (const std::string* file : {&paths.main, &paths.files, &paths.files_other, &paths.filters,
                                    &paths.filters_other}) {
        // On a file system that folds case both spellings are one file.
        if (file->empty() || !File_Exists(*file)) continue;
        bool again = false;
        for (const std::string& seen : files) again = again || seen == *file;
        if (!again) files.push_back(*file);
    }

    const std::string base = Unreadable_Suffix(now);
    std::string suffix = base;
    for (int n = 2;; ++n) {
        bool free = true;
        for (const std::string& file : files) free = free && !Taken(file + suffix);
        if (free) break;
        suffix = base + "-" + std::to_string(n);
    }

    std::vector<std::string> moved;
    for (const std::string& file : files) {
        // Two spellings of one file under a folding file system: gone with the first.
        if (!File_Exists(file)) continue;
        if (std::rename(file.c_str(), (file + suffix).c_str()) != 0) return std::nullopt;
        moved.push_back(file + suffix);
    }
    if (!Sync_Folders_Of(paths)) return std::nullopt;
    return moved;
}

}  // namespace velmora
