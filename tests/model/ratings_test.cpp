#include <gtest/gtest.h>

#include <random>
#include <set>

#include "base/text_format.h"
#include "core/progress.h"
#include "intake/add_remove.h"
#include "playback_fixture.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"

namespace velmora {
namespace {

using testing::Player;

// A started program with `ratings.size()` rows, no files behind them, each
// with the given class, a size and a length.
struct Rated : testing::Running {
    explicit Rated(const std::vector<int>& ratings) {
        std::vector<testing::TrackRow> rows;
        for (int i = 0; i < static_cast<int>(ratings.size()); ++i)
            rows.push_back({"/m/track_" + std::to_string(i) + ".mp3", 60.0 + i, ratings[i], 1.2345 + 0.1 * i});
        testing::Fill_Tracks(ctx, rows);
    }
    MenuItem& Menu(const char* name) { return ctx.form1.Menus(name); }
    MenuItem& Tray(const char* name) { return ctx.form1.Tray(name); }
    std::string Now() const { return TimeText(loop.Now()); }
    // The log grows at its top: whether it begins with these lines, stamped now.
    bool Log_Starts(const std::string& lines) const { return Log().rfind(Now() + lines, 0) == 0; }
};

TEST(Ratings, APlainPressWalksTheClassesAndTheSameTrayClassTwiceClearsTheMark) {
    Rated app({0, 0, 0});
    TrackTable& t = app.ctx.table;
    t.Current_Track = 1;
    for (int press = 1; press <= 6; ++press) {
        SCOPED_TRACE(press);
        app.ctx.form1.Command8.Click.emit();
        const int r = press % 6;
        EXPECT_EQ(t.Rating_Class[1], r);
        EXPECT_EQ(app.ctx.form1.List3_0[1].List(1), std::string(1, "-XCBAS"[r]));
        EXPECT_EQ(t.Class_Count[r], Currency(r == 0 ? 3 : 1));
        EXPECT_EQ(t.Class_Duration[r], Currency(r == 0 ? 183 : 61));
        EXPECT_EQ(app.Tray("TrayFavorS").Checked(), r == 5);
        EXPECT_EQ(app.Tray("TrayFavorUnclass").Checked(), r == 0);
        EXPECT_EQ(app.ctx.form1.Command8.Style(), r == 0 ? 0 : 1);
    }
    EXPECT_EQ(t.Saved[1], false);  // the next save stores the row's class

    t.Current_Track = 2;
    app.Tray("TrayFavorA").Click.emit();
    t.Current_Track = 0;
    app.Tray("TrayFavorA").Click.emit();
    EXPECT_EQ(std::tuple(t.Rating_Class[0], t.Class_Count[4]), std::tuple(4, Currency(2)));
    EXPECT_EQ(app.Log().substr(0, app.Log().find("\n", app.Log().find("Favorites")) + 1),
              app.Now() + "-> Προστέθηκε στα Αγαπημένα -* A *- το : \n\"track_0.mp3\" \n" +
                  " has been added to Favorites -* A *-\n");
    EXPECT_EQ(app.ctx.form1.Command8.Caption(), "Προτίμηση Rating A - [000:00:02:02]");

    app.Tray("TrayFavorA").Click.emit();
    EXPECT_EQ(std::tuple(t.Rating_Class[0], app.ctx.form1.List3_0[1].List(0), t.Class_Count[4], t.Class_Count[0]),
              std::tuple(0, "-", Currency(1), Currency(2)));
    EXPECT_TRUE(app.Log_Starts("-> Αφαιρέθηκε από τα Αγαπημένα -* A *- το : \n\"track_0.mp3\" \n"
                               " has been deleted from Favorites -* A *-\n"));
    EXPECT_TRUE(app.Tray("TrayFavorUnclass").Checked() && !app.Tray("TrayFavorA").Checked());
    app.ctx.form1.Command8.Click.emit();
    EXPECT_EQ(t.Rating_Class[0], 1) << "a plain press now counts on from Unmarked";
}

TEST(Ratings, AutoRatingGivesEachNewTrackTheLastClassGiven) {
    Player app(8);
    app.Press();
    app.ctx.form1.Command8.Click.emit();
    app.ctx.form1.Command8.Click.emit();  // C
    app.ctx.form1.Menus("MnuFavorAuto2").Click.emit();
    std::set<int> rated;
    for (int i = 0; i < 4; ++i) {
        app.Press();
        const int row = app.ctx.table.Current_Track;
        rated.insert(row);
        EXPECT_EQ(std::tuple(app.ctx.table.Rating_Class[row], app.ctx.form1.List3_0[1].List(row)), std::tuple(2, "C"));
    }
    EXPECT_EQ(app.ctx.table.Class_Count[2], Currency(static_cast<int>(rated.size()) + 1));
}

// Runs random ratings, removals and resets, then compares the totals the
// deltas kept with a recount from the letters.
TEST(Ratings, TheDeltasAgreeWithAFreshRecountAfterAnySequence) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        std::mt19937 rng(seed);
        std::vector<int> start(5 + rng() % 20);
        for (int& r : start) r = static_cast<int>(rng() % 6);
        Rated app(start);
        TrackTable& t = app.ctx.table;
        Form1& f = app.ctx.form1;
        for (int step = 0; step < 60 && f.List2.ListCount() > 0; ++step) {
            const int rows = f.List2.ListCount();
            const unsigned op = rng() % 10;
            t.Current_Track = static_cast<int>(rng() % rows);
            if (op < 5) {
                f.Command8.Click.emit();
            } else if (op < 8) {
                Tray_Favor_Click(app.ctx, 9 + static_cast<int>(rng() % 6));
            } else if (op == 8) {
                const int row = static_cast<int>(rng() % rows);
                RemovalTally tally;
                Remove_the_Files(app.ctx, std::string(f.List2.List(row)), row, tally);
            } else if (rng() % 4 == 0) {
                f.Menus("mnufilefavorreset").Click.emit();
            }
        }
        const auto kept = std::tuple(t.Class_Count, t.Class_Size, t.Class_Duration, t.Rating_Class);
        Calculate_Ratings(app.ctx);
        ASSERT_EQ(std::tie(t.Class_Count, t.Class_Size, t.Class_Duration, t.Rating_Class), kept) << "seed " << seed;
    }
}

