#pragma once
// velmora-cli filter and search: the catalogue of a Collection in the
// terminal, read without changing anything.

namespace velmora::cli {

// filter FILE.qel [--class S|A|B|C|X|-] [--genre T] [--album T] [--artist T]
// [--year T] [--title T] [--duration T] [--size T] [--bitrate T]: the rows
// of the list that counts, head rows included, one a line. The exit code is
// 0, 1 when the Collection could not be read whole, 2 for a wrong call.
int Filter_Command(int argc, char** argv);
// search FILE.qel TEXT: the Track number and path of every row holding TEXT.
int Search_Command(int argc, char** argv);

}  // namespace velmora::cli
