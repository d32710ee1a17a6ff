#pragma once
// The time left until a moment, as the snooze window shows it: whole
// differences in six units, each counting the boundaries of its unit crossed
// between the two moments, then each reduced to what remains within the next
// larger unit.

#include <optional>
#include <string>
#include <string_view>

#include "base/local_time.h"

namespace velmora {

// "dd/mm/yyyy" and "hh:mm:ss" as one moment; nothing when either is not a
// real day or time of day.
std::optional<LocalTime> Parse_Moment(std::string_view date, std::string_view time);

// The whole differences from `from` to `to`, negative when `to` has passed.
struct WholeDifferences {
    long long years = 0, months = 0, days = 0, hours = 0, minutes = 0, seconds = 0;
};
WholeDifferences Whole_Differences(const LocalTime& from, const LocalTime& to);

// "yy:mm:dd:hh:nn:ss", each field at least two digits: months modulo 12,
// days modulo 31, hours modulo 24; minutes and seconds modulo 60 and never
// negative.
std::string Countdown_Text(const LocalTime& now, const LocalTime& target);

}  // namespace velmora