TEST(Ratings, SelectFavorTakesItsOwnCodesAndThePicturesFollowTheScheme) {
    Rated app({0, 1, 2, 3, 4, 5, 3});
    Form1& f = app.ctx.form1;
    auto select = [&](const char* menu) {
        app.Menu(menu).Click.emit();
        std::vector<int> rows;
        for (int i = 0; i < f.List2.ListCount(); ++i)
            if (f.List2.Selected(i)) rows.push_back(i);
        return rows;
    };
    auto summary = [&](const char* files, const char* megabytes) {
        return app.Now() + "-> Αριθμός αρχείων : " + files + " : Number of files\nΜέγεθος (Mbytes): " + megabytes +
               " :Size (Mbytes)\n\n";
    };
    EXPECT_EQ(select("MnuMoreClassA"), (std::vector<int>{3, 6}));
    EXPECT_EQ(f.List3_0[1].List(3), "B");
    EXPECT_TRUE(app.Menu("MnuMoreClassA").Checked());
    EXPECT_EQ(app.Log().substr(0, app.Log().find("\n\n") + 2), summary("2", "3.369"));
    EXPECT_EQ(select("MnuMoreUnClass"), (std::vector<int>{0}));
    EXPECT_EQ(select("MnuMoreClassC"), (std::vector<int>{1}));  // shown as X
    EXPECT_EQ(select("MnuMoreClassAll").size(), 7u);

    EXPECT_TRUE(select("MnuMoreClassX").empty());
    EXPECT_EQ(f.List3_0[2].SelCount(), 0);
    EXPECT_TRUE(app.Menu("MnuMoreClassX").Checked() && !app.Menu("MnuMoreClassAll").Checked());
    EXPECT_EQ(app.Log().substr(0, app.Log().find("\n\n") + 2), summary("0", "0"));

    // The pictures by scheme: the big one for each class, then the star row.
    const int big[4][6] = {{102, 106, 110, 114, 118, 120},
                           {102, 105, 109, 113, 117, 119},
                           {101, 104, 108, 112, 116, 119},
                           {101, 103, 107, 111, 115, 120}};
    const int row[4][6] = {{600, 602, 605, 608, 611, 618},
                           {600, 603, 606, 609, 612, 619},
                           {601, 604, 607, 610, 613, 619},
                           {601, 604, 607, 610, 613, 619}};
    for (int scheme = 0; scheme < 4; ++scheme) {
        f.Menus("MnumoreStar_Colors", scheme).Click.emit();
        EXPECT_TRUE(f.Menus("MnumoreStar_Colors", scheme).Checked());
        for (int rating = 0; rating < 6; ++rating) {
            app.ctx.table.Current_Track = rating;
            DeikseAgapi(app.ctx, rating, rating);
            EXPECT_EQ(f.Picture2.Picture(), Star_Picture(scheme, big[scheme][rating])) << scheme << rating;
            EXPECT_EQ(app.ctx.form4.Command6.Picture(), f.Picture2.Picture());
            for (int slot = 1; slot <= 6; ++slot) {
                int expected = row[scheme][slot - 1];
                if (scheme == 3 && slot == rating + 1) expected = slot == 1 ? 600 : slot == 6 ? 618 : slot + 612;
                EXPECT_EQ(f.Label21[slot - 1].Picture(), Star_Picture(scheme, expected)) << scheme << rating << slot;
                EXPECT_EQ(f.Label21[slot - 1].Style(), slot == rating + 1 ? 2 : 0);
                EXPECT_EQ(app.ctx.form4.Label21[slot - 1].Picture(), f.Label21[slot - 1].Picture());
            }
        }
    }
    f.Menus("MnumoreStar_Active", 0).Click.emit();
    const bool shown = app.ctx.settings.Star_Active != 0;
    EXPECT_EQ(f.Label21[2].Visible(), shown);
    EXPECT_EQ(f.Menus("MnumoreStar_Active", 1).Enabled(), shown);
    f.Menus("MnumoreStar_Active", 1).Click.emit();
    EXPECT_EQ(f.Label21[2].Visible(), !shown);
}

