#include "collection/wpl_playlist.h"

#include <cmath>

namespace velmora {

std::string Xml_Escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&apos;"; break;
            default:
                if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r') out += c;
        }
    }
    return out;
}

std::string Write_Wpl(const std::string& title, const std::vector<PlaylistEntry>& entries) {
    std::string out = "<?wpl version=\"1.0\"?>\n<smil>\n    <head>\n";
    out += "        <meta name=\"Generator\" content=\"Velmora II\"/>\n";
    out += "        <meta name=\"ItemCount\" content=\"" + std::to_string(entries.size()) + "\"/>\n";
    out += "        <title>" + Xml_Escaped(title) + "</title>\n    </head>\n    <body>\n        <seq>\n";
    for (const PlaylistEntry& e : entries) {
        out += "            <media src=\"" + Xml_Escaped(e.source) + "\"";
        if (e.duration > 0) out += " dur=\"" + std::to_string(std::lround(e.duration)) + "s\"";
        if (e.info.empty()) {
            out += "/>\n";
            continue;
        }
        out += ">\n";
        for (const auto& [name, value] : e.info)
            out += "                <param name=\"" + Xml_Escaped(name) + "\" value=\"" + Xml_Escaped(value) + "\"/>\n";
        out += "            </media>\n";
    }
    out += "        </seq>\n    </body>\n</smil>\n";
    return out;
}

}  // namespace velmora
