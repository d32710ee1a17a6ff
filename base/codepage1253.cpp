#include "base/codepage1253.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmora {

namespace {

constexpr char16_t kNone = 0xFFFD;

// Bytes 0x80 to 0xFF; below them the code page is ASCII. The unassigned
// bytes read as the replacement character.
constexpr std::array<char16_t, 128> kHigh = {
    0x20AC, kNone,  0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    kNone,  0x2030, kNone,  0x2039, kNone,  kNone,  kNone,  kNone,   // 88
    kNone,  0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    kNone,  0x2122, kNone,  0x203A, kNone,  kNone,  kNone,  kNone,   // 98
    0x00A0, 0x0385, 0x0386, 0x00A3, 0x00A4, 0x00A5, 0x00A6, 0x00A7,  // A0
    0x00A8, 0x00A9, kNone,  0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x2015,  // A8
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x0384, 0x00B5, 0x00B6, 0x00B7,  // B0
    0x0388, 0x0389, 0x038A, 0x00BB, 0x038C, 0x00BD, 0x038E, 0x038F,  // B8
    0x0390, 0x0391, 0x0392, 0x0393, 0x0394, 0x0395, 0x0396, 0x0397,  // C0
    0x0398, 0x0399, 0x039A, 0x039B, 0x039C, 0x039D, 0x039E, 0x039F,  // C8
    0x03A0, 0x03A1, kNone,  0x03A3, 0x03A4, 0x03A5, 0x03A6, 0x03A7,  // D0
    0x03A8, 0x03A9, 0x03AA, 0x03AB, 0x03AC, 0x03AD, 0x03AE, 0x03AF,  // D8
    0x03B0, 0x03B1, 0x03B2, 0x03B3, 0x03B4, 0x03B5, 0x03B6, 0x03B7,  // E0
    0x03B8, 0x03B9, 0x03BA, 0x03BB, 0x03BC, 0x03BD, 0x03BE, 0x03BF,  // E8
    0x03C0, 0x03C1, 0x03C2, 0x03C3, 0x03C4, 0x03C5, 0x03C6, 0x03C7,  // F0
    0x03C8, 0x03C9, 0x03CA, 0x03CB, 0x03CC, 0x03CD, 0x03CE, kNone,   // F8
};

struct Reverse {
    char16_t code;
    unsigned char byte;
};

constexpr size_t CountAssigned() {
    size_t n = 0;
    for (char16_t c : kHigh)
        if (c != kNone) ++n;
    return n;
}

// The high half by code point, for a binary search when encoding.
constexpr auto kReverse = [] {
    std::array<Reverse, CountAssigned()> r{};
    size_t n = 0;
    for (size_t i = 0; i < kHigh.size(); ++i)
        if (kHigh[i] != kNone) r[n++] = {kHigh[i], static_cast<unsigned char>(0x80 + i)};
    std::sort(r.begin(), r.end(), [](Reverse a, Reverse b) { return a.code < b.code; });
    return r;
}();

// Returns the byte for a code point, or -1 when the code page has none.
int EncodeOne(char32_t cp) {
    if (cp < 0x80) return static_cast<int>(cp);
    auto it = std::lower_bound(kReverse.begin(), kReverse.end(), cp,
                               [](Reverse r, char32_t c) { return r.code < c; });
    return it != kReverse.end() && it->code == cp ? it->byte : -1;
}

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// Decodes one strict UTF-8 character at s[i], advancing i; -1 when the bytes
// are not well-formed (overlong forms, surrogates, beyond U+10FFFF, cut short).
int32_t DecodeOne(std::string_view s, size_t& i) {
    const auto at = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char b0 = at(i);
    if (b0 < 0x80) {
        ++i;
        return b0;
    }
    int len;
    unsigned char lo = 0x80, hi = 0xBF;  // allowed range of the second byte
    if (b0 >= 0xC2 && b0 <= 0xDF) {
        len = 2;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        len = 3;
        if (b0 == 0xE0) lo = 0xA0;
        if (b0 == 0xED) hi = 0x9F;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        len = 4;
        if (b0 == 0xF0) lo = 0x90;
        if (b0 == 0xF4) hi = 0x8F;
    } else {
        return -1;
    }
    if (i + len > s.size()) return -1;
    if (at(i + 1) < lo || at(i + 1) > hi) return -1;
    int32_t cp = b0 & (0x7F >> len);
    for (int k = 1; k < len; ++k) {
        if (!IsContinuation(at(i + k))) return -1;
        cp = (cp << 6) | (at(i + k) & 0x3F);
    }
    i += len;
    return cp;
}

void AppendUtf8(std::string& out, char16_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

// The Greek capitals of the code page all encode as 0xCE then 0x86..0xAB in
// UTF-8, and their small letters as two bytes as well, so folding never
// changes the length of a text nor the place of any character. Given the
// second byte of such a capital, returns the small letter's code point, or 0
// when the character is not a capital (ano teleia, ΐ, the gaps).
constexpr char16_t LowerGreek(unsigned char second) {
    const char16_t cp = static_cast<char16_t>(0x300 + second);
    if (cp == 0x386) return 0x3AC;                    // Ά
    if (cp >= 0x388 && cp <= 0x38A) return cp + 0x25;  // Έ Ή Ί
    if (cp == 0x38C) return 0x3CC;                    // Ό
    if (cp == 0x38E || cp == 0x38F) return cp + 0x3F;  // Ύ Ώ
    if ((cp >= 0x391 && cp <= 0x3A1) || (cp >= 0x3A3 && cp <= 0x3AB)) return cp + 0x20;
    return 0;
}

constexpr auto kGreekLower = [] {
    std::array<char16_t, 256> t{};
    for (int b = 0x80; b <= 0xBF; ++b) t[b] = LowerGreek(static_cast<unsigned char>(b));
    return t;
}();

constexpr unsigned char kGreekLead = 0xCE;

}  // namespace

std::optional<std::string> Utf8ToCp1253(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    size_t i = 0;
    while (i < utf8.size()) {
        if (static_cast<unsigned char>(utf8[i]) < 0x80) {
            out.push_back(utf8[i++]);
            continue;
        }
        int32_t cp = DecodeOne(utf8, i);
        if (cp < 0) return std::nullopt;
        int byte = EncodeOne(static_cast<char32_t>(cp));
        if (byte < 0) return std::nullopt;
        out.push_back(static_cast<char>(byte));
    }
    return out;
}

namespace {

// The UTF-8 form of every byte, in the low bytes of a word, and its length:
// a conversion measures its text first, then stores each character as a
// whole word and steps on by its length, with no branch per byte.
static_assert(std::endian::native == std::endian::little, "a character's bytes lie in its word's low bytes first");

struct Utf8Of {
    std::array<uint32_t, 256> utf8{};
    std::array<uint8_t, 256> length{};
};

const Utf8Of& Utf8_Of() {
    static const Utf8Of table = [] {
        Utf8Of t;
        for (size_t b = 0; b < 256; ++b) {
            std::string s;
            AppendUtf8(s, b < 0x80 ? static_cast<char16_t>(b) : kHigh[b - 0x80]);
            for (size_t k = 0; k < s.size(); ++k)
                t.utf8[b] |= uint32_t{static_cast<unsigned char>(s[k])} << (8 * k);  // little-endian
            t.length[b] = static_cast<uint8_t>(s.size());
        }
        return t;
    }();
    return table;
}

}  // namespace

size_t Cp1253ToUtf8Length(std::string_view bytes) {
    const Utf8Of& table = Utf8_Of();
    size_t n = 0;
    for (char c : bytes) n += table.length[static_cast<unsigned char>(c)];
    return n;
}

void Cp1253ToUtf8Into(std::string_view bytes, std::string& out) {
    const Utf8Of& table = Utf8_Of();
    // One pass into a buffer on the stack, whole words stored and the end
    // moved on by each character's length, then one copy sized exactly: the
    // string keeps its room as long as its row lives. A record's text is
    // short; a longer one is taken in pieces.
    constexpr size_t kPiece = 512;
    char buffer[kPiece * 3 + 4];
    out.clear();
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    for (size_t from = 0; from < bytes.size(); from += kPiece) {
        const size_t to = std::min(bytes.size(), from + kPiece);
        char* p = buffer;
        for (size_t k = from; k < to; ++k) {
            std::memcpy(p, &table.utf8[in[k]], 4);
            p += table.length[in[k]];
        }
        out.append(buffer, static_cast<size_t>(p - buffer));
    }
}

std::string Cp1253ToUtf8(std::string_view bytes) {
    std::string out;
    Cp1253ToUtf8Into(bytes, out);
    return out;
}

bool FitsCp1253(std::string_view utf8) {
    size_t i = 0;
    while (i < utf8.size()) {
        if (static_cast<unsigned char>(utf8[i]) < 0x80) {
            ++i;
            continue;
        }
        int32_t cp = DecodeOne(utf8, i);
        if (cp < 0 || EncodeOne(static_cast<char32_t>(cp)) < 0) return false;
    }
    return true;
}

std::string Cp1253_Storable(std::string_view utf8, size_t max_bytes) {
    std::string out;
    out.reserve(std::min(utf8.size(), max_bytes * 2));
    size_t i = 0;
    for (size_t n = 0; n < max_bytes && i < utf8.size(); ++n) {
        const size_t start = i;
        const int32_t cp = DecodeOne(utf8, i);
        if (cp < 0) {
            i = start + 1;
            out.push_back('?');
        } else if (EncodeOne(static_cast<char32_t>(cp)) < 0) {
            out.push_back('?');
        } else {
            out.append(utf8.substr(start, i - start));
        }
    }
    return out;
}

std::string FoldCase(std::string_view utf8) {
    std::string out(utf8);
    FoldCaseInPlace(out);
    return out;
}

void FoldCaseInPlace(std::string& out) {
    // Folding keeps every character in place: ASCII costs one comparison a
    // byte and nothing more.
    const size_t n = out.size();
    for (size_t i = 0; i < n; ++i) {
        const auto c = static_cast<unsigned char>(out[i]);
        if (c < 0x80) {
            if (c >= 'A' && c <= 'Z') out[i] = static_cast<char>(c | 0x20);
        } else if (c == kGreekLead && i + 1 < n) {
            char16_t lower = kGreekLower[static_cast<unsigned char>(out[i + 1])];
            if (lower != 0) {
                out[i] = static_cast<char>(0xC0 | (lower >> 6));
                out[i + 1] = static_cast<char>(0x80 | (lower & 0x3F));
                ++i;
            }
        } else if (c == 0xCF && i + 1 < n && static_cast<unsigned char>(out[i + 1]) == 0x82) {
            // The final sigma is the small form of the same capital.
            out[++i] = static_cast<char>(0x83);
        }
    }
}

CaseBlindFinder::CaseBlindFinder(std::string_view needle) : m_needle(FoldCase(needle)) {
    if (m_needle.empty()) return;
    const size_t first_length = (static_cast<unsigned char>(m_needle[0]) & 0x80) == 0 ? 1 : 2;
    const std::string first = m_needle.substr(0, std::min(first_length, m_needle.size()));
    m_starts.push_back(first);
    // Every character of the code page that folds to the same one.
    for (int b = 0x20; b < 256; ++b) {
        const std::string spelling = Cp1253ToUtf8(std::string(1, static_cast<char>(b)));
        if (spelling != first && FoldCase(spelling) == first) m_starts.push_back(spelling);
    }
}

namespace {

// True when text, folded as FoldCase folds it, begins with the folded
// needle; it stops at the first character that differs.
bool Starts_Folded(const char* text, const std::string& needle) {
    const size_t n = needle.size();
    for (size_t i = 0; i < n; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            const char folded = static_cast<char>(c >= 'A' && c <= 'Z' ? c | 0x20 : c);
            if (folded != needle[i]) return false;
        } else if ((c == kGreekLead || c == 0xCF) && i + 1 < n) {
            const auto next = static_cast<unsigned char>(text[i + 1]);
            char16_t lower = c == kGreekLead ? kGreekLower[next] : (next == 0x82 ? 0x3C3 : 0);
            char lead = static_cast<char>(c), trail = static_cast<char>(next);
            if (lower != 0) {
                lead = static_cast<char>(0xC0 | (lower >> 6));
                trail = static_cast<char>(0x80 | (lower & 0x3F));
            }
            if (lead != needle[i] || trail != needle[i + 1]) return false;
            ++i;
        } else if (text[i] != needle[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool CaseBlindFinder::In(std::string_view text) const {
    if (m_needle.empty()) return true;
    const size_t n = m_needle.size();
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    for (const std::string& start : m_starts) {
        // The scan looks for the character's last byte: the first byte of a
        // Greek letter is that of nearly every letter of a Greek row.
        const size_t back = start.size() - 1;
        const char key = start.back();
        for (const char* at = begin + back; at < end; ++at) {
            at = static_cast<const char*>(std::memchr(at, key, static_cast<size_t>(end - at)));
            if (at == nullptr) break;
            const char* from = at - back;
            if (end - from < static_cast<ptrdiff_t>(n)) break;
            if (std::memcmp(from, start.data(), back) == 0 && Starts_Folded(from, m_needle)) return true;
        }
    }
    return false;
}

std::string& FoldCaseInto(std::string_view utf8, std::string& out) {
    out.assign(utf8);
    FoldCaseInPlace(out);
    return out;
}

}  // namespace velmora
