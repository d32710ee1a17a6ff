#pragma once
// Reading the pointer file that names the Collection of the last run: two
// lines, the Collection's path, then seven statistics.

#include <array>
#include <cstdint>
#include <string>

namespace velmora {

// False when there is no regular file to read (a pipe is never waited on). `collection_path` gets the first
// field (empty when there is none); each statistic the next number, in
// order, for as many numbers as the file holds; the rest keep their values.
// Both lines are read as comma-separated input, so a comma cuts the path.
bool Read_Pointer_File(const std::string& file, std::string& collection_path,
                       const std::array<int32_t*, 7>& statistics);

}  // namespace velmora
