#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

#include "app/startup.h"
#include "desktop/about.h"
#include "desktop/pages.h"
#include "desktop/slide_show.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using namespace testing;

std::string Shown_After(TestApp& app, MenuItem& row, MsgAnswer answer = MsgAnswer::OK) {
    app.dialogs.ExpectMsgBox(answer);
    row.Click.emit();
    return app.dialogs.Messages().back().text;
}

TEST(About, TextsStatisticsAndLinks) {
    Running app;
    MenuSet& m = app.ctx.form1.Menus;
    EXPECT_TRUE(Holds(Shown_After(app, m("mnuinfogr", 0)), "Έκδοση " + Program_Version()));
    EXPECT_TRUE(Holds(Shown_After(app, m("mnuinfogr", 1)), "Version " + Program_Version()));

    const std::string zero =
        " 0 Αρχεία - Files:\nΔιάρκεια Αναπαραγωγής ->  0 Χρόνια -  0 Μήνες -  0 Ημέρες -  0 Ώρες -  0 Λεπτά -  0: "
        "Δευτερόλεπτα \nReproduce Duration ->>  0 Years -  0 Months -  0 Days -  0 Hours -  0 Minutes -  0: Seconds ";
    EXPECT_EQ(Shown_After(app, m("mnustats")), zero);
    CollectionState& c = app.ctx.collection;
    c.Stat_Files = 12;
    c.Stat_Days = 3;
    const std::string counted = Shown_After(app, m("mnustats"));
    EXPECT_EQ(counted.rfind(" 12 Αρχεία - Files:\n", 0), 0u) << counted;
    EXPECT_TRUE(Holds(counted, " 3 Days - "));
    // Cancel keeps the counters; OK clears every one.
    EXPECT_EQ(Shown_After(app, m("mnustatsreset"), MsgAnswer::Cancel),
              "Επιβεβαιώστε Μηδενισμό Στατιστικών - Confirm Reset of Statistics");
    EXPECT_EQ(c.Stat_Files, 12);
    Shown_After(app, m("mnustatsreset"), MsgAnswer::OK);
    EXPECT_EQ(Shown_After(app, m("mnustats")), zero);

    // Installed: the program in PREFIX/bin, the page in PREFIX/share/velmora.
    const std::filesystem::path prefix = app.folder.Path() / "prefix";
    std::filesystem::create_directories(prefix / "bin");
    std::filesystem::create_directories(prefix / "share" / "velmora");
    Put(prefix / "share" / "velmora" / kHelpFile, "<html></html>");
    app.ctx.program_folder = (prefix / "bin").string() + "/";
    m("mnu_info2", 5).Click.emit();
    EXPECT_EQ(app.shell.opened.back(), (prefix / "share" / "velmora" / kHelpFile).string());
    // A page beside the program comes first.
    Put(app.ctx.core.App_Path + kHelpFile, "<html></html>");
    m("mnu_info2", 5).Click.emit();
    EXPECT_EQ(app.shell.opened.back(), app.ctx.core.App_Path + kHelpFile);
    m("mnu_info2", 4).Click.emit();
    EXPECT_EQ(app.shell.opened.back(), kWebPage);
    m("mnu_info2", 6).Click.emit();
    EXPECT_EQ(app.shell.opened.back(), std::string("mailto:") + kMailAddress);
    m("mnu_info2", 2).Click.emit();
    EXPECT_TRUE(app.ctx.form3.Visible());
}

// The switch of the start screen turns the setting and its mark together,
// and the next run starts as it was left.
TEST(About, StartScreenSwitchOutlivesTheRun) {
    Running first;
    MenuItem& row = first.ctx.form1.Menus("mnu_info2", 3);
    ASSERT_EQ(first.ctx.settings.Splash_Show, -1);
    row.Click.emit();
    EXPECT_EQ(first.ctx.settings.Splash_Show, 0);
    EXPECT_FALSE(row.Checked());
    Form_QueryUnload(first.ctx);

    Running second(first.folder.Str());
    EXPECT_FALSE(second.ctx.splash.Visible());
    EXPECT_EQ(second.ctx.settings.Splash_Show, 0);
    EXPECT_FALSE(second.ctx.form1.Menus("mnu_info2", 3).Checked());

    // Exactly one frame of the page group shows after every change.
    Form1& f = second.ctx.form1;
    auto shown = [&f] {
        std::string names;
        for (Frame* frame : {&f.Frame1, &f.Frame4, &f.Frame6, &f.Frame8, &f.Frame12})
            if (frame->Visible()) names += frame->Name() + " ";
        return names;
    };
    EXPECT_EQ(shown(), "Frame4 ");
    const char* expected[] = {"Frame4 ", "Frame12 ", "Frame1 ", "Frame8 ", "Frame6 "};
    for (int page : {2, 4, 1, 3, 0, 4, 2}) {
        f.MultiPage1.SetValue(page);
        EXPECT_EQ(shown(), expected[page]) << "page " << page;
    }
}

TEST(SlideShow, AStaleFileIsShownOnceThenGoesAndEveryRandomNumberPicksAStoredPicture) {
    testing::TempFolder folder;
    const std::string tmp = folder.Str() + "tmp.jpg";
    std::string seen;
    auto show = [&seen](const std::string& file) { seen = Bytes(file); };

    Show_Slide(folder.Str(), "new picture", show);
    EXPECT_EQ(seen, "new picture");
    EXPECT_FALSE(std::filesystem::exists(tmp));

    Put(tmp, "left by a crash");
    EXPECT_FALSE(LoadDataIntoFile("new picture", tmp));
    Show_Slide(folder.Str(), "new picture", show);
    EXPECT_EQ(seen, "left by a crash");
    EXPECT_FALSE(std::filesystem::exists(tmp));

    // Every random number picks a stored picture and an effect.
    for (double r : {0.0, 0.5, 0.999999999, 1.0, -0.1, std::nan("")}) {
        const Slide_Choice c = Choose_Slide(r);
        EXPECT_TRUE(c.picture >= kFirstSlide && c.picture < kFirstSlide + kSlideCount) << r;
        EXPECT_TRUE(c.effect >= 0 && c.effect < kSlideEffects) << r;
    }
    EXPECT_EQ(Choose_Slide(0.999999999).picture, kFirstSlide + kSlideCount - 1);
}

}  // namespace
}  // namespace velmora
