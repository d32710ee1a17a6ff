#pragma once
// Whole writes and whole copies between file descriptors, however many
// calls they take and whatever signal interrupts them.

#include <cstddef>

namespace velmora {

// The whole buffer written; false when a write fails.
bool Write_All(int fd, const char* data, size_t n);

// Everything from in's offset to its end appended at out's offset: by the
// kernel without a trip through our memory where it can (sharing the blocks
// where the file system allows it), else through a buffer. A source that
// grows or shrinks meanwhile is copied as far as it reaches.
bool Copy_Contents(int in, int out);

}  // namespace velmora
