#include "base/text_format.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <system_error>

namespace velmora {

namespace {

// A decimal number as its digits with the point after `point` of them:
// digits "125", point 1 is 1.25; point -1 is 0.0125; point 5 is 12500.
// Everything here goes through std::to_chars and std::from_chars, which
// ignore the C locale: under a Greek locale printf would write "1,5".
struct Decimal {
    bool negative = false;
    std::string digits;
    int point = 0;
};

// The 15 significant digits a double is good for, so that 2.675 (stored as
// 2.67499999...) is taken as the 2.675 its writer meant.
Decimal FromDouble15(double value) {
    char buf[40];
    auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific, 14);
    std::string_view s(buf, static_cast<size_t>(res.ptr - buf));
    Decimal d;
    if (!s.empty() && s.front() == '-') {
        d.negative = true;
        s.remove_prefix(1);
    }
    size_t e = s.find('e');
    for (char c : s.substr(0, e))
        if (c != '.') d.digits.push_back(c);
    int exponent = 0;
    std::string_view ex = s.substr(e + 1);
    if (!ex.empty() && ex.front() == '+') ex.remove_prefix(1);
    std::from_chars(ex.data(), ex.data() + ex.size(), exponent);
    d.point = exponent + 1;
    return d;
}

std::string Magnitude(int64_t value) {
    uint64_t m = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    return std::to_string(m);
}

Decimal FromInteger(int64_t value) {
    Decimal d;
    d.negative = value < 0;
    d.digits = Magnitude(value);
    d.point = static_cast<int>(d.digits.size());
    return d;
}

Decimal FromCurrency(Currency value) {
    Decimal d;
    d.negative = value.Raw() < 0;
    d.digits = Magnitude(value.Raw());
    if (d.digits.size() < 5) d.digits.insert(0, 5 - d.digits.size(), '0');
    d.point = static_cast<int>(d.digits.size()) - 4;
    return d;
}

bool IsPlaceholder(char c) { return c == '0' || c == '#'; }

// Lays the number out by the pattern, rounding at the last fraction digit
// with a half going away from zero.
std::string Layout(const Decimal& d, std::string_view pattern) {
    size_t dot = pattern.find('.');
    std::string_view int_part = pattern.substr(0, dot);
    int min_int = 0;
    size_t first_zero = int_part.find('0');
    if (first_zero != std::string_view::npos)
        for (char c : int_part.substr(first_zero))
            if (IsPlaceholder(c)) ++min_int;
    size_t frac = 0;
    if (dot != std::string_view::npos)
        for (char c : pattern.substr(dot + 1))
            if (c == '0') ++frac;

    // n: the digits of |value| * 10^frac, cut to a whole number.
    const int keep = d.point + static_cast<int>(frac);
    const int have = static_cast<int>(d.digits.size());
    std::string n;
    if (keep > 0) {
        n = d.digits.substr(0, static_cast<size_t>(std::min(keep, have)));
        if (keep > have) n.append(static_cast<size_t>(keep - have), '0');
    }
    if (keep >= 0 && keep < have && d.digits[static_cast<size_t>(keep)] >= '5') {
        int i = static_cast<int>(n.size()) - 1;
        while (i >= 0 && n[static_cast<size_t>(i)] == '9') n[static_cast<size_t>(i--)] = '0';
        if (i >= 0)
            ++n[static_cast<size_t>(i)];
        else
            n.insert(n.begin(), '1');
    }
    const bool zero = n.find_first_not_of('0') == std::string::npos;

    if (n.size() < frac) n.insert(0, frac - n.size(), '0');
    std::string whole = n.substr(0, n.size() - frac);
    size_t lead = whole.find_first_not_of('0');
    whole.erase(0, lead == std::string::npos ? whole.size() : lead);
    if (whole.size() < static_cast<size_t>(min_int)) whole.insert(0, min_int - whole.size(), '0');

    std::string out;
    if (d.negative && !zero) out.push_back('-');
    out += whole;
    if (frac > 0) {
        out.push_back('.');
        out.append(n, n.size() - frac, frac);
    }
    return out;
}

std::string NonFinite(double value) {
    if (std::isnan(value)) return "NaN";
    return value < 0 ? "-Inf" : "Inf";
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

int DigitIn(char c, int radix) {
    int v = HexDigit(c);
    return v >= 0 && v < radix ? v : -1;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsExponentMark(char c) { return c == 'e' || c == 'E' || c == 'd' || c == 'D'; }

// Reads text with blanks, tabs and line feeds skipped between any two
// characters, as the classic Val does ("1 2 3" is 123).
class BlankSkippingReader {
public:
    explicit BlankSkippingReader(std::string_view text) : m_text(text) {}
    char Peek() {
        while (m_pos < m_text.size() &&
               (IsBlank(m_text[m_pos]) || m_text[m_pos] == '\n'))
            ++m_pos;
        return m_pos < m_text.size() ? m_text[m_pos] : '\0';
    }
    void Next() { ++m_pos; }

private:
    std::string_view m_text;
    size_t m_pos = 0;
};

double RadixValue(BlankSkippingReader& in, int radix) {
    double acc = 0;
    bool any = false;
    for (int v; (v = DigitIn(in.Peek(), radix)) >= 0; in.Next()) {
        acc = acc * radix + v;
        any = true;
    }
    if (!any) return 0;
    // A hex or octal literal is a 16-bit Integer when it fits, else a 32-bit
    // Long, so the top bit is a sign: &HFFFF is -1 and &H8000 is -32768.
    if (acc <= 0xFFFF) return static_cast<int16_t>(static_cast<uint16_t>(acc));
    if (acc <= 0xFFFFFFFFu) return static_cast<int32_t>(static_cast<uint32_t>(acc));
    return acc;
}

double RoundHalfEvenDouble(double value) {
    double whole = std::floor(value);
    double diff = value - whole;  // exact for every finite double
    if (diff > 0.5 || (diff == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
    return whole;
}

template <typename T>
bool ConvertRounded(double value, T& out) {
    if (std::isnan(value)) return false;
    double r = RoundHalfEvenDouble(value);
    if (r < std::numeric_limits<T>::min() || r > std::numeric_limits<T>::max()) return false;
    out = static_cast<T>(r);
    return true;
}

std::string TwoDigits(int v) {
    // The clock's fields, which every log line of a long loop prints.
    if (v >= 0 && v < 100) return {static_cast<char>('0' + v / 10), static_cast<char>('0' + v % 10)};
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

}  // namespace

std::string Format(double value, std::string_view pattern) {
    if (!std::isfinite(value)) return NonFinite(value);
    return Layout(FromDouble15(value), pattern);
}

std::string Format(int64_t value, std::string_view pattern) {
    return Layout(FromInteger(value), pattern);
}

std::string Format(Currency value, std::string_view pattern) {
    return Layout(FromCurrency(value), pattern);
}

std::string Str(int64_t value) {
    return (value < 0 ? "-" : " ") + Magnitude(value);
}

std::string Str(double value) {
    if (!std::isfinite(value)) return NonFinite(value);
    if (value == 0) return " 0";
    Decimal d = FromDouble15(value);
    d.digits.erase(d.digits.find_last_not_of('0') + 1);
    const int exponent = d.point - 1;
    std::string out(1, d.negative ? '-' : ' ');
    if (exponent >= 15 || exponent < -4) {
        // Too long or too small to show positionally: 1.5E+20, 2E-05.
        out.push_back(d.digits[0]);
        if (d.digits.size() > 1) {
            out.push_back('.');
            out.append(d.digits, 1);
        }
        char buf[16];
        std::snprintf(buf, sizeof buf, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        return out + buf;
    }
    if (d.point <= 0) {
        out += "0.";
        out.append(static_cast<size_t>(-d.point), '0');
        return out + d.digits;
    }
    const size_t whole = static_cast<size_t>(d.point);
    if (d.digits.size() <= whole) return out + d.digits + std::string(whole - d.digits.size(), '0');
    return out + d.digits.substr(0, whole) + "." + d.digits.substr(whole);
}

std::string Str(Currency value) {
    Decimal d = FromCurrency(value);
    const size_t whole = static_cast<size_t>(d.point);
    std::string out(1, d.negative ? '-' : ' ');
    std::string integer = d.digits.substr(0, whole);
    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size() - 1));
    out += integer;
    std::string fraction = d.digits.substr(whole);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    if (!fraction.empty()) out += "." + fraction;
    return out;
}

double Val(std::string_view text) {
    BlankSkippingReader in(text);
    if (in.Peek() == '&') {
        in.Next();
        char kind = in.Peek();
        if (kind == 'h' || kind == 'H') {
            in.Next();
            return RadixValue(in, 16);
        }
        if (kind == 'o' || kind == 'O') {
            in.Next();
            return RadixValue(in, 8);
        }
        return 0;
    }

    std::string number;
    bool negative = false;
    if (in.Peek() == '+' || in.Peek() == '-') {
        negative = in.Peek() == '-';
        in.Next();
    }
    // Where the first significant digit stands (1 for 5.0, -2 for 0.005), to
    // tell an overflow from an underflow when the text is out of range.
    long long lead = 0;
    bool significant = false, seen_point = false;
    int mantissa_digits = 0;
    for (char c = in.Peek();; c = in.Peek()) {
        if (IsDigit(c)) {
            ++mantissa_digits;
            if (!seen_point && (significant || c != '0')) ++lead;
            if (seen_point && !significant && c == '0') --lead;
            significant = significant || c != '0';
            number.push_back(c);
        } else if (c == '.' && !seen_point) {
            seen_point = true;
            number.push_back(c);
        } else {
            break;
        }
        in.Next();
    }
    if (mantissa_digits == 0) return 0;

    long long exponent = 0;
    if (IsExponentMark(in.Peek())) {
        in.Next();
        std::string text_exponent;
        if (in.Peek() == '+' || in.Peek() == '-') {
            if (in.Peek() == '-') text_exponent.push_back('-');
            in.Next();
        }
        bool any = false;
        for (; IsDigit(in.Peek()); in.Next()) {
            text_exponent.push_back(in.Peek());
            any = true;
        }
        if (any) {  // a bare "E" adds nothing
            auto res = std::from_chars(text_exponent.data(),
                                       text_exponent.data() + text_exponent.size(), exponent);
            if (res.ec == std::errc::result_out_of_range)
                exponent = text_exponent[0] == '-' ? -100000 : 100000;
            number += "e" + std::to_string(exponent);
        }
    }

    double value = 0;
    auto res = std::from_chars(number.data(), number.data() + number.size(), value);
    if (res.ec == std::errc::result_out_of_range)
        value = lead + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -value : value;
}

bool IsNumeric(std::string_view text) {
    size_t b = 0, e = text.size();
    while (b < e && IsBlank(text[b])) ++b;
    while (e > b && IsBlank(text[e - 1])) --e;
    std::string_view s = text.substr(b, e - b);
    if (s.empty()) return false;

    size_t i = 0;
    auto digits_while = [&](int radix) {
        size_t start = i;
        while (i < s.size() && DigitIn(s[i], radix) >= 0) ++i;
        return i - start;
    };

    if (s[0] == '&') {
        if (s.size() < 2) return false;
        i = 2;
        char kind = s[1];
        int radix = (kind == 'h' || kind == 'H') ? 16 : (kind == 'o' || kind == 'O') ? 8 : 0;
        return radix != 0 && digits_while(radix) > 0 && i == s.size();
    }

    if (s[i] == '+' || s[i] == '-') ++i;
    size_t mantissa = digits_while(10);
    if (i < s.size() && s[i] == '.') {
        ++i;
        mantissa += digits_while(10);
    }
    if (mantissa == 0) return false;
    if (i < s.size() && IsExponentMark(s[i])) {
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
        if (digits_while(10) == 0) return false;
    }
    return i == s.size();
}

std::string Trim(std::string_view text) {
    size_t b = text.find_first_not_of(' ');
    if (b == std::string_view::npos) return std::string();
    return std::string(text.substr(b, text.find_last_not_of(' ') - b + 1));
}

std::string LTrim(std::string_view text) {
    size_t b = text.find_first_not_of(' ');
    return b == std::string_view::npos ? std::string() : std::string(text.substr(b));
}

std::string RTrim(std::string_view text) {
    size_t e = text.find_last_not_of(' ');
    return e == std::string_view::npos ? std::string() : std::string(text.substr(0, e + 1));
}

int64_t RoundHalfEven(double value) {
    if (std::isnan(value)) return 0;
    double r = RoundHalfEvenDouble(value);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (r >= limit) return std::numeric_limits<int64_t>::max();
    if (r < -limit) return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(r);
}

bool CInt(double value, int16_t& out) { return ConvertRounded(value, out); }
bool CLng(double value, int32_t& out) { return ConvertRounded(value, out); }

std::string TimeText(const LocalTime& t) {
    return TwoDigits(t.hour) + ":" + TwoDigits(t.minute) + ":" + TwoDigits(t.second);
}

std::string DateText(const LocalTime& t) {
    char year[16];
    std::snprintf(year, sizeof year, "%04d", t.year);
    return TwoDigits(t.day) + "/" + TwoDigits(t.month) + "/" + year;
}

std::string Day_Time_Text(int64_t s) {
    return Format(s / 86400, "000") + ":" + Format(s % 86400 / 3600, "00") + ":" + Format(s % 3600 / 60, "00") +
           ":" + Format(s % 60, "00");
}

void File_Name_Of(const std::string& path, std::string& name) {
    if (path.empty()) return;
    const size_t slash = path.rfind('/');
    name = slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace velmora
