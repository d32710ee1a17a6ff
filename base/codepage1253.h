#pragma once
// Texts live in memory as UTF-8; the collection and settings files hold them
// in code page 1253 (Greek). Case-insensitive comparisons fold the Latin and
// Greek letters of that code page.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// nullopt when some character has no place in code page 1253 (or the text is
// not valid UTF-8).
std::optional<std::string> Utf8ToCp1253(std::string_view utf8);
// Every byte maps to something; the few unassigned bytes become U+FFFD.
std::string Cp1253ToUtf8(std::string_view bytes);
// The same into `out`, sized once and its room used again: a load converts
// a few hundred thousand texts, most of them empty or short.
void Cp1253ToUtf8Into(std::string_view bytes, std::string& out);
// The length in bytes of the UTF-8 that Cp1253ToUtf8 makes of `bytes`.
size_t Cp1253ToUtf8Length(std::string_view bytes);
// U+FFFD in UTF-8: what an unassigned byte becomes.
inline constexpr std::string_view kUnassignedCp1253 = "\xEF\xBF\xBD";
// Whether a text read from code page 1253 held an unassigned byte, which no
// write can give back.
inline bool HasUnassignedCp1253(std::string_view read) { return read.find(kUnassignedCp1253) != read.npos; }
bool FitsCp1253(std::string_view utf8);
// The text as code page 1253 can hold it in at most max_bytes: each
// character the code page lacks, and each byte that is no UTF-8, becomes
// '?', and what lies beyond max_bytes characters is cut off.
std::string Cp1253_Storable(std::string_view utf8, size_t max_bytes);

// Lower-cases the capitals of code page 1253, Latin and Greek with their
// accented forms (Ά -> ά), and takes the final sigma to the small sigma,
// as both are the small forms of Σ; other characters stay as they are. The
// folded text has the same length in bytes as the original.
std::string FoldCase(std::string_view utf8);
// The same into `out`, whose room is used again: for folding many texts.
std::string& FoldCaseInto(std::string_view utf8, std::string& out);
void FoldCaseInPlace(std::string& utf8);
// Finds a text within others without regard to case, many times over: the
// spellings of its first character are looked up with the library's fast
// search, and only there is a piece of the text folded and compared. A scan
// of tens of thousands of long rows takes a few milliseconds.
class CaseBlindFinder {
public:
    explicit CaseBlindFinder(std::string_view needle);
    // True when text holds the needle; an empty needle is in every text.
    bool In(std::string_view text) const;

private:
    std::string m_needle;               // folded
    std::vector<std::string> m_starts;  // every spelling of its first character
};

}  // namespace velmora
