#include "fileops/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
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

// A file system without unnamed files (or a /proc to name them through)
// says so once; the copies then go through a hidden name from the start.
std::atomic<bool> g_unnamed_refused{false};

// A hidden name in the folder that nothing holds yet, for link(2).
bool Link_Hidden(const std::string& proc, const std::string& folder, std::string& hidden) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        hidden = folder + "/.velmora-copy-" + std::to_string(::getpid()) + "-" + std::to_string(++counter);
        if (::linkat(AT_FDCWD, proc.c_str(), AT_FDCWD, hidden.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
        if (errno != EEXIST) return false;
    }
    return false;
}

enum class Named { Yes, No, Unsupported };

// Gives the unnamed file `out` the name `to`: a name that nothing holds is
// taken in one step; one that a file holds is replaced by rename(2) from a
// hidden name, so that the old file stays whole until the new one is.
Named Name_Unnamed(int out, const std::string& to, std::string& why) {
    char proc[48];
    std::snprintf(proc, sizeof proc, "/proc/self/fd/%d", out);
    if (::linkat(AT_FDCWD, proc, AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0) return Named::Yes;
    if (errno == ENOENT && ::access("/proc/self/fd", F_OK) != 0) return Named::Unsupported;
    if (errno != EEXIST) {
        why = Errno_Text("link");
        return Named::No;
    }
    std::string hidden;
    if (!Link_Hidden(proc, Folder_Part(to), hidden)) {
        why = Errno_Text("link");
        return Named::No;
    }
    if (std::rename(hidden.c_str(), to.c_str()) != 0) {
        why = Errno_Text("rename");
        ::unlink(hidden.c_str());
        return Named::No;
    }
    return Named::Yes;
}

// The bytes, permissions and times of `in` into `out`; with `sync` on the disk.
bool Fill(int in, int out, const struct stat& st, bool sync, std::string& why) {
    if (!Copy_Contents(in, out)) {
        why = Errno_Text("write");
        return false;
    }
    if (::fchmod(out, st.st_mode & 07777) != 0) {
        why = Errno_Text("permissions");
        return false;
    }
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    ::futimens(out, times);  // a copy with today's time is still a whole copy
    // The bytes reach the disk before the name does, so that a crash never
    // leaves an empty file under the destination's name.
    if (sync && ::fsync(out) != 0) {
        why = Errno_Text("sync");
        return false;
    }
    return true;
}

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
    const std::string folder = Folder_Part(to);
    // An unnamed file has no name to leave behind, whatever stops the copy,
    // and takes its name in one step where none stands.
    if (!g_unnamed_refused) {
        const int out = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
        if (out >= 0) {
            Named named = Fill(in, out, st, sync, why) ? Name_Unnamed(out, to, why) : Named::No;
            ::close(out);
            if (named != Named::Unsupported) {
                ::close(in);
                return named == Named::Yes;
            }
            g_unnamed_refused = true;
            ::lseek(in, 0, SEEK_SET);
        } else if (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL) {
            g_unnamed_refused = true;
        } else {
            why = Errno_Text("create in the destination folder");
            ::close(in);
            return false;
        }
    }
    std::string temp = folder + "/.velmora-copy-XXXXXX";
    const int out = ::mkostemp(temp.data(), O_CLOEXEC);
    if (out < 0) {
        why = Errno_Text("create in the destination folder");
        ::close(in);
        return false;
    }
    bool ok = Fill(in, out, st, sync, why);
    ::close(in);
    if (::close(out) != 0 && ok) ok = false, why = Errno_Text("close");
    if (ok && std::rename(temp.c_str(), to.c_str()) != 0) ok = false, why = Errno_Text("rename");
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

bool Rename_File(const std::string& from, const std::string& to) { return std::rename(from.c_str(), to.c_str()) == 0; }

FolderSync::FolderSync(const std::string& folder)
    : m_fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

FolderSync::~FolderSync() {
    if (m_fd >= 0) ::close(m_fd);
}

bool FolderSync::Sync() { return m_fd >= 0 && ::syncfs(m_fd) == 0; }

}  // namespace velmora