// Turning the last class off falls back to All. All again on an empty list
// leaves the restriction on: the totals that would take it off stop short.
// Unmarked alone leaves the class totals empty.
TEST(Ratings, TheClassChoiceFallsBackToAllAndKeepsItsQuirks) {
    Rated app({0, 5, 0, 0, 5, 0}), empty({}), unmarked({0, 0, 5});
    Form1& f = app.ctx.form1;
    TrackTable& t = app.ctx.table;
    f.Menus("MnuMorePlayS").Click.emit();
    EXPECT_EQ(std::tuple(t.Class_Play[5], t.Any_Class_Play, app.ctx.ratings.Class_Total_Duration,
                         app.ctx.ratings.Class_Total_Count),
              std::tuple(-1, -1, Currency(125), 2));
    EXPECT_TRUE(!f.Menus("MnuMorePlayAll").Checked() && f.Tray("TrayFavorPlayS").Checked());
    EXPECT_EQ(f.Menus("MnuMoreFavor").Caption(), "Παίζε μόνο - Play only ! ");

    f.Tray("TrayFavorPlayS").Click.emit();
    EXPECT_EQ(std::tuple(t.Class_Play, t.Any_Class_Play), std::tuple(std::array<int16_t, 6>{}, 0));
    EXPECT_TRUE(f.Menus("MnuMorePlayAll").Checked() && f.Tray("TrayFavorPlayAll").Checked());
    EXPECT_FALSE(f.Menus("MnuMorePlayS").Checked());
    EXPECT_EQ(f.Tray("MnuSystemTrayFavor").Caption(), "Παίζε μόνο - Play only");

    for (Rated* each : {&empty, &app}) {
        each->Menu("MnuMorePlayS").Click.emit();
        each->Menu("MnuMorePlayAll").Click.emit();
    }
    EXPECT_EQ(std::tuple(empty.ctx.table.Any_Class_Play, t.Any_Class_Play), std::tuple(-1, 0));

    unmarked.Menu("MnuMorePlayUnClass").Click.emit();
    const TrackTable& u = unmarked.ctx.table;
    EXPECT_EQ(std::tuple(u.Class_Play[0], u.Any_Class_Play, unmarked.ctx.ratings.Class_Total_Duration),
              std::tuple(-1, -1, Currency()));
    ShowFavorites(unmarked.ctx);
    EXPECT_EQ(unmarked.Menu("MnuMoreFavor").Caption(), "Παίζε μόνο - Play only !  (!)");
    EXPECT_TRUE(unmarked.Tray("MnuSystemTrayFavor").Checked());
}

