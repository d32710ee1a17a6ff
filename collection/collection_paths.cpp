#include "collection/collection_paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <vector>

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

bool Write_All(int fd, const char* data, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, data, n);
        if (w < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data += w;
        n -= static_cast<size_t>(w);
    }
    return true;
}

bool Copy_Contents(int in, int out) {
    // The kernel copies without a trip through our memory where it can.
    for (;;) {
        const ssize_t n = ::copy_file_range(in, nullptr, out, nullptr, size_t{1} << 30, 0);
        if (n == 0) return true;
        if (n > 0) continue;
        if (errno == EINTR) continue;
        if (errno != EXDEV && errno != ENOSYS && errno != EOPNOTSUPP && errno != EINVAL) return false;
        break;
    }
    std::vector<char> buffer(size_t{1} << 20);
    for (;;) {
        const ssize_t n = ::read(in, buffer.data(), buffer.size());
        if (n == 0) return true;
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (!Write_All(out, buffer.data(), static_cast<size_t>(n))) return false;
    }
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

bool Replace_File(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    return Sync_Folder_Of(to);
}

bool Copy_File_Safely(const std::string& from, const std::string& to) {
    const int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0) return false;
    const std::string temp = Temp_Path(to);
    const int out = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (out < 0) {
        ::close(in);
        return false;
    }
    bool ok = Copy_Contents(in, out) && ::fsync(out) == 0;
    ::close(in);
    if (::close(out) != 0) ok = false;
    if (ok) ok = Replace_File(temp, to);
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

bool Write_File_Safely(const std::string& path, std::string_view bytes) {
    const std::string temp = Temp_Path(path);
    const int out = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (out < 0) return false;
    bool ok = Write_All(out, bytes.data(), bytes.size()) && ::fsync(out) == 0;
    if (::close(out) != 0) ok = false;
    if (ok) ok = Replace_File(temp, path);
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
        ok = Sync_Folder_Of(p.main) && Sync_Folder_Of(p.filters) && ok;
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
