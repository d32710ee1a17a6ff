#pragma once
// velmora-cli tag: one Track's tags written into its file and its row,
// without a window and asking nothing.

namespace velmora::cli {

// argv after "tag": FILE.qel TRACK [--title T] [--artist T] [--album T]
// [--year N] [--comment T] [--genre T]; TRACK numbered from 1 as `search`
// prints it. A tag not given keeps what the file holds. Returns the exit code.
int Tag_Command(int argc, char** argv);

}  // namespace velmora::cli
