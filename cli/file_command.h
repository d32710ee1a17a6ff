#pragma once
// velmora-cli copy, move and delete: the Files menu's batches on a class of
// a Collection, headless, asking nothing, printing the log's lines.

namespace velmora::cli {

// argv after the command's name:
//   copy|move FILE.qel DEST (--class C | --all) [--point]
//   delete FILE.qel --class X [--trash]
// mode 0 copy, 1 move, 2 delete. Returns the exit code: 1 when a file
// failed or the Collection could not be read or saved.
int File_Command(int mode, int argc, char** argv);

}  // namespace velmora::cli
