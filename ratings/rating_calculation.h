#pragma once
// The class statistics: the recount from the letters of the class list, the
// texts of the class labels, the totals under a class restriction, and the
// shared progress bar of long loops.

#include <cstdint>
#include <string>
#include <string_view>

#include "base/currency.h"

namespace velmora {

struct AppContext;
struct Form1;

// Takes every row's class from its letter in List3_0(1) and rebuilds the
// totals of the table from the rows. Esc stops it with the totals so far.
void Calculate_Ratings(AppContext& ctx);
// True while the rows are as the last whole recount left them (or as a
// moved row left them since): the totals are then exact, and one row's move
// can be counted alone.
bool Recount_Is_Current(const AppContext& ctx);
// The totals after row `row` went from old_class with old_size to the class
// and size it holds now, with the log lines, bar and window states of a
// whole recount. Only while Recount_Is_Current held before the row changed.
void Recount_Moved_Row(AppContext& ctx, int row, int old_class, Currency old_size);
// Count, size and share of each class and of the whole; only while Stats_Dirty.
void Class_Stats_Texts(AppContext& ctx);
// " - [DDD:HH:MM:SS]" of each class; only while Stats_Dirty.
void Class_Duration_Texts(AppContext& ctx);
// The totals of the classes chosen for playing, and Any_Class_Play.
void Class_Play_Totals(AppContext& ctx);

// The class of a letter of List3_0(1): "-" 0, "X" 1 ... "S" 5; -1 for any other text.
int Class_Of_Letter(std::string_view letter);

// " [00012] - [03.50 Mb] - [25.0%]": a class's count, size and share of count.
std::string Class_Stats_Line(Currency count, Currency megabytes, float of_count);

}  // namespace velmora
