#pragma once
// velmora-cli export and import: a Collection written as a play list file,
// and a play list file read as a new Collection or added to one.

namespace velmora::cli {

// argv after the command's name: FILE.qel OUT.m3u8|OUT.wpl. Reads the
// Collection only. Returns the exit code.
int Export_Command(int argc, char** argv);
// argv after the command's name: FILE.qel PLAYLIST [--merge]. Without
// --merge the Collection is made from the list and must not exist yet.
int Import_Command(int argc, char** argv);

}  // namespace velmora::cli
