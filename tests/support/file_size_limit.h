#pragma once
// A full disk as a test can have one anywhere: while the guard lives, every
// write of this process and of the programs it starts fails with EFBIG once
// a file would grow beyond `bytes`, instead of the signal that would kill the
// writer. Both come back as they were when the guard goes.

#include <sys/resource.h>

#include <csignal>

namespace velmora::testing {

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        m_ok = ::getrlimit(RLIMIT_FSIZE, &m_old) == 0;
        struct rlimit small = m_old;
        small.rlim_cur = bytes;
        m_ok = m_ok && ::setrlimit(RLIMIT_FSIZE, &small) == 0;
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    // False when the limit could not be set: the test cannot stand.
    bool Set() const { return m_ok; }

private:
    struct rlimit m_old {};
    void (*m_handler)(int) = SIG_DFL;
    bool m_ok = false;
};

}  // namespace velmora::testing
