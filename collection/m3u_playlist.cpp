#include "collection/m3u_playlist.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "base/codepage1253.h"

namespace velmora {

namespace {

constexpr std::string_view kBom = "\xEF\xBB\xBF";
constexpr std::string_view kAttribute = "#VELMORA:";

bool Starts_With(std::string_view s, std::string_view head) { return s.substr(0, head.size()) == head; }

std::string Latin1ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | u >> 6);
            out += static_cast<char>(0x80 | (u & 0x3F));
        }
    }
    return out;
}

// Bytes code page 1253 leaves unassigned, but Latin-1 gives letters to.
bool Outside_Greek(unsigned char u) { return u == 0xAA || u == 0xD2 || u == 0xFF; }

// A line's text without the line ends and blanks that editors leave.
std::string_view Line_Text(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) line.remove_suffix(1);
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
    return line;
}

// "#EXTINF:123 key="a,b",Artist - Title": the seconds, and the title behind
// the first comma that stands outside quotes.
void Take_Extinf(std::string_view rest, double& seconds, std::string& title) {
    const std::string number(rest.substr(0, rest.find_first_of(" ,")));
    char* end = nullptr;
    const double value = std::strtod(number.c_str(), &end);
    seconds = end != number.c_str() && std::isfinite(value) && value > 0 ? value : 0;
    bool quoted = false;
    for (size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] == '"') quoted = !quoted;
        if (rest[i] == ',' && !quoted) {
            title = std::string(Line_Text(rest.substr(i + 1)));
            return;
        }
    }
    title.clear();
}

std::string One_Line(const std::string& text) {
    std::string out = text;
    for (char& c : out)
        if (c == '\n' || c == '\r') c = ' ';
    return out;
}

}  // namespace

bool Is_Utf8(std::string_view s) {
    size_t i = 0;
    while (i < s.size()) {
        const auto u = static_cast<unsigned char>(s[i]);
        size_t n = 0;
        uint32_t cp = 0;
        if (u < 0x80) {
            ++i;
            continue;
        } else if ((u & 0xE0) == 0xC0) {
            n = 1, cp = u & 0x1F;
        } else if ((u & 0xF0) == 0xE0) {
            n = 2, cp = u & 0x0F;
        } else if ((u & 0xF8) == 0xF0) {
            n = 3, cp = u & 0x07;
        } else {
            return false;
        }
        for (size_t k = 1; k <= n; ++k) {
            if (i + k >= s.size()) return false;
            const auto c = static_cast<unsigned char>(s[i + k]);
            if ((c & 0xC0) != 0x80) return false;
            cp = cp << 6 | (c & 0x3F);
        }
        // Overlong forms, surrogates and what lies beyond Unicode are no UTF-8.
        if ((n == 1 && cp < 0x80) || (n == 2 && cp < 0x800) || (n == 3 && cp < 0x10000) || cp > 0x10FFFF ||
            (cp >= 0xD800 && cp <= 0xDFFF))
            return false;
        i += n + 1;
    }
    return true;
}

ListEncoding Detect_Encoding(std::string_view bytes) {
    // A mark in front of bytes that are no UTF-8 is believed no more than
    // the bytes are: they are read by what they look like.
    if (Starts_With(bytes, kBom)) bytes.remove_prefix(kBom.size());
    if (Is_Utf8(bytes)) return ListEncoding::Utf8;
    int high = 0, in_words = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto u = static_cast<unsigned char>(bytes[i]);
        if (Outside_Greek(u)) return ListEncoding::Latin1;
        if (u < 0xC0) continue;
        ++high;
        const auto before = i > 0 ? static_cast<unsigned char>(bytes[i - 1]) : 0;
        const auto after = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        if (before >= 0xB8 || after >= 0xB8) ++in_words;
    }
    return high > 0 && 2 * in_words >= high ? ListEncoding::Cp1253 : ListEncoding::Latin1;
}

