#pragma once
// Copying, moving and deleting one file at a time. Each step writes its line
// at the head of the log Text2(0); none shows a box, and the caller keeps
// the score from `error`.

#include <string>

namespace velmora {

struct AppContext;

constexpr int kFileCopy = 0;
constexpr int kFileMove = 1;
constexpr int kFileDelete = 2;

// mode 0 copies source to destination, 1 moves it, 2 deletes source.
// `error` is 0 after success and non-zero after failure; a step that does
// not run leaves it as the caller set it. A move copies first and deletes
// the source whether or not the copy worked: a move into a folder that is
// not there loses the file. Users have long relied on move and delete
// counting the same way, so this stays; the copy's failure is in the log.
// A move within one file system is a rename, which cannot fail half-way.
void Copy_Move_Delete_File(AppContext& ctx, const std::string& source, const std::string& destination, int mode,
                           int& error);

// Deletes the file, or sends it to the trash when Recycle_Deleted is on. The
// file that plays is let go by the engine first. A Collection's main file
// takes its side files and their backups with it.
void Delete_File_And_Side_Files(AppContext& ctx, const std::string& path, int& error);

// The desktop's trash, which keeps what the file manager needs to restore
// the file. The result is not looked at: the trash is the user's own to check.
void Recycle_File(AppContext& ctx, const std::string& path);

}  // namespace velmora
