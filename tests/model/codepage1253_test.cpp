#include "base/codepage1253.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora {
namespace {

const std::string kReplacement = "\xEF\xBF\xBD";  // U+FFFD

TEST(Codepage1253, EveryByteRoundTripsOrIsUnassignedAndNothingElseFits) {
    const std::set<int> unassigned = {0x81, 0x88, 0x8A, 0x8C, 0x8D, 0x8E, 0x8F, 0x90, 0x98,
                                      0x9A, 0x9C, 0x9D, 0x9E, 0x9F, 0xAA, 0xD2, 0xFF};
    for (int b = 0; b < 256; ++b) {
        const std::string byte(1, static_cast<char>(b));
        const std::string utf8 = Cp1253ToUtf8(byte);
        const bool assigned = !unassigned.contains(b);
        EXPECT_EQ(std::tuple(utf8 != kReplacement, FitsCp1253(utf8)), std::tuple(assigned, assigned)) << std::hex << b;
        EXPECT_EQ(Utf8ToCp1253(utf8), assigned ? std::optional(byte) : std::nullopt) << std::hex << b;
    }

    const std::pair<const char*, const char*> cases[] = {
        {"\x80", "€"}, {"\xA2", "Ά"}, {"\xAF", "―"}, {"\xB5", "µ"},  {"\xC1", "Α"},
        {"\xD3", "Σ"}, {"\xF2", "ς"}, {"\xFE", "ώ"}, {"\xA1", "΅"},  {"\x99", "™"},
    };
    for (const auto& [byte, utf8] : cases) {
        EXPECT_EQ(Cp1253ToUtf8(byte), utf8);
        EXPECT_EQ(Utf8ToCp1253(utf8), byte) << utf8;
    }
    EXPECT_EQ(Utf8ToCp1253("Σώσιμο - Saved 10'"), "\xD3\xFE\xF3\xE9\xEC\xEF - Saved 10'");
    EXPECT_EQ(Utf8ToCp1253(""), "");

    // Cyrillic, CJK, Latin-1 but not in this page, beyond the BMP, the
    // replacement character itself; overlong '/', a surrogate, cut short,
    // a continuation missing, a stray continuation, beyond U+10FFFF, '€' cut.
    const char* refused[] = {"Ж",        "中",           "é",   "😀",       "abc\xEF\xBF\xBD", "\xC0\xAF",
                             "\xED\xA0\x80", "\xCE",         "\xCE" "A", "\x80", "\xF5\x80\x80\x80",  "\xE2\x82"};
    for (const char* text : refused) {
        EXPECT_EQ(Utf8ToCp1253(text), std::nullopt) << text;
        EXPECT_FALSE(FitsCp1253(text)) << text;
    }
}

TEST(Codepage1253, StorableFormReplacesWhatThePageLacksAndCutsByCharacters) {
    EXPECT_EQ(Cp1253_Storable("Ωδή 日本 é\xC3.", 20), "Ωδή ?? ??.");
    EXPECT_EQ(Cp1253_Storable("αβγδ", 3), "αβγ") << "a Greek letter is one byte in the file";
    EXPECT_TRUE(FitsCp1253(Cp1253_Storable("\xF0\x9F\x98\x80x", 5)));
}

TEST(Codepage1253, FoldingChangesExactlyTheLatinAndGreekCapitals) {
    const std::pair<const char*, const char*> cases[] = {
        {"ABC xyz 09", "abc xyz 09"}, {"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ", "αβγδεζηθικλμνξοπρστυφχψω"}, {"ΆΈΉΊΌΎΏ", "άέήίόύώ"},
        {"ΪΫ", "ϊϋ"}, {"ΣΟΦΟΣ σοφός", "σοφοσ σοφόσ"}, {"ΐΰ΅·", "ΐΰ΅·"}, {"ÉЖ€", "ÉЖ€"}, {"Mix Ελληνικά", "mix ελληνικά"},
        {"\xCE", "\xCE"}, {"\xA3\xCE", "\xA3\xCE"},
    };
    for (const auto& [text, folded] : cases) EXPECT_EQ(FoldCase(text), folded) << text;

    // 26 Latin, 24 Greek, 7 accented, 2 with dialytika and the final sigma
    // change; every result stays in the code page and is already folded.
    int changed = 0;
    for (int b = 0; b < 256; ++b) {
        const std::string utf8 = Cp1253ToUtf8(std::string(1, static_cast<char>(b)));
        const std::string folded = FoldCase(utf8);
        changed += folded != utf8;
        EXPECT_EQ(std::tuple(folded.size(), FoldCase(folded)), std::tuple(utf8.size(), folded)) << std::hex << b;
        EXPECT_TRUE(utf8 == kReplacement || FitsCp1253(folded)) << std::hex << b;
    }
    EXPECT_EQ(changed, 60);
}

TEST(Codepage1253, TheCaseBlindFinderFindsEverySpellingOfTheText) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"ΚΎΚΛΟΣ", "/Ο κύκλος.mp3", true},  // capitals, accent and the final sigma
        {"κύκλοσ", "ΚΎΚΛΟΣ", true},
        {"κυκλος", "κύκλος", false},       // an accent is a letter of its own
        {"mp3", "ΤΡΑΓΟΎΔΙ.MP3", true},     // at the very end
        {"zorba", "Zorb", false},          // longer than what is left
        {"ία", "Ί", false},                // the text ends inside the needle's first character
        {"", "anything", true},
        {"3276", "Κομμάτι 32761 και 3276", true},  // a near miss before the match
    };
    for (const auto& [needle, text, found] : cases) EXPECT_EQ(CaseBlindFinder(needle).In(text), found) << needle;
}

}  // namespace
}  // namespace velmora