TEST(RatingTexts, SharesSizesAndTimes) {
    Rated empty({});
    empty.ctx.ratings.Stats_Dirty = true;
    Update_Class_Labels(empty.ctx);
    const RatingsState& r = empty.ctx.ratings;
    EXPECT_EQ(std::tie(r.Total_Stats_Text, empty.ctx.form1.Label9[3].Caption(), r.Stats_Dirty),
              std::tuple(" [00000] - [00.00 Mb] - [100%]", " [00000] - [00.00 Mb] - [00.0%] - [000:00:00:00]", false));

    EXPECT_EQ(Class_Stats_Line(Currency(1), Currency(1024), 3.0f), " [00001] - [1024.00 Mb] - [33.3%]");
    EXPECT_EQ(Class_Stats_Line(Currency(2), Currency::FromDouble(1024.01), 0.1f), " [00002] - [01.00 Gb] - [2000.0%]");

    Rated app({5, 5, 0});
    TrackTable& t = app.ctx.table;
    t.Class_Duration[5] = Currency(100 * 86400 + 3600 + 61);
    t.Total_Size = Currency(2048);
    app.ctx.ratings.Stats_Dirty = true;
    t.Current_Track = 0;
    DeikseAgapi(app.ctx, 5, 0);
    const Form1& f = app.ctx.form1;
    const std::pair<const std::string&, const char*> texts[] = {
        {app.ctx.ratings.Class_Duration_Text[5], " - [100:01:01:01]"},
        {app.ctx.ratings.Total_Stats_Text, " [00003] - [02.00 Gb] - [100%]"},
        {f.Label9[6].Caption(), " [00002] - [02.57 Mb] - [66.7%] - [100:01:01:01]"},
        {app.Tray("TrayFavorS").Caption(), "Κλάσεως Υ΄- Class S [00002] - [02.57 Mb] - [66.7%]"},
        {app.Tray("TrayFavorUnclass").Caption(), "Όλα - All [00001] - [01.43 Mb] - [33.3%]"},
        {app.Menu("MnuMorePlayS").Caption(), "Κλάσεως Υ΄ - Class S"},
        {app.Menu("MnuMorePlayX").Caption(), " Κλάσεως Χ - Class X"},
        {app.Menu("MnuMoreClassX").Caption(), "Κλάσεως Χ - Class X"},
        {app.Tray("TrayFavorPlayUnClass").Caption(), "Όλα - All"},
        {f.Command8.Caption(), "Προτίμηση Rating S - [100:01:01:01]"},
    };
    for (const auto& [shown, want] : texts) EXPECT_EQ(shown, want);
    EXPECT_EQ(std::tuple(f.Label9[6].Style(), f.Label10[5].Style(), f.Label9[1].Style()), std::tuple(1, 1, 0));

    // The progress bar and its label; a total of 0 leaves the label as it was.
    Form1 bar;
    Show_Progress(bar, 1, 3, 1);
    EXPECT_EQ(std::tuple(bar.Shape1[1].Width(), bar.Label11[1].Caption()), std::tuple(33, "033%"));
    Show_Progress(bar, 9, 3, 0);
    Show_Progress(bar, 1, 0, 1);
    EXPECT_EQ(std::tuple(bar.Label11[0].Caption(), bar.Label11[1].Caption()), std::tuple("100%", "033%"));
}

