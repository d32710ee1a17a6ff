#include "intake/identification.h"

#include <memory>

#include "base/codepage1253.h"
#include "base/collection_records.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"
#include "ratings/ratings_in_files.h"

namespace velmora {

namespace {

const char* const kQuestionGreek =
    "Θα εκτελεσθεί η Αναγνώριση Ιδιοτήτων Αρχείων. Για κάθε αρχείο της συλλογής θα διαβαστούν η διάρκεια, "
    "το μέγεθος, η δειγματοληψία και οι ετικέτες του, κάτι που σε μεγάλη συλλογή θέλει αρκετό χρόνο. "
    "Πιέστε Esc για να τη διακόψετε και συνεχίστε την αργότερα με την επιλογή Συνέχιση του μενού Αναγνώρισης.";
const char* const kQuestionEnglish =
    "Indetification of File Properties will be executed right now. The duration, size, bit rate and tags of "
    "every file in the collection will be read, which takes a while on a large collection. Press Esc to stop "
    "it and resume later with Continue under Files Properties Identification on the menu.";

const char* const kReadRatingsWarning =
    "Αν επιλέξετε να αποδεχτείτε τις προτιμήσεις αρχείων από το δίσκο σας, τότε όσες τυχόν προτιμήσεις έχετε "
    "δώσει έως τώρα στη συλλογή σας ίσως να χαθούν, αν δεν είχατε ενεργοποιήσει την επιλογή <Σώζε Προτιμήσεις "
    "εντός Αρχείων> - If you choose to accept file ratings from your disks then you might end up loosing "
    "whatever rating you have given till now to your collection if option <Save Ratings within Files> wasn't "
    "enabled>";

const char* const kDisabling = "-> Πρόσκαιρη Απενεργοποίηση... - Temporaly Disabling...";
const char* const kCalculating = "Υπολογισμός Μεγεθών/Διαρκείας/Δειγματοληψείας - Calculating Sizes/Duration/BitRate...";
const char* const kPressEsc = " Πιέστε Esc για να διακόψετε - Press Esc to terminate";

// The progress text is rewritten this seldom, and on every one of the last
// rows so that the count ends on the true number.
constexpr int kProgressEvery = 50;
constexpr int kProgressTail = 60;
constexpr int kSlowClockMs = 10000;
constexpr int kProgressBar = 1;

void Set_Window_Enabled(AppContext& ctx, bool on) {
    ctx.form1.SetEnabled(on);
    ctx.form1.Tray("MnuSystemTray").SetEnabled(on);
}

void Set_Mirrors_Visible(Form1& f, bool on) {
    for (auto& box : f.List3_0) box.SetVisible(on);
}

// Writes a mirror row when its text differs, and says whether it did.
bool Correct(ListBox& box, int row, const std::string& text) {
    if (row >= box.ListCount() || box.List(row) == text) return false;
    box.SetList(row, text);
    return true;
}

// Fresh values in every row, the one spare row behind the last included.
template <class Column>
void Fresh(Column& column, size_t size) {
    column.assign(size, typename Column::value_type{});
}

// A tag as the files side file can hold it: a character outside its code
// page shows as '?', and a text longer than its record is cut. Stored as
// read, such a tag would fail every save of the Collection and come back
// empty.
std::string Tag(const std::string& text) { return Cp1253_Storable(text, kFilesTextBytes); }

// Reads one row into the columns and the mirrors. A reader that could not
// open the file gives no item: then every value stays as it was, and the
// mirror texts are made from those.
void Identify_Row(AppContext& ctx, int i, IdentifyState& run) {
    // Sizes and durations change here without their lists: the totals must be counted whole again.
    ctx.ratings.Last_Count.valid = false;
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    const std::unique_ptr<MediaItem> item = ctx.ports.reader.newMedia(std::string(f.List2.List(i)));
    auto info = [&item](const char* name) { return item ? item->getItemInfo(name) : std::string(); };

    if (item) {
        const Currency duration = Currency::FromDouble(item->duration());
        t.Total_Duration += duration;
        t.Duration[i] = duration;
    }
    if (Correct(f.List3_0[2], i, Duration_Text(t.Duration[i]))) ++run.Duration_Corrections;

    const std::string bitrate = info("Bitrate");
    std::string bitrate_text = "000";
    if (IsNumeric(bitrate)) {
        const double kbits = Val(bitrate) / 1024;
        CInt(kbits, t.Bitrate[i]);  // a rate beyond the column's range leaves it as it was
        bitrate_text = Format(kbits, "#0");
    }
    if (Correct(f.List3_0[4], i, bitrate_text)) ++run.Bitrate_Corrections;

    if (item) {
        t.Artist[i] = Tag(info("Artist"));
        loop.DoEvents();
        t.Album[i] = Tag(info("Album"));
        loop.DoEvents();
        t.Genre[i] = Tag(info("Genre"));
        loop.DoEvents();
        t.Title[i] = Tag(info("Title"));
        loop.DoEvents();
        t.Year[i] = Tag(info("WM/Year"));
        loop.DoEvents();
        t.File_Size[i] = Currency::FromDouble(Val(info("Filesize")) / 1048576.0);
    }
    if (Correct(f.List3_0[3], i, Size_Text(t.File_Size[i]))) ++run.Size_Corrections;
    t.Total_Size += t.File_Size[i];

    if (ctx.settings.Read_Ratings != 0) {
        const std::string rating = info("UserRating");
        int16_t value = 0;
        if (IsNumeric(rating) && CInt(Val(rating), value)) {
            const int rating_class = Rating_Class_Of(value);
            if (rating_class >= 0 && ctx.settings.Keep_Ratings == 0) {
                t.Rating_Class[i] = static_cast<int16_t>(rating_class);
                // The recount after a run takes the classes from the letters.
                if (i < f.List3_0[1].ListCount()) f.List3_0[1].SetList(i, Class_Letter(rating_class));
            }
        }
    }

    const int k = t.Rating_Class[i];
    if (k >= 0 && k < kClassCount) {
        t.Class_Count[k] += Currency(1);
        t.Class_Size[k] += t.File_Size[i];
        t.Class_Duration[k] += t.Duration[i];
    }
    t.Identified[i] = true;
}

// The two recounts of the classes that follow a run from the menu.
void After_Run(AppContext& ctx) {
    Calculate_Ratings(ctx);
    ctx.ratings.Stats_Dirty = true;
    Update_Class_Labels(ctx);
}

}  // namespace

std::string Identify_Question() { return std::string(kQuestionGreek) + "\n\n" + kQuestionEnglish; }

int Rating_Class_Of(int v) { return Class_Read_From_File(v); }

bool Identify_Properties(AppContext& ctx, int mode) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;
    TextBox& log = f.Text2[0];

