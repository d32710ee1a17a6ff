#include "fileops/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/fd_io.h"

namespace velmora {

namespace {

std::string Folder_Part(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string Errno_Text(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

}  // namespace

bool Copy_File_Whole(const std::string& from, const std::string& to, std::string& why, bool sync) {
    const int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0) {
        why = Errno_Text("open source");
        return false;
    }
    struct stat st {};
    if (::fstat(in, &st) != 0 || !S_ISREG(st.st_mode)) {
        why = "the source is not a regular file";
        ::close(in);
        return false;
    }
    std::string temp = Folder_Part(to) + "/.velmora-copy-XXXXXX";
    const int out = ::mkostemp(temp.data(), O_CLOEXEC);
    if (out < 0) {
        why = Errno_Text("create in the destination folder");
        ::close(in);
        return false;
    }
    bool ok = Copy_Contents(in, out);
    if (!ok) why = Errno_Text("write");
    if (ok && ::fchmod(out, st.st_mode & 07777) != 0) ok = false, why = Errno_Text("permissions");
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    if (ok) ::futimens(out, times);  // a copy with today's time is still a whole copy
    // The bytes reach the disk before the name does, so that a crash never
    // leaves an empty file under the destination's name.
    if (ok && sync && ::fsync(out) != 0) ok = false, why = Errno_Text("sync");
    ::close(in);
    if (::close(out) != 0 && ok) ok = false, why = Errno_Text("close");
    if (ok && std::rename(temp.c_str(), to.c_str()) != 0) ok = false, why = Errno_Text("rename");
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

bool Rename_File(const std::string& from, const std::string& to) { return std::rename(from.c_str(), to.c_str()) == 0; }

void Sync_Folder(const std::string& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::syncfs(fd);
    ::close(fd);
}

}  // namespace velmora
