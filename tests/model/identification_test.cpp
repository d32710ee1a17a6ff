#include "intake/identification.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <utility>

#include "app/startup.h"
#include "base/collection_records.h"
#include "base/text_format.h"
#include "core/running_report.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {


std::string Path(int i) { return "/music/track_" + std::to_string(i) + ".mp3"; }

// A started program with `rows` Tracks whose mirror rows are still empty.
struct Library : testing::Running {
    explicit Library(int rows) {
        std::vector<testing::TrackRow> tracks;
        for (int i = 0; i < rows; ++i) tracks.push_back({Path(i)});
        testing::Fill_Tracks(ctx, tracks);
    }
    void File(int i, double seconds, const std::string& bytes, const std::string& bits) {
        reader.SetDuration(Path(i), seconds);
        reader.SetAttribute(Path(i), "Filesize", bytes);
        reader.SetAttribute(Path(i), "Bitrate", bits);
    }
    // Yes to the run, then Yes to the save that ends it and OK to its report.
    void Expect_Run() {
        for (MsgAnswer a : {MsgAnswer::Yes, MsgAnswer::Yes, MsgAnswer::OK}) dialogs.ExpectMsgBox(a);
    }
    bool Run(int mode) {
        Expect_Run();
        return Identify_Properties(ctx, mode);
    }
    std::string_view Mirror(int box, int row) const { return ctx.form1.List3_0[box].List(row); }
    // Whether the log begins with the summary of a run: the corrections of
    // duration, bit rate and size, then the rows read.
    bool Summary_Says(int duration, int bitrate, int size, int read) const {
        const std::string now = TimeText(loop.Now());
        const std::string summary =
            "Εντάξει...Ok\n" + now + "Διορθώσεις στη Διάρκεια - Corrections in Duration:" + std::to_string(duration) +
            "\nΔιορθώσεις σε Δειγματοληψία - Corrections in Bitrate:" + std::to_string(bitrate) + "\n" + now +
            " -> Διορθώσεις σε Μεγέθη - Corrections on Sizes:" + std::to_string(size) + "\n" + now +
            "-> Υπολογισμός - Calculating... :  -" + std::to_string(read);
        return Log().rfind(summary, 0) == 0;
    }
};

TEST(Identification, ReadsUnitsIntoColumnsAndCountsOnlyChangedMirrorRows) {
    Library app(3);
    TrackTable& t = app.ctx.table;
    Form1& f = app.ctx.form1;
    app.File(0, 205.4, "3670016", "128000");  // 3.5 Mb, 125 kbit
    app.File(1, 3600.6, "1073741824", "192512");  // exactly 1024 Mb, 188 kbit
    app.reader.SetAttribute(Path(0), "Title", "Ωδή στη χαρά");
    app.reader.SetAttribute(Path(0), "Artist", "Μάνος");
    // Tags the Collection files cannot hold as they are would fail every save
    // and come back empty: they are stored as the code page can carry them.
    app.reader.SetAttribute(Path(1), "Title", "日本の歌 - Ωδή");
    app.reader.SetAttribute(Path(1), "Artist", std::string(500, 'a'));
    // Row 2 is a file the reader cannot open: duration 0 and empty texts.
    f.List3_0[2].SetList(0, "00:03:25");  // already right: no correction
    f.List3_0[3].SetList(1, "01.00Gb");
    f.List3_0[4].SetList(2, "000");
    t.Artist[2] = "old";
    const int clock = f.Timer1.Interval();
    // The report follows the menu's mark, not the state of the report file:
    // off, an existing report is left as it was.
    const std::string report = Report_File(app.ctx);
    std::ofstream(report) << "old\n";
    app.ctx.report.Report_Open = -1;  // as the start finds an existing report
    f.Menus("MnuMoreReport").SetChecked(false);

    // What the window looks like while the rows are read.
    int clock_during = 0;
    bool enabled_during = true, mirrors_during = true;
    app.loop.Post([&] {
        clock_during = f.Timer1.Interval();
        enabled_during = f.Enabled() || f.Tray("MnuSystemTray").Enabled();
        mirrors_during = f.List3_0[2].Visible();
    });
    ASSERT_TRUE(app.Run(kIdentifyNew));

    EXPECT_EQ(std::tuple(clock_during, enabled_during, mirrors_during), std::tuple(10000, false, false));
    EXPECT_EQ(f.Timer1.Interval(), clock);
    EXPECT_TRUE(f.Enabled() && f.List3_0[2].Visible() && app.reader.Muted() && !app.ctx.core.Suppress_Events);

    EXPECT_EQ(std::tuple(t.Duration[0], t.Duration[2]), std::tuple(Currency::FromDouble(205.4), Currency()));
    EXPECT_EQ(std::tuple(t.File_Size[0], t.File_Size[1]), std::tuple(Currency::FromRaw(35000), Currency(1024)));
    EXPECT_EQ(std::tuple(t.Bitrate[0], t.Bitrate[1]), std::tuple(125, 188));
    EXPECT_EQ(std::tie(t.Title[0], t.Artist[0], t.Artist[2]), std::tuple("Ωδή στη χαρά", "Μάνος", ""));
    EXPECT_EQ(std::tie(t.Title[1], t.Artist[1]), std::tuple("???? - Ωδή", std::string(kFilesTextBytes, 'a')));
    EXPECT_EQ(t.Identified, (std::vector<bool>{true, true, true, false}));
    EXPECT_EQ(std::tuple(t.Total_Duration, t.Total_Size, t.Class_Count[0]),
              std::tuple(Currency::FromDouble(205.4) + Currency::FromDouble(3600.6),
                         Currency::FromRaw(35000) + Currency(1024), Currency(3)));
    EXPECT_EQ(std::tuple(app.Mirror(2, 1), app.Mirror(3, 0), app.Mirror(4, 0), app.Mirror(3, 2)),
              std::tuple("01:00:01", "03.50Mb", "125", "00.00Mb"));
    EXPECT_TRUE(app.Summary_Says(2, 2, 2, 3)) << app.Log();
    EXPECT_EQ(std::tuple(app.ctx.report.Mode, testing::Bytes(report)),
              std::tuple(ReportState::Number::Closed, "old\n"));

    // The run ends by saving, asking first as a save from the menu does.
    ASSERT_EQ(app.dialogs.Messages().size(), 3u);
    EXPECT_EQ(app.dialogs.Messages()[2].text, "Επιτυχημένο Σώσιμο Συλλογής - Collection Saved Correctly");
    EXPECT_EQ(std::tuple(app.dialogs.Messages()[2].icon, app.ctx.identify.Saved),
              std::tuple(MsgIcon::Information, true));
    EXPECT_TRUE(std::filesystem::exists(app.ctx.collection.Collection_Path));
}

