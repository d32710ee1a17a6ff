#include "base/fd_io.h"

#include <unistd.h>

#include <cerrno>
#include <vector>

namespace velmora {

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

}  // namespace velmora
