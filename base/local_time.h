#pragma once
// A clock reading of the local time of day, as the event loop gives it.

namespace velmora {

struct LocalTime {
    int year = 2000, month = 1, day = 1;
    int hour = 0, minute = 0, second = 0;
    int SecondsSinceMidnight() const { return hour * 3600 + minute * 60 + second; }
};

}  // namespace velmora
