#pragma once
// What a playlist file holds, and the port that reads the XML kind (.wpl):
// the toolkit's XML reader does that, outside the model.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

// One entry as the file gives it: where the media is, as written (a path,
// relative or not, or a URL), how long it plays when the list says so, and
// the attributes the list keeps with it ("Artist", "UserRating", ...).
struct PlaylistEntry {
    std::string source;
    double duration = 0;  // seconds; 0 when the list does not say
    std::vector<std::pair<std::string, std::string>> info;

    // The attribute's value, or empty text.
    std::string getItemInfo(std::string_view name) const {
        for (const auto& [key, value] : info)
            if (key == name) return value;
        return {};
    }
};

struct PlaylistContents {
    std::string title;  // the list's own name; empty when it has none
    std::vector<PlaylistEntry> entries;
};

class PlaylistXmlReader {
public:
    virtual ~PlaylistXmlReader() = default;
    // The entries of a SMIL play list (.wpl, and the ASX kind .wvx). False
    // when the bytes are not such a list; `out` then holds what came before
    // the fault.
    virtual bool Read(std::string_view bytes, PlaylistContents& out) = 0;
};

}  // namespace velmora
