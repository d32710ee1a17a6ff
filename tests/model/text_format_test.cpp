#include "base/text_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace velmora {
namespace {

TEST(TextFormat, PatternsRoundHalvesAwayFromZero) {
    const struct {
        double value;
        const char* pattern;
        const char* expected;
    } cases[] = {
        {5, "0#", "05"},            {5, "#0", "5"},               {123, "00", "123"},        {-5, "00", "-05"},
        {7, "#00000", "00007"},     {123456, "#00000", "123456"}, {0, "00000", "00000"},     {3.14159, "#0000", "0003"},
        {45, "000", "045"},         {2.5, "#0", "3"},             {3.5, "#0", "4"},          {-2.5, "#0", "-3"},
        {0.5, "#0", "1"}, {0.4999, "#0", "0"}, {2.675, "#0.00", "2.68"}, {1.005, "0000.00", "0001.01"},
        {1.05, "00.0", "01.1"},     {0.125, "00.00", "00.13"},    {99.995, "#00.00", "100.00"},
        {12.3456, "000.00", "012.35"}, {-0.004, "#0.00", "0.00"}, {-0.005, "#0.00", "-0.01"}, {-0.4, "00", "00"},
        {1e-20, "#0.00", "0.00"},   {5.5, "00.0", "05.5"},        {999.5, "#0", "1000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Format(c.value, c.pattern), c.expected) << c.value << " with " << c.pattern;
}

TEST(TextFormat, IntegerAndCurrencyPatternsAreExact) {
    EXPECT_EQ(Format(int64_t{42}, "00.0"), "42.0");
    EXPECT_EQ(Format(std::numeric_limits<int64_t>::min(), "0"), "-9223372036854775808");
    EXPECT_EQ(Format(-7, "000"), "-007");
    // Raw is in ten-thousandths: 0.005, 0.0049, 2.6745, -123.5, -0.004, 12.5.
    const std::tuple<int64_t, const char*, const char*> currencies[] = {
        {50, "#0.00", "0.01"}, {49, "#0.00", "0.00"},  {26745, "#0.00", "2.67"},
        {-1235000, "#0", "-124"}, {-40, "#0.00", "0.00"}, {125000, "00.0", "12.5"},
    };
    for (const auto& [raw, pattern, expected] : currencies)
        EXPECT_EQ(Format(Currency::FromRaw(raw), pattern), expected) << raw;
}

TEST(TextFormat, StrLeavesRoomForTheSign) {
    EXPECT_EQ(std::tuple(Str(5), Str(-5), Str(int64_t{0})), std::tuple(" 5", "-5", " 0"));
    const std::pair<double, const char*> doubles[] = {
        {1.5, " 1.5"},       {0.25, " 0.25"},     {-0.25, "-0.25"},
        {0.1 + 0.2, " 0.3"}, {100.0, " 100"},     {0.0, " 0"},
        {-0.0, " 0"},        {1e20, " 1E+20"},    {1.5e-7, " 1.5E-07"},
        {0.0001, " 0.0001"}, {123456789012345.0, " 123456789012345"},
        {2.0 / 3.0, " 0.666666666666667"},
    };
    for (const auto& [value, expected] : doubles) EXPECT_EQ(Str(value), expected) << value;
    const std::pair<int64_t, const char*> currencies[] = {
        {125000, " 12.5"}, {-30000, "-3"}, {1, " 0.0001"}, {-5000, "-0.5"}, {0, " 0"}};
    for (const auto& [raw, expected] : currencies) EXPECT_EQ(Str(Currency::FromRaw(raw)), expected) << raw;
}

TEST(TextFormat, ValReadsTheLeadingNumber) {
    const std::pair<const char*, double> cases[] = {
        {"123", 123},       {"  1 2 3abc", 123}, {"-4.5e2x", -450},  {"1.2.3", 1.2},
        {"\t+7", 7},        {"- 5", -5},         {".5", 0.5},        {"1e", 1},
        {"2D3", 2000},      {"1E-2", 0.01},      {"abc", 0},         {"", 0},
        {".", 0},           {"-", 0},            {"&H1F", 31},       {"&hFFFF", -1},
        {"&H8000", -32768}, {"&H10000", 65536},  {"&HFFFFFFFF", -1}, {"&O17", 15},
        {"&O19", 1},        {"&", 0},            {"&X1", 0},         {"1e-400", 0},
        {"007", 7},
    };
    for (const auto& [text, expected] : cases) EXPECT_DOUBLE_EQ(Val(text), expected) << text;
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(std::tuple(Val("1e400"), Val("-1e400"), Val("0.0001e400")), std::tuple(inf, -inf, inf));
}

TEST(TextFormat, IsNumericNeedsTheWholeText) {
    for (const char* yes : {"5", " 5 ", "\t5", "-1.5", "+.5", "5.", "1e5", "1E-5", "2d3", "&H1F",
                            "&o17", "007"})
        EXPECT_TRUE(IsNumeric(yes)) << yes;
    for (const char* no : {"", "   ", ".", "-", "1e", "1.2.3", "12a", "1 2", "- 5", "&H", "&H1G",
                           "&O8", "&", "abc", "e5"})
        EXPECT_FALSE(IsNumeric(no)) << no;
}

TEST(TextFormat, TrimRemovesSpacesOnly) {
    EXPECT_EQ(std::tuple(Trim("  a b  "), LTrim("  a "), RTrim("  a "), Trim("\ta\t"), Trim("    ")),
              std::tuple("a b", "a ", "  a", "\ta\t", ""));
}

TEST(TextFormat, RoundingToIntegersAndCurrencyConversionsGoToEven) {
    const std::pair<double, int64_t> cases[] = {
        {2.5, 2}, {3.5, 4}, {-2.5, -2}, {-3.5, -4}, {0.49999999999999994, 0}, {2.5000001, 3},
    };
    for (const auto& [value, expected] : cases) EXPECT_EQ(RoundHalfEven(value), expected) << value;
    EXPECT_EQ(RoundHalfEven(1e300), std::numeric_limits<int64_t>::max());

    int16_t i = 0;
    EXPECT_TRUE(CInt(32767.4, i) && i == 32767);
    EXPECT_TRUE(CInt(-32768.5, i) && i == -32768);
    i = 9;
    for (double refused : {32767.5, -32769.0, std::nan("")}) EXPECT_FALSE(CInt(refused, i)) << refused;
    EXPECT_EQ(i, 9) << "a failed conversion leaves the target alone";

    int32_t l = 0;
    EXPECT_TRUE(CLng(-2147483648.5, l) && l == std::numeric_limits<int32_t>::min());
    EXPECT_TRUE(CLng(2147483646.5, l) && l == 2147483646);
    EXPECT_FALSE(CLng(2147483647.5, l));

    // Currency conversions and rounding go to even too.
    const std::pair<double, int64_t> conversions[] = {
        {0.00005, 0}, {0.00025, 2}, {-0.00025, -2}, {2.00015, 20002}, {0.12345, 1234},
        {1.23455, 12346}, {12.5, 125000},
    };
    for (const auto& [value, raw] : conversions) EXPECT_EQ(Currency::FromDouble(value).Raw(), raw) << value;
    EXPECT_EQ(Currency::FromDouble(1e300).Raw(), std::numeric_limits<int64_t>::max());

    const std::pair<int64_t, int64_t> rounding[] = {{25000, 2}, {35000, 4}, {-25000, -2}, {25001, 3}, {-25001, -3}};
    for (const auto& [raw, rounded] : rounding) EXPECT_EQ(Currency::FromRaw(raw).Round(), rounded) << raw;
}

TEST(Currency, ProductsAndQuotientsRoundToFourDecimals) {
    auto c = [](int64_t raw) { return Currency::FromRaw(raw); };
    // 1.50015, 1.50045, -1.50045, 1/3, 2/3, -2/3, 0.00005, 0.00015, -0.00015.
    const std::pair<Currency, int64_t> cases[] = {
        {c(15000) * c(10001), 15002},      {c(15000) * c(10003), 15004},      {c(-15000) * c(10003), -15004},
        {Currency(1) / Currency(3), 3333}, {Currency(2) / Currency(3), 6667}, {Currency(-2) / Currency(3), -6667},
        {c(1) / Currency(2), 0},           {c(3) / Currency(2), 2},           {c(3) / Currency(-2), -2},
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].first.Raw(), cases[i].second) << i;
    // Raw products beyond 64 bits are fine while the result fits.
    EXPECT_EQ(Currency(int64_t{3'000'000'000}) * Currency(1000), Currency(int64_t{3'000'000'000'000}));
    EXPECT_EQ(Currency(int64_t{900'000'000'000'000}) / Currency(1000),
              Currency(int64_t{900'000'000'000}));
    EXPECT_EQ((Currency(int64_t{1'000'000'000'000}) * Currency(1000)).Raw(),
              std::numeric_limits<int64_t>::max());
    EXPECT_EQ(std::tuple(Currency(7).IntDiv(2), c(-75000).IntDiv(2)), std::tuple(3, -3));
}

}  // namespace
}  // namespace velmora