TEST(Recount, LettersGiveTheClassesEscStopsWithWhatWasCountedAndResetUnmarksAll) {
    Rated app({4, 0, 0, 2});
    Form1& f = app.ctx.form1;
    TrackTable& t = app.ctx.table;
    f.List3_0[1].SetList(0, "?");  // the first row has no row before it: Unmarked
    f.List3_0[1].SetList(2, "");   // takes the class of the row before
    Calculate_Ratings(app.ctx);
    EXPECT_EQ(t.Rating_Class, (std::vector<int16_t>{0, 0, 0, 2, 0}));
    EXPECT_EQ(std::tie(t.Class_Count[0], t.Total_Duration, f.Label11[1].Caption()),
              std::tuple(Currency(3), Currency(60 + 61 + 62 + 63), "100%"));

    f.List3_0[1].SetList(1, "S");
    app.loop.Post([&] { app.ctx.core.Esc_Key = 27; });
    Calculate_Ratings(app.ctx);
    EXPECT_EQ(std::tuple(t.Class_Count[0], t.Class_Count[5]), std::tuple(Currency(1), Currency()))
        << "the first row only";
    EXPECT_EQ(app.ctx.core.Esc_Key, 0);
    EXPECT_TRUE(app.Log_Starts("-> Έτοιμο - Done\nΑκυρώθηκε - Canceled\n" + app.Now() +
                               "-> Πρόσκαιρη απενεργοποίηση ... -  Disabling for a while...\n" +
                               "Υπολογισμός Προτιμήσεων... - Calculating Ratings...\n"))
        << app.Log();
    EXPECT_TRUE(f.Enabled() && f.Tray("MnuSystemTray").Enabled() && f.List3_0[1].Enabled());

    // Clearing every rating keeps the played numbers; the current row stays
    // selected and takes the number in force.
    t.Played_Number = {2, 1, 0, 0, 0};
    t.Played_Count = 2;
    t.Current_Track = 2;
    t.Collection_Saved = -1;
    app.Menu("mnufilefavorreset").Click.emit();
    EXPECT_EQ(t.Rating_Class, (std::vector<int16_t>{0, 0, 0, 0, 0}));
    EXPECT_EQ(f.List3_0[1].Items(), (std::vector<std::string>{"-", "-", "-", "-"}));
    EXPECT_EQ(std::tuple(t.Class_Count[0], t.Class_Count[5], t.Collection_Saved),
              std::tuple(Currency(4), Currency(), 0));
    EXPECT_TRUE(t.Played_Number[2] == 2 && f.List2.Selected(2));
}

// A missing file met while the totals are exact moves its one row to X, and
// leaves the totals, the log, the bar and the window exactly as a whole
// recount does; totals changed by other rules since are counted whole.
TEST(Recount, AMissingFileMovesItsRowAsAWholeRecountWould) {
    struct Run {
        Player app{5};
        explicit Run(bool whole) {
            const char* const letters[] = {"A", "-", "S", "B", "X"};
            for (int i = 0; i < 5; ++i) {
                app.ctx.form1.List3_0[1].SetList(i, letters[i]);
                app.ctx.table.File_Size[i] = Currency::FromRaw(5000 + 7777 * i);
            }
            Calculate_Ratings(app.ctx);
            if (whole) app.ctx.ratings.Last_Count.valid = false;
            std::filesystem::remove(app.Path(2));
            app.Press();
            EXPECT_TRUE(app.RunToCycleEnd(60000));
        }
        std::string Log() const {
            std::string log = app.Log();
            const std::string folder = app.folder.Str();
            for (size_t at; (at = log.find(folder)) != std::string::npos;) log.replace(at, folder.size(), "<folder>/");
            return log;
        }
    };
    Run fast(false), whole(true);
    const TrackTable &a = fast.app.ctx.table, &b = whole.app.ctx.table;
    EXPECT_EQ(a.Rating_Class[2], 1);
    EXPECT_EQ(a.Class_Count, b.Class_Count);
    EXPECT_EQ(a.Class_Size, b.Class_Size);
    EXPECT_EQ(a.Class_Duration, b.Class_Duration);
    EXPECT_EQ(std::tuple(a.Total_Size, a.Total_Duration), std::tuple(b.Total_Size, b.Total_Duration));
    EXPECT_EQ(fast.Log(), whole.Log());
    EXPECT_EQ(fast.app.ctx.form1.Label11[1].Caption(), whole.app.ctx.form1.Label11[1].Caption());
    EXPECT_EQ(fast.app.ctx.ratings.Class_Total_Count, whole.app.ctx.ratings.Class_Total_Count);

    // A letter changed without a recount, and totals off by a stray count:
    // the next missing file counts every row.
    Player app(3);
    Calculate_Ratings(app.ctx);
    app.ctx.form1.List3_0[1].SetList(1, "A");
    app.ctx.table.Class_Count[0] += Currency(7);
    std::filesystem::remove(app.Path(1));
    app.Press();
    ASSERT_TRUE(app.RunToCycleEnd(60000));
    const auto counts = app.ctx.table.Class_Count;
    Calculate_Ratings(app.ctx);
    EXPECT_EQ(counts, app.ctx.table.Class_Count);
}

}  // namespace
}  // namespace velmora
