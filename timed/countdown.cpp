#include "timed/countdown.h"

#include <charconv>
#include <cstdio>

namespace velmora {

namespace {

// Days since 1 March of year 0 of the proleptic Gregorian calendar, shifted;
// only differences matter.
long long Day_Number(int year, int month, int day) {
    const long long y = month <= 2 ? year - 1 : year;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long yoe = y - era * 400;
    const long long doy = (153LL * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe;
}

int Days_In_Month(int year, int month) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

// Whole numbers separated by `sep`, exactly `count` of them, each within its digits.
bool Split_Numbers(std::string_view text, char sep, int count, int* out) {
    for (int i = 0; i < count; ++i) {
        const size_t end = i + 1 < count ? text.find(sep) : text.size();
        if (end == std::string_view::npos || end == 0) return false;
        const std::string_view part = text.substr(0, end);
        auto [ptr, ec] = std::from_chars(part.data(), part.data() + part.size(), out[i]);
        if (ec != std::errc() || ptr != part.data() + part.size() || out[i] < 0) return false;
        text.remove_prefix(i + 1 < count ? end + 1 : end);
    }
    return text.empty();
}

long long Serial_Seconds(const LocalTime& t) {
    return Day_Number(t.year, t.month, t.day) * 86400 + t.SecondsSinceMidnight();
}

// Floor division: a boundary is crossed when the floors differ.
long long Floor_Div(long long a, long long b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }

std::string Two_Digits(long long value) {
    char text[32];
    std::snprintf(text, sizeof text, value < 0 ? "-%02lld" : "%02lld", value < 0 ? -value : value);
    return text;
}

}  // namespace

std::optional<LocalTime> Parse_Moment(std::string_view date, std::string_view time) {
    int d[3], t[3];
    if (!Split_Numbers(date, '/', 3, d) || !Split_Numbers(time, ':', 3, t)) return std::nullopt;
    LocalTime m{d[2], d[1], d[0], t[0], t[1], t[2]};
    if (m.year < 100 || m.year > 9999 || m.month < 1 || m.month > 12 || m.day < 1 ||
        m.day > Days_In_Month(m.year, m.month) || m.hour > 23 || m.minute > 59 || m.second > 59)
        return std::nullopt;
    return m;
}

WholeDifferences Whole_Differences(const LocalTime& from, const LocalTime& to) {
    const long long a = Serial_Seconds(from), b = Serial_Seconds(to);
    WholeDifferences w;
    w.seconds = b - a;
    w.minutes = Floor_Div(b, 60) - Floor_Div(a, 60);
    w.hours = Floor_Div(b, 3600) - Floor_Div(a, 3600);
    w.days = Floor_Div(b, 86400) - Floor_Div(a, 86400);
    w.months = (to.year - from.year) * 12LL + (to.month - from.month);
    w.years = to.year - from.year;
    return w;
}

std::string Countdown_Text(const LocalTime& now, const LocalTime& target) {
    const WholeDifferences w = Whole_Differences(now, target);
    // A negative remainder of the two smallest units wraps into the unit.
    auto wrap60 = [](long long v) { return v % 60 < 0 ? v % 60 + 60 : v % 60; };
    return Two_Digits(w.years) + ":" + Two_Digits(w.months % 12) + ":" + Two_Digits(w.days % 31) + ":" +
           Two_Digits(w.hours % 24) + ":" + Two_Digits(wrap60(w.minutes)) + ":" + Two_Digits(wrap60(w.seconds));
}

}  // namespace velmora
