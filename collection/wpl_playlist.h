#pragma once
// .wpl play lists as this program writes them: SMIL in UTF-8, one <media>
// per entry with its length as SMIL's dur and its attributes as <param>
// children, which players that know nothing of them pass over.

#include <string>
#include <string_view>
#include <vector>

#include "core/playlist_reader.h"

namespace velmora {

std::string Write_Wpl(const std::string& title, const std::vector<PlaylistEntry>& entries);

// Text made safe for an XML attribute or element: the five special
// characters as entities, and the control characters XML 1.0 forbids left out.
std::string Xml_Escaped(std::string_view text);

}  // namespace velmora
