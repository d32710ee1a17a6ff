#pragma once
// velmora-cli ratings: every Track's class written into its file, or read
// from it into the Collection, without a window and asking nothing.

namespace velmora::cli {

// argv after "ratings": FILE.qel --to-files | --from-files. Returns the exit
// code: 1 also when a file could not be written.
int Ratings_Command(int argc, char** argv);

}  // namespace velmora::cli
