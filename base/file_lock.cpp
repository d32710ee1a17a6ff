#include "base/file_lock.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string_view>

namespace velmora {

namespace {

// Tries before giving up when the lock file keeps being replaced under us.
constexpr int kAttempts = 8;

bool Same_File(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

// The file still stands at its path: a holder that let go has removed it, and
// a lock on the removed file guards nothing.
bool Still_There(int fd, const std::string& path) {
    struct stat by_fd {}, by_path {};
    return ::fstat(fd, &by_fd) == 0 && ::stat(path.c_str(), &by_path) == 0 && Same_File(by_fd, by_path);
}

// "4242 velmora-cli" as the holder wrote it, said as "velmora-cli (pid 4242)".
std::string Holder_Of(int fd) {
    char bytes[256];
    const ssize_t n = ::pread(fd, bytes, sizeof bytes - 1, 0);
    std::string_view text(bytes, n > 0 ? static_cast<size_t>(n) : 0);
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.remove_suffix(1);
    if (text.empty()) return "another program";
    const size_t blank = text.find(' ');
    const std::string_view pid = text.substr(0, blank);
    if (blank == std::string_view::npos || pid.find_first_not_of("0123456789") != std::string_view::npos)
        return std::string(text);
    return std::string(text.substr(blank + 1)) + " (pid " + std::string(pid) + ")";
}

}  // namespace

FileLock::~FileLock() { Release(); }

FileLock::Outcome FileLock::Acquire(const std::string& path) {
    if (m_fd >= 0 && path == m_path) return Outcome::Held;
    Release();
    m_holder.clear();
    m_error.clear();
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        // Never through a link, never waiting on a pipe: the file is ours to
        // write the holder into.
        const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
        if (fd < 0) {
            m_error = path + ": " + std::strerror(errno);
            return Outcome::Failed;
        }
        struct stat st {};
        if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
            m_error = path + ": not a regular file";
            ::close(fd);
            return Outcome::Failed;
        }
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
            const int error = errno;
            if (error == EWOULDBLOCK) m_holder = Holder_Of(fd);
            else m_error = path + ": " + std::strerror(error);
            ::close(fd);
            return error == EWOULDBLOCK ? Outcome::Busy : Outcome::Failed;
        }
        if (!Still_There(fd, path)) {
            ::close(fd);
            continue;
        }
        // A holder that cannot be written leaves the lock held all the same,
        // its holder unnamed.
        const std::string holder = std::to_string(::getpid()) + " " + program_invocation_short_name + "\n";
        [[maybe_unused]] const bool named =
            ::ftruncate(fd, 0) == 0 && ::pwrite(fd, holder.data(), holder.size(), 0) == static_cast<ssize_t>(holder.size());
        m_fd = fd;
        m_path = path;
        return Outcome::Held;
    }
    m_error = path + ": replaced again and again while being locked";
    return Outcome::Failed;
}

void FileLock::Release() {
    if (m_fd < 0) return;
    // Removed while still held, so that nobody locks a file on its way out;
    // and only when it is still ours, not one made anew after a removal by hand.
    if (Still_There(m_fd, m_path)) ::unlink(m_path.c_str());
    ::close(m_fd);
    m_fd = -1;
    m_path.clear();
}

}  // namespace velmora
