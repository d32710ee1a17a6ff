#pragma once
// Tables the program builds once at start.

#include <array>
#include <string>

namespace velmora {

// The genre captions of the genre box; their numbers slip at 32 to 34 and
// are kept as they stand, since stored tags were written against them.
const std::array<std::string, 128>& Genre_Captions();
// The extensions that count as media, duplicates included.
const std::array<std::string, 32>& Media_Extension_Table();
// The three internet search addresses, each ending in its query key.
const std::array<std::string, 3>& Search_Address_Table();

}  // namespace velmora