    if (ctx.ports.dialogs.MsgBox(Identify_Question(), MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
        return false;
    IdentifyState& run = ctx.identify;
    run = IdentifyState{};
    if (f.List2.ListCount() == 0) return false;
    SuppressEvents quiet(ctx.core);

    t.Total_Duration = Currency();
    t.Total_Size = Currency();
    Set_Window_Enabled(ctx, false);

    const int n = f.List2.ListCount() - 1;
    t.Track_Count = n + 1;
    t.Grow_Columns();
    const size_t rows = static_cast<size_t>(t.Track_Count) + 1;
    if (mode != kIdentifyContinue) {
        Fresh(t.Duration, rows);
        Fresh(t.Bitrate, rows);
        Fresh(t.Artist, rows);
        Fresh(t.Genre, rows);
        Fresh(t.Album, rows);
        Fresh(t.Title, rows);
        Fresh(t.Year, rows);
        Fresh(t.Identified, rows);
        if (ctx.settings.Read_Ratings != 0) Fresh(t.Rating_Class, rows);
        t.Class_Count.fill(Currency());
        t.Class_Size.fill(Currency());
        t.Class_Duration.fill(Currency());
    }
    Fresh(t.Saved, rows);

    // The report takes a block when the user asked for reports, whatever
    // the state of the file.
    const bool reported = ctx.form1.Menus("MnuMoreReport").Checked();
    if (reported) Report_Block(ctx, -1);

    log.SetText(TimeText(loop.Now()) + kDisabling + "\n" + kCalculating + " \n" + kPressEsc);
    Set_Mirrors_Visible(f, false);

    MediaEngine& reader = ctx.ports.reader;
    reader.setAutoStart(false);
    reader.setMute(true);
    // The clock hardly ticks during the run, but keeps going.
    const int clock_interval = f.Timer1.Interval();
    f.Timer1.SetInterval(kSlowClockMs);

    for (int i = 0; i <= n; ++i) {
        t.Saved[i] = false;
        if (mode != kIdentifyContinue || !t.Identified[i]) {
            Identify_Row(ctx, i, run);
            ++run.Rows_Read;
        }
        if (i % kProgressEvery == 0 || i > n - kProgressTail) {
            log.SetText(TimeText(loop.Now()) + kDisabling + "\n" + kCalculating + " :  -" +
                        std::to_string(run.Rows_Read) + "\n" + kPressEsc);
            Show_Progress(f, i + 1, n + 1, kProgressBar);
        }
        loop.DoEvents();
        if (ctx.core.Esc_Key == 27) {
            ctx.core.Esc_Key = 0;
            run.Canceled = true;
            log.Prepend("Ακυρώθηκε - Canceled\n" + TimeText(loop.Now()));
            break;
        }
    }

    f.Timer1.SetInterval(clock_interval);
    Set_Mirrors_Visible(f, true);
    Set_Window_Enabled(ctx, true);

    const std::string now = TimeText(loop.Now());
    log.SetText(now + "-> Υπολογισμός - Calculating... :  -" + std::to_string(run.Rows_Read));
    log.SetText("Εντάξει...Ok\n" + now + "Διορθώσεις στη Διάρκεια - Corrections in Duration:" +
                std::to_string(run.Duration_Corrections) + "\n" +
                "Διορθώσεις σε Δειγματοληψία - Corrections in Bitrate:" + std::to_string(run.Bitrate_Corrections) +
                "\n" + now + " -> Διορθώσεις σε Μεγέθη - Corrections on Sizes:" +
                std::to_string(run.Size_Corrections) + "\n" + log.Text());

    if (reported) Report_Block(ctx, 0);
    quiet.Restore();
    run.Saved = Save_Collection(ctx, true, true);
    return true;
}

void MnuMoreFileSizesAll_Click(AppContext& ctx) {
    ctx.form1.MultiPage1.SetValue(3);
    if (!Identify_Properties(ctx, kIdentifyNew)) return;
    After_Run(ctx);
    MnuMoreFiltersRemake_Click(ctx);
}

void MnuMoreFileSizesUnknonw_Click(AppContext& ctx) {
    ctx.form1.MultiPage1.SetValue(3);
    if (Identify_Properties(ctx, kIdentifyContinue)) After_Run(ctx);
    ctx.form1.MultiPage1.SetValue(3);
}

void MnuMoreFileSizesReadRatings_Click(AppContext& ctx) {
    MenuItem& read = ctx.form1.Menus("MnuMoreFileSizesReadRatings");
    MenuItem& keep = ctx.form1.Menus("MnuMoreFileSizesKeepRatings");
    const bool on = ctx.settings.Read_Ratings == 0;
    // The warning comes before the mark, so the user sees what the mark costs.
    if (on) ctx.ports.dialogs.MsgBox(kReadRatingsWarning, MsgButtons::OK, MsgIcon::Exclamation, "");
    read.SetChecked(on);
    ctx.settings.Read_Ratings = on ? -1 : 0;
    keep.SetEnabled(on);
}

void MnuMoreFileSizesKeepRatings_Click(AppContext& ctx) {
    MenuItem& keep = ctx.form1.Menus("MnuMoreFileSizesKeepRatings");
    const bool on = ctx.settings.Keep_Ratings == 0;
    keep.SetChecked(on);
    ctx.settings.Keep_Ratings = on ? -1 : 0;
}

}  // namespace velmora
