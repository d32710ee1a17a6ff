#include "fileops/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "base/write_all.h"

namespace velmora {

namespace {

std::string Folder_Part(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool Copy_Bytes(int in, int out, off_t size) {
    // The kernel copies without a trip through our memory where it can, and
    // shares the blocks where the file system allows it.
    off_t done = 0;
    while (done < size) {
        const ssize_t n = ::copy_file_range(in, nullptr, out, nullptr, static_cast<size_t>(size - done), 0);
        if (n > 0) {
            done += n;
            continue;
        }
        if (n == 0) break;  // the source shrank under us: what is left is copied below
        if (errno == EINTR) continue;
        if (errno != EXDEV && errno != ENOSYS && errno != EOPNOTSUPP && errno != EINVAL) return false;
        break;
    }
    // All the size said is copied: no buffer is made and filled for nothing.
    if (done >= size) return true;
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
    bool ok = Copy_Bytes(in, out, st.st_size);
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
