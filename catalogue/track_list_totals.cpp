#include "catalogue/track_list_totals.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/char_span.h"
#include "base/text_format.h"
#include "core/app_context.h"

namespace velmora {

namespace {

const std::string kTen(10, ' ');

std::string Number(int64_t n) { return Trim(Str(n)); }

std::string Mode_Text(const AppContext& ctx) {
    const TrackTable& t = ctx.table;
    const bool shuffled = ctx.settings.Random_Order != 0;
    if (t.Played_Count >= t.Played_High)
        return shuffled ? "Τυχαία Αναπαραγωγή - Suffle Play" : "Σειριακή Αναπαραγωγή - Serial Play";
    const std::string depth = "[-" + Number(int64_t{t.Played_High} - t.Played_Count) + "]";
    return shuffled ? "Τυχαία Αναπαραγωγή [σε οπισθοδρόμηση] -> " + depth + " <- Suffle Play [in backtracking]"
                    : "Σειριακή Αναπαραγωγή [σε οπισθοδρόμηση] -> " + depth + " <- Serial Play [in backtracking]";
}

std::string Percent_Text(int64_t whole, int64_t part) {
    if (whole == 0) return Format(Currency(), "00.00");
    return Format(Currency::FromDouble(100.0 / static_cast<double>(whole) * static_cast<double>(part)), "00.00");
}

struct Played_Sums {
    Currency seconds;        // played before the current Track
    Currency class_seconds;  // the same within the chosen classes
    int64_t class_rows = 0;  // rows played within the chosen classes, the current one too
};

// What has been played in this cycle, and within the chosen classes. The
// loops are kept free of branches so that they run as fast as the columns
// stream.
Played_Sums Count_Played(const AppContext& ctx, bool by_class) {
    const TrackTable& t = ctx.table;
    const int rows = static_cast<int>(std::min<int64_t>(ctx.form1.List2.ListCount(), t.Bound() + 1));
    const int32_t played_count = t.Played_Count;
    std::array<int64_t, kClassCount> in_class{};  // all ones for a class counted, else 0
    for (int k = 0; k < kClassCount; ++k) in_class[k] = by_class && t.Class_Play[k] != 0 ? -1 : 0;
    const int32_t* number = t.Played_Number.data();
    const Currency* duration = t.Duration.data();
    const int16_t* rating = t.Rating_Class.data();
    int64_t played_raw = 0, class_raw = 0;
    Played_Sums sums;
    for (int i = 0; i < rows; ++i) {
        const int64_t played = -static_cast<int64_t>((number[i] != 0) & (number[i] <= played_count));
        played_raw += duration[i].Raw() & played;
    }
    if (by_class) {
        for (int i = 0; i < rows; ++i) {
            const int64_t played = -static_cast<int64_t>((number[i] != 0) & (number[i] <= played_count));
            const int rc = rating[i];
            const int64_t counted = played & (static_cast<unsigned>(rc) < kClassCount ? in_class[rc] : 0);
            class_raw += duration[i].Raw() & counted;
            sums.class_rows -= counted;
        }
    }
    bool current_counted = false, current_in_class = false;
    if (t.Current_Track >= 0 && t.Current_Track < rows) {
        const int i = t.Current_Track;
        current_counted = number[i] != 0 && number[i] <= played_count;
        current_in_class = current_counted && by_class && rating[i] >= 0 && rating[i] < kClassCount &&
                           t.Class_Play[rating[i]] != 0;
    }
    // The clock adds the position in the current Track to what was played
    // before it, so the current Track's own length stays out here.
    sums.seconds = Currency::FromRaw(played_raw) - (current_counted ? t.Duration[t.Current_Track] : Currency());
    sums.class_seconds =
        Currency::FromRaw(class_raw) - (current_in_class ? t.Duration[t.Current_Track] : Currency());
    return sums;
}

}  // namespace

void Etiketes_Synol_Songs(AppContext& ctx) {
    Form1& f = ctx.form1;
    Form4& g = ctx.form4;
    const TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    const int64_t total = f.List2.ListCount();
    const bool by_class = t.Any_Class_Play != 0;
    int64_t class_played = 0;

    if (total == 0) {
        f.Text6.SetText("");
        f.Text6.SetSelection(0, 0);
    } else {
        if (by_class) {
            const Played_Sums sums = Count_Played(ctx, true);
            p.Played_Duration = sums.seconds;
            p.Played_Class_Duration = sums.class_seconds;
            class_played = sums.class_rows;
            p.Played_Duration_Pending = false;
        } else {
            // Without chosen classes nothing shown here needs the sum, and
            // the walk past a drive that is gone would pay a pass over every
            // row per step: the sum waits for its reader.
            p.Played_Class_Duration = Currency();
            p.Played_Duration_Pending = true;
        }

        const std::string mode = Mode_Text(ctx);
        f.Label6.SetCaption(mode);
        g.Label6.SetCaption(mode);

        const std::string path(f.List2.List(t.Current_Track));
        std::string name;
        File_Name_Of(path, name);
        f.Text6.SetText(path);
        f.Text6.SetSelection(Char_Count(path) - Char_Count(name), Char_Count(name));
        g.Label9.SetCaption(path);
    }

    const int64_t remaining = total - t.Played_Count;
    const int64_t current = total - remaining;
    const std::string percent = Percent_Text(total, current);
    const std::string& collection = ctx.collection.Collection_Path;
    const bool short_path = Char_Count(collection) < 110;
    const std::string head =
        "VELMORA II ---> " + (short_path ? collection : Char_Left(collection, 40) + "....." + Char_Right(collection, 65));

    std::string counts;
    if (!by_class) {
        f.SetCaption(head + " [" + percent + (short_path ? "%]" : "%] "));
        counts = "Τρέχων - Current: " + Number(current) + kTen + "Όλα - Total: " + Number(total) + kTen +
                 "Εναπομείναντα - Remaining: " + Number(remaining);
    } else {
        const int64_t class_total = ctx.ratings.Class_Total_Count;
        int64_t class_remaining = 0, class_current = 0;
        std::string class_percent = Percent_Text(0, 0);
        if (class_total > 0) {
            class_remaining = class_total - class_played;
            class_current = class_total - class_remaining;
            class_percent = Percent_Text(class_total, class_current);
        }
        f.SetCaption(head + " [" + class_percent + "%] " + " [" + percent + (short_path ? "%]" : "%] "));
        counts = "Τρέχων - Current: " + Number(current) + " [" + Number(class_current) + "]" + kTen +
                 "Όλα - Total: " + Number(total) + " [" + Number(class_total) + "]" + kTen +
                 "Εναπομείναντα - Remaining: " + Number(remaining) + " [" + Number(class_remaining) + "]";
    }
    f.Label3[0].SetCaption(counts);
    g.Label4.SetCaption(counts);
    g.SetCaption(Char_Left(f.Caption(), 38) + " ...... " + Char_Right(counts, 56));
}

void Settle_Played_Duration(AppContext& ctx) {
    PlaybackState& p = ctx.playback;
    if (!p.Played_Duration_Pending) return;
    p.Played_Duration_Pending = false;
    p.Played_Duration = Count_Played(ctx, false).seconds;
}

}  // namespace velmora
