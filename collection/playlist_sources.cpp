#include "collection/playlist_sources.h"

#include <cctype>
#include <vector>

#include "collection/m3u_playlist.h"

namespace velmora {

namespace {

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// "scheme://" at the start: a letter, then letters, digits, '+', '-', '.'.
size_t Scheme_Length(std::string_view s) {
    if (s.empty() || !std::isalpha(static_cast<unsigned char>(s[0]))) return 0;
    size_t i = 1;
    while (i < s.size() && (std::isalnum(static_cast<unsigned char>(s[i])) || s[i] == '+' || s[i] == '-' ||
                            s[i] == '.'))
        ++i;
    return s.substr(i, 3) == "://" ? i : 0;
}

bool Equal_Case_Aside(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

std::string_view Trimmed(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
    return s;
}

}  // namespace

std::string Percent_Decoded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && Hex(text[i + 1]) >= 0 && Hex(text[i + 2]) >= 0) {
            out += static_cast<char>(Hex(text[i + 1]) * 16 + Hex(text[i + 2]));
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string File_Url(std::string_view path) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out = "file://";
    for (const char c : path) {
        const auto u = static_cast<unsigned char>(c);
        if (std::isalnum(u) || c == '/' || c == '-' || c == '_' || c == '.' || c == '~') {
            out += c;
        } else {
            out += '%';
            out += kHex[u >> 4];
            out += kHex[u & 15];
        }
    }
    return out;
}

std::string Lexically_Normal(std::string_view path) {
    const bool absolute = !path.empty() && path.front() == '/';
    std::vector<std::string_view> parts;
    size_t start = 0;
    while (start <= path.size()) {
        const size_t end = std::min(path.find('/', start), path.size());
        const std::string_view part = path.substr(start, end - start);
        if (part == "..") {
            if (!parts.empty() && parts.back() != "..")
                parts.pop_back();
            else if (!absolute)
                parts.push_back(part);  // above the start of a relative path: kept
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    std::string out = absolute ? "/" : "";
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i > 0) out += '/';
        out += parts[i];
    }
    return out;
}

std::string Resolve_Source(std::string_view source, const std::string& folder) {
    const std::string_view s = Trimmed(source);
    if (s.empty()) return {};
    if (const size_t scheme = Scheme_Length(s); scheme > 0) {
        if (!Equal_Case_Aside(s.substr(0, scheme), "file")) return std::string(s);  // a stream: played as it is
        // file://host/path: the host is this machine ("localhost" or none).
        std::string_view rest = s.substr(scheme + 3);
        const size_t slash = rest.find('/');
        if (slash == std::string_view::npos) return {};
        rest.remove_prefix(slash);
        // Escapes name bytes: old players escaped their own code page's.
        return Lexically_Normal(Text_As_Utf8(Percent_Decoded(rest)));
    }
    std::string path(s);
    for (char& c : path)
        if (c == '\\') c = '/';
    // A drive letter of another system names no file here; it is kept so
    // that the list's row still shows what it meant.
    if (path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0]))) return path;
    if (path.front() != '/') path = folder + path;
    return Lexically_Normal(path);
}

}  // namespace velmora
