#include "ratings/ratings_in_files.h"

#include <memory>

#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

const char* const kReadQuestion =
    "Αν επιλέξετε να διαβάσετε τις προτιμήσεις αρχείων από το δίσκο σας, τότε όσες τυχόν προτιμήσεις έχετε "
    "δώσει έως τώρα στη συλλογή σας θα χαθούν, αν δεν είχατε ενεργοποιήσει την επιλογή <Σώζε Προτιμήσεις "
    "εντός Αρχείων>.\nΘα συνεχίσετε;\nIf you choose to accept file ratings from your disks then you will end "
    "up loosing whatever ratings you have given till now to your collection if option <Save Ratings within "
    "Files> wasn't enabled>.\nWill you continue?";
const char* const kWriteQuestion =
    "Θέλετε να μεταβιβάσετε τις προτιμήσεις αρχείων στον δίσκο σας;\nWould you like to transfer your ratings "
    "to your disks?";

constexpr int kProgressEvery = 30;
constexpr int kProgressTail = 50;
constexpr int kProgressBar = 1;

// The attribute as a number, or -1 for an answer that is not one. The reader
// answers nothing for a file it opened that holds no rating, where the
// platform's library answered 0; a file it could not open has no length.
int Value_Of(const MediaItem& item) {
    std::string answer = item.getItemInfo("UserRating");
    if (answer.empty() && item.duration() > 0) answer = "0";
    int16_t value = 0;
    if (!IsNumeric(answer) || !CInt(Val(answer), value)) return -1;
    return value;
}

void Read_Row(AppContext& ctx, int row, int value, ExchangeOutcome& out) {
    const int rating_class = Class_Read_From_File(value);
    TrackTable& t = ctx.table;
    if (rating_class < 0 || row > t.Bound() || rating_class == t.Rating_Class[row]) return;
    ++out.changes;
    t.Rating_Class[row] = static_cast<int16_t>(rating_class);
    ListBox& letters = ctx.form1.List3_0[1];
    if (row < letters.ListCount()) letters.SetList(row, Class_Letter(rating_class));
    t.Saved[row] = false;
}

void Write_Row(AppContext& ctx, int row, MediaItem& item, int value, ExchangeOutcome& out) {
    const TrackTable& t = ctx.table;
    if (row > t.Bound()) return;
    // A file that cannot be written, or not even opened, is not asked for
    // rights here: it stays as it is, and the log says which.
    if (item.isReadOnlyItem("UserRating")) {
        ++out.left_alone;
        Log_Line(ctx, "Μόνο για ανάγνωση - Read only : " + item.sourceURL());
        return;
    }
    const std::string rating = Written_Rating(t.Rating_Class[row]);
    // A file that holds the very value already is not rewritten: most of a
    // Collection is unmarked, and its files carry no rating.
    if (value >= 0 && std::to_string(value) == rating) return;
    if (Status written = item.setItemInfo("UserRating", rating); !written) {
        ++out.left_alone;
        Log_Line(ctx, written.error());
        return;
    }
    if (value >= 0 && Class_Compared_After_Write(value) != t.Rating_Class[row]) ++out.changes;
}

}  // namespace

std::string Written_Rating(int rating_class) {
    static const char* const kWritten[] = {"0", "1", "25", "50", "75", "99"};
    return rating_class >= 0 && rating_class < 6 ? kWritten[rating_class] : "0";
}

int Class_Read_From_File(int v) {
    if (v < 0 || v > 99) return -1;
    if (v == 0) return 0;
    if (v <= 12) return 1;
    if (v <= 37) return 2;
    if (v <= 62) return 3;
    if (v <= 86) return 4;
    return 5;
}

int Class_Compared_After_Write(int v) {
    if (v < 0 || v > 99) return -1;
    if (v <= 1) return v;
    if (v <= 25) return 2;
    if (v <= 50) return 3;
    if (v <= 75) return 4;
    return 5;
}

ExchangeOutcome Exchange_Ratings(AppContext& ctx, int track, int mode) {
    ExchangeOutcome out;
    Form1& f = ctx.form1;
    EventLoop& loop = ctx.ports.loop;
    MediaEngine& scratch = ctx.ports.reader;
    const bool whole = mode == kExchangeReadAll || mode == kExchangeWriteAll;
    int first = 0, last = -1;
    if (mode == kExchangeOneRow) first = last = track;
    if (whole) last = f.List2.ListCount() - 1;
    if (first < 0 || last >= f.List2.ListCount()) last = first - 1;

    for (int i = first; i <= last; ++i) {
        const std::unique_ptr<MediaItem> item = scratch.newMedia(std::string(f.List2.List(i)));
        if (item) {
            const int value = Value_Of(*item);
            if (mode == kExchangeReadAll) {
                if (value >= 0) Read_Row(ctx, i, value, out);
            } else {
                Write_Row(ctx, i, *item, value, out);
            }
        }
        if (!whole) continue;
        if (i % kProgressEvery == 0 || i > last - kProgressTail) Show_Progress(f, i + 1, last + 1, kProgressBar);
        loop.DoEvents();
        if (ctx.core.Esc_Key == 27) {
            ctx.core.Esc_Key = 0;
            out.canceled = true;
            f.Text2[0].Prepend("Ακυρώθηκε - Canceled\n");
            break;
        }
    }

    (void)scratch.stop();
    (void)scratch.close();
    Log_Line(ctx, "--> Αλλαγές - Changes :" + std::to_string(out.changes));
    ctx.table.Collection_Saved = 0;
    return out;
}

void MnuMoreReadFavorFromFiles_Click(AppContext& ctx) {
    if (ctx.ports.dialogs.MsgBox(kReadQuestion, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) return;
    Exchange_Ratings(ctx, 0, kExchangeReadAll);
    Calculate_Ratings(ctx);
    ctx.ratings.Stats_Dirty = true;
    Update_Class_Labels(ctx);
    // The class box of the catalogue still shows the old classes.
    MnuMoreFiltersRemake_Click(ctx);
}

void MnuMoreSaveFavorWithinFiles_Click(AppContext& ctx) {
    if (ctx.ports.dialogs.MsgBox(kWriteQuestion, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) return;
    Exchange_Ratings(ctx, 0, kExchangeWriteAll);
}

void MnuMoreFavorWithinFiles_Click(AppContext& ctx) {
    MenuItem& row = ctx.form1.Menus("MnuMoreFavorWithinFiles");
    const bool on = ctx.settings.Favor_Within_Files == 0;
    row.SetChecked(on);
    ctx.settings.Favor_Within_Files = on ? -1 : 0;
}

}  // namespace velmora
