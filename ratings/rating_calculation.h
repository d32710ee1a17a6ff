#pragma once
// The class statistics: the recount from the letters of the class list, the
// texts of the class labels, the totals under a class restriction, and the
// shared progress bar of long loops.

#include <cstdint>
#include <string>

#include "base/currency.h"

namespace velmora {

struct AppContext;
struct Form1;

// Takes every row's class from its letter in List3_0(1) and rebuilds the
// totals of the table from the rows. Esc stops it with the totals so far.
void Calculate_Ratings(AppContext& ctx);
// Count, size and share of each class and of the whole; only while Stats_Dirty.
void Class_Stats_Texts(AppContext& ctx);
// " - [DDD:HH:MM:SS]" of each class; only while Stats_Dirty.
void Class_Duration_Texts(AppContext& ctx);
// The totals of the classes chosen for playing, and Any_Class_Play.
void Class_Play_Totals(AppContext& ctx);

// " [00012] - [03.50 Mb] - [25.0%]": a class's count, size and share of count.
std::string Class_Stats_Line(Currency count, Currency megabytes, float of_count);

}  // namespace velmora
