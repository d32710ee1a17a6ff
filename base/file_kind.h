#pragma once
// What a path names, with its symbolic links followed to the end, and a way
// to open a file that never waits on a pipe or a device.
//
// The program's own files (a Collection, the pointer, the preferences, the
// report) are regular files. A folder, a named pipe, a device or a link that
// leads nowhere in their place is not the user's data to replace: opening a
// pipe for reading waits for a writer forever, and renaming a new file over
// a link turns the link into a copy and leaves its target stale.

#include <string>

namespace velmora {

enum class FileKind {
    Missing,       // nothing by that name: a file may be created there
    Regular,
    Directory,
    Pipe,
    Device,
    Socket,
    DanglingLink,  // a symbolic link whose target does not exist
    LinkLoop,      // symbolic links that lead back to themselves
    Unreachable,   // a folder on the way is missing, not a folder, or closed to us
};

struct FileTarget {
    FileKind kind = FileKind::Missing;
    // For a regular file, the file itself with every symbolic link resolved,
    // so that a new copy renamed into place lands beside it; otherwise the
    // path as given.
    std::string path;
};

FileTarget Resolve_File(const std::string& path);

// "a folder", "a named pipe", ...: what stands there, in a sentence.
const char* Kind_Text(FileKind kind);

// Opens a file with the given open(2) flags (O_CREAT makes it with mode
// 0666) without waiting on a pipe or a device, and keeps it only when it is a
// regular file. -1 with `error` set otherwise.
int Open_Regular(const std::string& path, int flags, std::string& error);

}  // namespace velmora