std::string Text_As_Utf8(std::string_view bytes) {
    const ListEncoding encoding = Detect_Encoding(bytes);
    if (Starts_With(bytes, kBom)) bytes.remove_prefix(kBom.size());
    switch (encoding) {
        case ListEncoding::Cp1253: return Cp1253ToUtf8(bytes);
        case ListEncoding::Latin1: return Latin1ToUtf8(bytes);
        case ListEncoding::Utf8: break;
    }
    return std::string(bytes);
}

PlaylistContents Parse_M3u(std::string_view bytes) {
    const std::string text = Text_As_Utf8(bytes);

    PlaylistContents list;
    PlaylistEntry next;
    std::string title;
    std::string_view rest = text;
    while (!rest.empty()) {
        // Lines end in LF, CRLF, or CR alone as the old Macintosh wrote them.
        const size_t end = rest.find_first_of("\r\n");
        const std::string_view line = Line_Text(rest.substr(0, end));
        const size_t after = end == std::string_view::npos ? rest.size()
                             : rest.substr(end, 2) == "\r\n"    ? end + 2
                                                                 : end + 1;
        rest.remove_prefix(after);
        if (line.empty()) continue;
        if (line.front() != '#') {
            // Artist and title of #EXTINF, unless the list named them apart.
            if (!title.empty()) {
                const size_t dash = title.find(" - ");
                const bool split = dash != std::string::npos;
                if (split && next.getItemInfo("Artist").empty())
                    next.info.emplace_back("Artist", title.substr(0, dash));
                if (next.getItemInfo("Title").empty())
                    next.info.emplace_back("Title", split ? title.substr(dash + 3) : title);
            }
            next.source = std::string(line);
            list.entries.push_back(std::move(next));
            next = PlaylistEntry{};
            title.clear();
        } else if (Starts_With(line, "#EXTINF:")) {
            Take_Extinf(line.substr(8), next.duration, title);
        } else if (Starts_With(line, "#EXTALB:")) {
            next.info.emplace_back("Album", std::string(Line_Text(line.substr(8))));
        } else if (Starts_With(line, "#EXTGENRE:")) {
            next.info.emplace_back("Genre", std::string(Line_Text(line.substr(10))));
        } else if (Starts_With(line, kAttribute)) {
            const std::string_view pair = line.substr(kAttribute.size());
            const size_t eq = pair.find('=');
            if (eq != std::string_view::npos && eq > 0) {
                const std::string name(pair.substr(0, eq));
                // The named line stands over what #EXTALB or #EXTGENRE said.
                std::erase_if(next.info, [&](const auto& kv) { return kv.first == name; });
                next.info.emplace_back(name, std::string(pair.substr(eq + 1)));
            }
        }
    }
    return list;
}

std::string Write_M3u8(const std::vector<PlaylistEntry>& entries) {
    std::string out = "#EXTM3U\n";
    for (const PlaylistEntry& e : entries) {
        const std::string artist = e.getItemInfo("Artist"), title = e.getItemInfo("Title");
        // With no names the title stays empty, and a player shows the file's
        // name: a name put there would come back as the Track's title.
        const std::string shown =
            !artist.empty() && !title.empty() ? artist + " - " + title : !title.empty() ? title : artist;
        const long seconds = e.duration > 0 ? std::lround(e.duration) : -1;
        out += "#EXTINF:" + std::to_string(seconds) + "," + One_Line(shown) + "\n";
        if (const std::string album = e.getItemInfo("Album"); !album.empty()) out += "#EXTALB:" + One_Line(album) + "\n";
        if (const std::string genre = e.getItemInfo("Genre"); !genre.empty())
            out += "#EXTGENRE:" + One_Line(genre) + "\n";
        for (const auto& [name, value] : e.info) out += std::string(kAttribute) + name + "=" + One_Line(value) + "\n";
        out += One_Line(e.source) + "\n";
    }
    return out;
}

}  // namespace velmora
