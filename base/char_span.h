#pragma once
// Lengths and parts of UTF-8 text counted in characters, not bytes: the
// captions cut paths and list rows by character positions, and a Greek
// letter takes two bytes in memory.

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

inline bool Is_Continuation(unsigned char c) { return (c & 0xC0) == 0x80; }

inline int Char_Count(std::string_view s) {
    int n = 0;
    for (unsigned char c : s)
        if (!Is_Continuation(c)) ++n;
    return n;
}

// Byte offset of character `index` (0-based); the size when past the end.
inline size_t Char_Offset(std::string_view s, int index) {
    size_t i = 0;
    for (int seen = 0; i < s.size(); ++i) {
        if (!Is_Continuation(static_cast<unsigned char>(s[i]))) {
            if (seen == index) return i;
            ++seen;
        }
    }
    return s.size();
}

// Characters from position `start` (1-based), at most `length` of them; all
// the rest with a negative length.
inline std::string Char_Mid(std::string_view s, int start, int length = -1) {
    if (start < 1) start = 1;
    const size_t from = Char_Offset(s, start - 1);
    if (length < 0) return std::string(s.substr(from));
    const size_t to = Char_Offset(s, start - 1 + length);
    return std::string(s.substr(from, to - from));
}

inline std::string Char_Left(std::string_view s, int length) { return Char_Mid(s, 1, length < 0 ? 0 : length); }

inline std::string Char_Right(std::string_view s, int length) {
    const int n = Char_Count(s);
    if (length >= n) return std::string(s);
    return Char_Mid(s, n - length + 1);
}

}  // namespace velmora
