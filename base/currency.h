#pragma once
// A fixed-point money-style number: a 64-bit integer scaled by 10,000, as the
// collection files store durations, sizes and positions.

#include <compare>
#include <cstdint>

namespace velmora {

class Currency {
public:
    static constexpr int64_t kScale = 10000;

    constexpr Currency() = default;
    constexpr Currency(int v) : m_raw(int64_t{v} * kScale) {}
    constexpr Currency(int64_t v) : m_raw(v * kScale) {}
    // Rounds to four decimals, an exact half to the even neighbour; values
    // beyond the 64-bit range are held at its limits, NaN gives 0.
    static Currency FromDouble(double v);
    static constexpr Currency FromRaw(int64_t raw) {
        Currency c;
        c.m_raw = raw;
        return c;
    }

    constexpr int64_t Raw() const { return m_raw; }
    double ToDouble() const { return static_cast<double>(m_raw) / kScale; }
    // To the nearest whole number, an exact half to the even neighbour.
    int64_t Round() const;

    constexpr Currency operator+(Currency o) const { return FromRaw(m_raw + o.m_raw); }
    constexpr Currency operator-(Currency o) const { return FromRaw(m_raw - o.m_raw); }
    constexpr Currency operator-() const { return FromRaw(-m_raw); }
    Currency& operator+=(Currency o) { m_raw += o.m_raw; return *this; }
    Currency& operator-=(Currency o) { m_raw -= o.m_raw; return *this; }
    // Products and quotients are rounded back to four decimals, half to even,
    // and held at the 64-bit limits when they overflow. The divisor of / must
    // not be zero: callers test for it, as a division by zero is their fault.
    Currency operator*(Currency o) const;
    Currency operator/(Currency o) const;
    Currency operator*(int64_t k) const { return FromRaw(m_raw * k); }
    // Whole-number division of the value, truncated toward zero (the \ operator).
    int64_t IntDiv(int64_t k) const { return (m_raw / kScale) / k; }

    constexpr auto operator<=>(const Currency&) const = default;
    constexpr bool operator==(const Currency&) const = default;

private:
    int64_t m_raw = 0;
};

}  // namespace velmora
