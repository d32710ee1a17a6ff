#include "core/running_report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/codepage1253.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using namespace testing;

struct ReportTest : ::testing::Test {
    ReportTest() {
        app.ctx.core.App_Path = app.folder.Str();
        app.loop.SetNow(LocalTime{2026, 3, 7, 21, 15, 4});
    }
    MenuItem& DeleteMenu() { return app.ctx.form1.Menus("MnuMoreReportDelete"); }

    TestApp app;
};

TEST_F(ReportTest, TheFirstLongOperationCreatesTheReportWithItsBlock) {
    Log_Line(app.ctx, "-> Ανάγνωση αρχείων - Reading files...");
    Report_Block(app.ctx, -1);
    EXPECT_EQ(app.ctx.report.Report_Open, -1);
    EXPECT_TRUE(DeleteMenu().Enabled());
    Log_Line(app.ctx, "-> /music/日本/α.mp3");
    Report_Block(app.ctx, 0);

    // What the code page cannot carry becomes a question mark, not a lost block.
    std::string log = app.Log();
    log.replace(log.find("日本"), std::string("日本").size(), "??");
    const std::string stars(100, '*');
    EXPECT_EQ(Bytes(Report_File(app.ctx)), stars + "\n07/03/2026\n" + stars + "\n" + *Utf8ToCp1253(log) + "\n");
    EXPECT_EQ(Count(app.Log(), "->"), 2u) << "no error along the way";

    // A second operation in the same run writes nothing more.
    const std::string before = Bytes(Report_File(app.ctx));
    Log_Line(app.ctx, "-> δεύτερη - second");
    Report_Block(app.ctx, -1);
    EXPECT_FALSE(app.ctx.report.Report_Open || DeleteMenu().Enabled());
    Report_Block(app.ctx, 0);
    EXPECT_EQ(Bytes(Report_File(app.ctx)), before);
    EXPECT_EQ(Count(app.Log(), "-> File already open"), 1u);
    EXPECT_EQ(Count(app.Log(), "-> Bad file mode"), 4u) << "three head lines and the body fail one by one";

    // Deleting the report by the menu gives a new one at the next operation.
    Wire_Report_Menus(app.ctx);
    DeleteMenu().Click.emit();
    EXPECT_FALSE(fs::exists(Report_File(app.ctx)));
    Report_Block(app.ctx, -1);
    Report_Block(app.ctx, 0);
    EXPECT_TRUE(Holds(Bytes(Report_File(app.ctx)), *Utf8ToCp1253("δεύτερη")));
}

TEST_F(ReportTest, TheSizeAtStartIsShownInMegabytesAndDeletingAMissingReportDisablesTheMenu) {
    Report_Size(app.ctx);
    EXPECT_FALSE(app.ctx.report.Report_Open || DeleteMenu().Enabled() || !app.Log().empty());
    EXPECT_TRUE(fs::is_directory(app.folder.Path() / "velmora_reports"));

    std::ofstream(Report_File(app.ctx), std::ios::binary) << std::string(1048576, 'x');
    Report_Size(app.ctx);
    EXPECT_EQ(app.Log(), "21:15:04-> Μέγεθος αρχείου Αναφοράς - Reports File Size:\n ---> 0001.00Mb\n");
    EXPECT_TRUE(app.ctx.report.Report_Open == -1 && DeleteMenu().Enabled());

    fs::remove(Report_File(app.ctx));
    Wire_Report_Menus(app.ctx);
    DeleteMenu().Click.emit();
    EXPECT_FALSE(app.ctx.report.Report_Open || DeleteMenu().Enabled());
    EXPECT_EQ(Count(app.Log(), "-> File not found"), 1u);

    MenuItem& report = app.ctx.form1.Menus("MnuMoreReport");
    for (int on : {-1, 0}) {
        report.Click.emit();
        EXPECT_EQ(std::tuple(report.Checked(), app.ctx.settings.Report_On), std::tuple(on != 0, on));
    }
}

TEST(LogBox, KeepsItsNewestLinesWithinItsLimitCuttingBetweenLinesAndCharacters) {
    TextBox box("box");
    box.SetKeepBytes(20);
    box.SetText("line one\nline two\nline three");
    EXPECT_EQ(box.Text(), "line one\nline two");
    box.Prepend("line zero\n");  // a line put in front pushes the oldest out
    EXPECT_EQ(box.Text(), "line zero\nline one");
    // Heads wait and are joined when read: the text must be what putting
    // each in front at once would give, a head without a line break too.
    TextBox joined("joined"), one_by_one("one by one");
    for (TextBox* b : {&joined, &one_by_one}) b->SetKeepBytes(40);
    for (const char* head : {"alpha\n", "beta ", "gamma\n", "a line longer than the whole box keeps\n", "δέλτα\n"}) {
        joined.Prepend(head);
        one_by_one.SetText(head + one_by_one.Text());
        EXPECT_EQ(joined.First_Line(), one_by_one.Text().substr(0, one_by_one.Text().find('\n')));
    }
    EXPECT_EQ(joined.Text(), one_by_one.Text());
    box.SetText("αααααααααααααααααααααααα");  // one line of two-byte letters
    EXPECT_EQ(box.Text(), "αααααααααα");
    box.SetKeepBytes(0);
    box.SetText(std::string(100000, 'x'));
    EXPECT_EQ(box.Text().size(), 100000u) << "no limit once it is lifted";

    // The window's log: thousands of lines leave it bounded, newest first.
    TestApp app;
    for (int i = 0; i < 10000; ++i) Log_Line(app.ctx, "file number " + std::to_string(i) + " is gone");
    const std::string& log = app.Log();
    EXPECT_LE(log.size(), kLogKeepBytes);
    EXPECT_GT(log.size(), kLogKeepBytes / 2);
    EXPECT_TRUE(Holds(log, "file number 9999 is gone"));
    EXPECT_FALSE(Holds(log, "file number 0 is gone"));
    EXPECT_EQ(log.substr(log.size() - 8), " is gone") << "no line is left cut";
}

}  // namespace
}  // namespace velmora
