#include "base/file_kind.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace velmora {

namespace {

FileKind Kind_Of(mode_t mode) {
    if (S_ISREG(mode)) return FileKind::Regular;
    if (S_ISDIR(mode)) return FileKind::Directory;
    if (S_ISFIFO(mode)) return FileKind::Pipe;
    if (S_ISSOCK(mode)) return FileKind::Socket;
    return FileKind::Device;
}

FileKind Kind_Of_Error(int error) {
    if (error == ENOENT) return FileKind::Missing;
    if (error == ELOOP) return FileKind::LinkLoop;
    return FileKind::Unreachable;
}

}  // namespace

FileTarget Resolve_File(const std::string& path) {
    struct stat st {};
    if (::lstat(path.c_str(), &st) != 0) return {Kind_Of_Error(errno), path};
    if (!S_ISLNK(st.st_mode)) return {Kind_Of(st.st_mode), path};

    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    if (!real) {
        const int error = errno;
        return {error == ENOENT ? FileKind::DanglingLink : Kind_Of_Error(error), path};
    }
    if (::stat(real.get(), &st) != 0) return {Kind_Of_Error(errno), path};
    const FileKind kind = Kind_Of(st.st_mode);
    return {kind, kind == FileKind::Regular ? std::string(real.get()) : path};
}

const char* Kind_Text(FileKind kind) {
    switch (kind) {
        case FileKind::Missing: return "missing";
        case FileKind::Regular: return "a regular file";
        case FileKind::Directory: return "a folder";
        case FileKind::Pipe: return "a named pipe";
        case FileKind::Device: return "a device";
        case FileKind::Socket: return "a socket";
        case FileKind::DanglingLink: return "a link to a file that does not exist";
        case FileKind::LinkLoop: return "a loop of links";
        case FileKind::Unreachable: return "out of reach";
    }
    return "not a regular file";
}

int Open_Regular(const std::string& path, int flags, std::string& error) {
    // Without O_NONBLOCK, opening a named pipe waits for its other end.
    const int fd = ::open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
    if (fd < 0) {
        const int code = errno;
        // "No such file" says little of a link that leads nowhere.
        const FileKind kind = Resolve_File(path).kind;
        const bool link = kind == FileKind::DanglingLink || kind == FileKind::LinkLoop;
        error = path + ": " + (link ? Kind_Text(kind) : std::strerror(code));
        return -1;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        error = path + ": " + std::strerror(errno);
        ::close(fd);
        return -1;
    }
    if (!S_ISREG(st.st_mode)) {
        error = path + ": " + Kind_Text(Kind_Of(st.st_mode)) + ", not a regular file";
        ::close(fd);
        return -1;
    }
    // A regular file ignores the flag, but whoever gets the descriptor
    // should find it as open(2) would give it.
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return fd;
}

}  // namespace velmora
