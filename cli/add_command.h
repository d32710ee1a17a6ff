#pragma once
// velmora-cli add: takes the media files of one or more folders into a
// Collection, headless, as the search page's add button does, answering the
// program's questions with their first button.

namespace velmora::cli {

// argv after "add": FILE.qel DIR... [--subdirs]. Returns the exit code.
int Add_Command(int argc, char** argv);

}  // namespace velmora::cli