TEST(Identification, QuestionKeepsBothParagraphsNoTouchesNothingAndEscLeavesTheRestForContinue) {
    const std::string q = Identify_Question();
    EXPECT_EQ(q.rfind("Θα εκτελεσθεί η Αναγνώριση Ιδιοτήτων Αρχείων.", 0), 0u);
    EXPECT_TRUE(testing::Holds(q, "Αναγνώρισης.\n\nIndetification of File Properties will be executed right now."));
    EXPECT_EQ(q.substr(q.size() - 27), "Identification on the menu.");
    Library app(4);
    TrackTable& t = app.ctx.table;
    for (int i = 0; i < 4; ++i) app.File(i, 60 + i, "1048576", "128000");
    t.Duration[0] = t.Total_Duration = Currency(7);
    const int clock = app.ctx.form1.Timer1.Interval();
    app.dialogs.ExpectMsgBox(MsgAnswer::No);
    EXPECT_FALSE(Identify_Properties(app.ctx, kIdentifyNew));
    EXPECT_EQ(std::tuple(t.Duration[0], t.Total_Duration, bool(t.Identified[0]), app.ctx.form1.Timer1.Interval()),
              std::tuple(Currency(7), Currency(7), false, clock));
    ASSERT_EQ(app.dialogs.Messages().size(), 1u);
    EXPECT_EQ(app.dialogs.Messages()[0].text, q);
    // An empty Collection: the question, and nothing after it.
    Library empty(0);
    const std::string log = empty.Log();
    empty.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    EXPECT_FALSE(Identify_Properties(empty.ctx, kIdentifyNew));
    EXPECT_EQ(std::tie(empty.Log(), empty.ctx.core.Suppress_Events), std::tuple(log, false));

    // Esc pressed once row 1 has been read.
    std::function<void()> esc = [&] {
        if (t.Identified[1]) app.ctx.core.Esc_Key = 27;
        else app.loop.Post(esc);
    };
    app.loop.Post(esc);
    // Reports asked for and no report yet: the run writes a block, and closes it.
    const std::string report = Report_File(app.ctx);
    std::filesystem::remove(report);
    app.ctx.form1.Menus("MnuMoreReport").SetChecked(true);
    ASSERT_TRUE(app.Run(kIdentifyNew));
    EXPECT_EQ(app.ctx.report.Mode, ReportState::Number::Closed);
    EXPECT_NE(testing::Bytes(report), "");
    app.ctx.form1.Menus("MnuMoreReport").SetChecked(false);  // a second block in one run is refused
    EXPECT_EQ(t.Identified, (std::vector<bool>{true, true, false, false, false}));
    EXPECT_EQ(std::tuple(app.ctx.core.Esc_Key, app.ctx.identify.Canceled, app.Mirror(2, 2)), std::tuple(0, true, ""));
    EXPECT_TRUE(app.Summary_Says(2, 2, 2, 2)) << app.Log();

    // Row 0 would read differently now; Continue must not read it again.
    app.reader.SetDuration(Path(0), 999);
    ASSERT_TRUE(app.Run(kIdentifyContinue));
    EXPECT_EQ(t.Identified, (std::vector<bool>{true, true, true, true, false}));
    // The totals count the rows of this run only.
    EXPECT_EQ(std::tuple(t.Duration[0], t.Duration[3], app.ctx.identify.Rows_Read, t.Total_Duration),
              std::tuple(Currency(60), Currency(63), 2, Currency(62 + 63)));

    ASSERT_TRUE(app.Run(kIdentifyContinue));
    EXPECT_EQ(app.ctx.identify.Rows_Read, 0);
    EXPECT_TRUE(app.Summary_Says(0, 0, 0, 0)) << app.Log();
}

