#pragma once
// Writing a whole buffer to a file descriptor, however many writes it takes.

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace velmora {

// False when a write fails for another reason than an interrupting signal.
inline bool Write_All(int fd, const char* data, size_t n) {
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

}  // namespace velmora
