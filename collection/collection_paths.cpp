#include "collection/collection_paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "base/fd_io.h"
#include "base/file_kind.h"
#include "core/app_context.h"

namespace velmora {

namespace {

std::string Folder_Of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return path.substr(0, slash);
}

std::string Pick(const std::string& writer, const std::string& other) {
    if (File_Exists(writer)) return writer;
    if (File_Exists(other)) return other;
    return writer;
}

bool Same_File(const std::string& a, const std::string& b) {
    struct stat sa {}, sb {};
    if (::stat(a.c_str(), &sa) != 0 || ::stat(b.c_str(), &sb) != 0) return false;
    return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

// The new copy of `path` is built under a temporary name beside the real
// file, its links followed, and renamed over it: the link stays a link. A
// target that is neither missing nor a regular file is left alone (-1).
// The temporary name is made anew, never opened through whatever stands
// there: a pipe left by that name would hold the save forever.
int Open_Temp_For(const std::string& path, std::string& target) {
    const FileTarget real = Resolve_File(path);
    if (real.kind != FileKind::Missing && real.kind != FileKind::Regular) return -1;
    target = real.path;
    const std::string temp = Temp_Path(target);
    ::unlink(temp.c_str());
    return ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

}  // namespace

std::string Default_Collection_Path(const std::string& app_path) {
    return app_path + kCollectionsFolder + "/" + kDefaultCollectionName;
}
std::string Default_Collection_Path(const AppContext& ctx) { return Default_Collection_Path(ctx.core.App_Path); }

std::string Pointer_File_Path(const std::string& app_path) {
    return app_path + kCollectionsFolder + "/" + kPointerFileName;
}
std::string Pointer_File_Path(const AppContext& ctx) { return Pointer_File_Path(ctx.core.App_Path); }

CollectionPaths Collection_Paths_Of(const std::string& main_path, const std::string& program_folder) {
    CollectionPaths p;
    static_cast<SideFileNames&>(p) = Side_File_Names(main_path, program_folder);
    p.main = main_path;
    return p;
}

CollectionPaths Collection_Paths_Of(const AppContext& ctx, const std::string& main_path) {
    return Collection_Paths_Of(main_path, ctx.core.App_Path);
}

ResolvedCollection Resolve_Collection(const CollectionPaths& logical) {
    ResolvedCollection r{logical, {}, FileKind::Missing};
    auto writable = [&r](std::string& path) {
        if (path.empty()) return;
        const FileTarget target = Resolve_File(path);
        if (target.kind == FileKind::Regular) {
            path = target.path;
        } else if (target.kind != FileKind::Missing && r.refused.empty()) {
            r.refused = path;
            r.refused_kind = target.kind;
        }
    };
    // The load's spelling counts only as a regular file, as it always has.
    // Where the writer's is missing and the load's is a link, the file it
    // leads to is the one to write: adopting the writer's name would move
    // the file out from under the link.
    auto side = [&](std::string& writer, std::string& other) {
        writable(writer);
        if (other.empty() || File_Exists(writer)) return;
        const FileTarget target = Resolve_File(other);
        if (target.kind == FileKind::Regular && target.path != other) writer = other = target.path;
    };
    writable(r.paths.main);
    side(r.paths.files, r.paths.files_other);
    side(r.paths.filters, r.paths.filters_other);
    return r;
}

std::string Temp_Path(const std::string& target) { return target + ".new"; }

std::string Commit_Marker_Path(const CollectionPaths& paths) { return paths.main + ".commit"; }

bool File_Exists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool Sync_Folder_Of(const std::string& path) {
    const int fd = ::open(Folder_Of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

bool Sync_Folders_Of(const CollectionPaths& p) {
    // A side file reached through a link may lie in a folder of its own.
    std::vector<std::string> folders;
    bool ok = true;
    for (const std::string* file : {&p.main, &p.files, &p.filters}) {
        if (file->empty()) continue;
        const std::string folder = Folder_Of(*file);
        if (std::find(folders.begin(), folders.end(), folder) != folders.end()) continue;
        folders.push_back(folder);
        ok = Sync_Folder_Of(*file) && ok;
    }
    return ok;
}

bool Replace_File(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    return Sync_Folder_Of(to);
}

bool Copy_File_Safely(const std::string& from, const std::string& to) {
    std::string error;
    const int in = Open_Regular(from, O_RDONLY, error);
    if (in < 0) return false;
    std::string target;
    const int out = Open_Temp_For(to, target);
    if (out < 0) {
        ::close(in);
        return false;
    }
    const std::string temp = Temp_Path(target);
    bool ok = Copy_Contents(in, out) && ::fsync(out) == 0;
    ::close(in);
    if (::close(out) != 0) ok = false;
    if (ok) ok = Replace_File(temp, target);
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

bool Write_File_Safely(const std::string& path, std::string_view bytes) {
    std::string target;
    const int out = Open_Temp_For(path, target);
    if (out < 0) return false;
    const std::string temp = Temp_Path(target);
    bool ok = Write_All(out, bytes.data(), bytes.size()) && ::fsync(out) == 0;
    if (::close(out) != 0) ok = false;
    if (ok) ok = Replace_File(temp, target);
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

FilesToRead Files_To_Read(const CollectionPaths& p) {
    FilesToRead r{p.main, Pick(p.files, p.files_other), Pick(p.filters, p.filters_other)};
    if (File_Exists(Commit_Marker_Path(p))) {
        // Committed: whatever is still under a temporary name is the newer file.
        if (File_Exists(Temp_Path(p.main))) r.main = Temp_Path(p.main);
        if (File_Exists(Temp_Path(p.files))) r.files = Temp_Path(p.files);
        if (!p.filters.empty() && File_Exists(Temp_Path(p.filters))) r.filters = Temp_Path(p.filters);
    }
    return r;
}

bool Settle_Interrupted_Save(const CollectionPaths& p) {
    const std::string marker = Commit_Marker_Path(p);
    const std::string targets[3] = {p.files, p.filters, p.main};
    bool ok = true;
    if (File_Exists(marker)) {
        for (const std::string& target : targets) {
            const std::string temp = Temp_Path(target);
            if (File_Exists(temp) && std::rename(temp.c_str(), target.c_str()) != 0) ok = false;
        }
        ok = Sync_Folders_Of(p) && ok;
        if (!ok) return false;
        Drop_Other_Spelling(p.files, p.files_other);
        Drop_Other_Spelling(p.filters, p.filters_other);
        if (::unlink(marker.c_str()) != 0) return false;
        return Sync_Folder_Of(marker);
    }
    for (const std::string& target : targets) {
        const std::string temp = Temp_Path(target);
        if (File_Exists(temp) && ::unlink(temp.c_str()) != 0) ok = false;
    }
    return ok;
}

bool Adopt_Writer_Spelling(const std::string& writer_path, const std::string& other_path) {
    if (File_Exists(writer_path) || !File_Exists(other_path)) return true;
    return Replace_File(other_path, writer_path);
}

void Drop_Other_Spelling(const std::string& writer_path, const std::string& other_path) {
    if (!File_Exists(other_path) || !File_Exists(writer_path) || Same_File(writer_path, other_path)) return;
    ::unlink(other_path.c_str());
}

}  // namespace velmora