TEST(Identification, UserRatingGivesTheClassUnlessPersonalRatingsAreKeptAndTheMenuRowsFollowEachOther) {
    // The scale of the values read is the one ratings read from the files use.
    Library app(4);
    TrackTable& t = app.ctx.table;
    Form1& f = app.ctx.form1;
    MenuItem& read = f.Menus("MnuMoreFileSizesReadRatings");
    MenuItem& keep = f.Menus("MnuMoreFileSizesKeepRatings");
    const char* const ratings[] = {"50", "99", "", "abc"};
    for (int i = 0; i < 4; ++i) {
        app.File(i, 10, "1048576", "");
        app.reader.SetAttribute(Path(i), "UserRating", ratings[i]);
        t.Rating_Class[i] = 4;
    }
    ASSERT_EQ(std::tuple(app.ctx.settings.Read_Ratings, app.ctx.settings.Keep_Ratings), std::tuple(-1, -1));
    app.Expect_Run();
    app.dialogs.ExpectMsgBox(MsgAnswer::No);  // remake the filters
    f.Menus("MnuMoreFileSizesAll").Click.emit();
    EXPECT_EQ(std::tuple(f.MultiPage1.Value(), bool(t.Identified[0])), std::tuple(3, true))
        << "No to the filters returns to the page of the run";
    // A new run clears the classes when it reads them, kept or not.
    EXPECT_EQ(t.Rating_Class, (std::vector<int16_t>{0, 0, 0, 0, 0}));

    for (int i = 0; i < 4; ++i) t.Rating_Class[i] = 4;
    keep.Click.emit();
    EXPECT_EQ(std::tuple(keep.Checked(), app.ctx.settings.Keep_Ratings), std::tuple(false, 0));
    ASSERT_TRUE(app.Run(kIdentifyNew));
    EXPECT_EQ(t.Rating_Class, (std::vector<int16_t>{3, 5, 0, 0, 0}));
    EXPECT_EQ(std::tuple(t.Class_Count[0], t.Class_Count[5], t.Class_Size[3]),
              std::tuple(Currency(2), Currency(1), Currency(1)));
    EXPECT_EQ(std::tuple(app.Mirror(1, 0), app.Mirror(1, 1), app.Mirror(4, 0)), std::tuple("B", "S", "000"))
        << "and no bit rate given";

    // Without reading, the classes stand as they are, and keeping is not offered.
    t.Rating_Class[2] = 2;
    read.Click.emit();
    EXPECT_FALSE(read.Checked() || keep.Enabled());
    ASSERT_TRUE(app.Run(kIdentifyNew));
    EXPECT_EQ(std::tuple(t.Rating_Class[2], t.Class_Count[2]), std::tuple(2, Currency(1)));

    const size_t before = app.dialogs.Messages().size();
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    read.Click.emit();
    ASSERT_EQ(app.dialogs.Messages().size(), before + 1);
    const std::string& warning = app.dialogs.Messages().back().text;
    const std::string end = "option <Save Ratings within Files> wasn't enabled>";
    EXPECT_EQ(warning.substr(warning.size() - end.size()), end);
    EXPECT_EQ(std::tuple(read.Checked(), app.ctx.settings.Read_Ratings, keep.Enabled()), std::tuple(true, -1, true));
}

}  // namespace
}  // namespace velmora
