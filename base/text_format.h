#pragma once
// Number and text formatting with the rules the program's texts are built on.

#include <cstdint>
#include <string>
#include <string_view>

#include "base/currency.h"
#include "base/local_time.h"

namespace velmora {

// Formats with a digit pattern: '0' always prints a digit, '#' only a
// significant one, '.' the decimal point ("#00000", "0#", "#00.00", "00.0").
// Halves round away from zero, as the classic Format does; negatives get "-",
// unless they round to zero. A double is taken to 15 significant digits first.
std::string Format(double value, std::string_view pattern);
std::string Format(int64_t value, std::string_view pattern);
std::string Format(Currency value, std::string_view pattern);
inline std::string Format(int value, std::string_view pattern) {
    return Format(static_cast<int64_t>(value), pattern);
}

// Str: a leading blank for a number that is not negative (" 5", "-5", " 1.5").
std::string Str(int64_t value);
std::string Str(double value);
std::string Str(Currency value);
inline std::string Str(int value) { return Str(static_cast<int64_t>(value)); }

// Val: the number at the start of the text, blanks skipped, 0 if none.
// "&H" and "&O" read hex and octal as a 16-bit, else 32-bit, signed word.
double Val(std::string_view text);
// True when the whole text (blanks around it allowed) reads as a number.
bool IsNumeric(std::string_view text);

// Trim removes blanks (spaces only) on both sides; LTrim and RTrim on one.
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);

// To the nearest integer, an exact half to the even neighbour (2.5 -> 2, 3.5 -> 4);
// held at the 64-bit limits beyond them, NaN gives 0.
int64_t RoundHalfEven(double value);
// The 16- and 32-bit conversions; false when the value does not fit, which the
// callers treat as an overflow fault of their procedure; out is then unchanged.
bool CInt(double value, int16_t& out);
bool CLng(double value, int32_t& out);

// "HH:MM:SS", 24 hours.
std::string TimeText(const LocalTime& t);
// "DD/MM/YYYY".
std::string DateText(const LocalTime& t);

// "DDD:HH:MM:SS" of whole seconds.
std::string Day_Time_Text(int64_t seconds);
// The part of path behind the last slash; an empty path leaves name as it is.
void File_Name_Of(const std::string& path, std::string& name);

}  // namespace velmora
