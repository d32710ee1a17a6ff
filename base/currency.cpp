#include "base/currency.h"

#include <cmath>
#include <limits>

namespace velmora {

namespace {

using Wide = __int128;

// Quotient of n / d to the nearest integer, an exact half to the even one.
Wide DivideHalfEven(Wide n, Wide d) {
    if (d < 0) {
        n = -n;
        d = -d;
    }
    Wide q = n / d;  // truncated toward zero
    Wide r = n % d;  // same sign as n
    Wide twice = (r < 0 ? -r : r) * 2;
    if (twice > d || (twice == d && (q % 2) != 0)) q += (n < 0) ? -1 : 1;
    return q;
}

// The stored value is 64 bits wide; a result beyond it is held at the limit
// rather than wrapped, so a runaway total cannot flip its sign.
int64_t Clamp(Wide v) {
    constexpr Wide lo = std::numeric_limits<int64_t>::min();
    constexpr Wide hi = std::numeric_limits<int64_t>::max();
    return static_cast<int64_t>(v < lo ? lo : (v > hi ? hi : v));
}

}  // namespace

Currency Currency::FromDouble(double v) {
    if (std::isnan(v)) return Currency{};
    double scaled = v * static_cast<double>(kScale);
    double whole = std::floor(scaled);
    double diff = scaled - whole;
    if (diff > 0.5 || (diff == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
    // 2^63 is exactly representable; anything at or beyond it does not fit.
    constexpr double limit = 9223372036854775808.0;
    if (whole >= limit) return FromRaw(std::numeric_limits<int64_t>::max());
    if (whole < -limit) return FromRaw(std::numeric_limits<int64_t>::min());
    return FromRaw(static_cast<int64_t>(whole));
}

int64_t Currency::Round() const {
    return static_cast<int64_t>(DivideHalfEven(m_raw, kScale));
}

Currency Currency::operator*(Currency o) const {
    // The raw product carries eight decimals; bring it back to four.
    return FromRaw(Clamp(DivideHalfEven(Wide{m_raw} * o.m_raw, kScale)));
}

Currency Currency::operator/(Currency o) const {
    return FromRaw(Clamp(DivideHalfEven(Wide{m_raw} * kScale, o.m_raw)));
}

}  // namespace velmora
