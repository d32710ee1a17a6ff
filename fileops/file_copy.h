#pragma once
// One file's bytes copied whole, or not at all under the destination's name.

#include <string>

namespace velmora {

// Copies `from` to `to`, replacing what stands there. The bytes go to a new
// hidden file in the destination's folder and only when all are written take
// the destination's name: an interrupted or failed copy (a full disk, a
// folder closed to us, a kill) leaves nothing under that name, and whatever
// stood there before stays whole. With `sync` the bytes reach the disk
// before the name does, as they must when the source is deleted next; a
// batch of plain copies leaves that to one FolderSync at its end. The copy
// keeps the source's permission bits and modification time. False when it
// failed; `why` then says what went wrong.
bool Copy_File_Whole(const std::string& from, const std::string& to, std::string& why, bool sync = true);

// The file system that holds a folder, watched from the moment this is
// made. Sync hands everything written there to the disk at once, one commit
// for a whole batch of copies instead of one each. The kernel tells a
// descriptor only of the failed writes that came after it was opened, so
// this is made before the first copy: writes the disk refused in the
// background meanwhile then still show.
class FolderSync {
public:
    explicit FolderSync(const std::string& folder);
    ~FolderSync();
    FolderSync(const FolderSync&) = delete;
    FolderSync& operator=(const FolderSync&) = delete;
    // False when the folder could not be opened or a write failed since.
    bool Sync();

private:
    int m_fd;
};

// rename(2) of `from` onto `to`, when both lie on one file system.
bool Rename_File(const std::string& from, const std::string& to);

}  // namespace velmora
