#include <gtest/gtest.h>

#include "core/running_report.h"
#include "support/test_app.h"

namespace velmora {
namespace {

TEST(LogBox, KeepsItsNewestLinesWithinItsLimitCuttingBetweenLinesAndCharacters) {
    TextBox box("box");
    box.SetKeepBytes(20);
    box.SetText("line one\nline two\nline three");
    EXPECT_EQ(box.Text(), "line one\nline two");
    box.SetText("αααααααααααααααααααααααα");  // one line of two-byte letters
    EXPECT_EQ(box.Text(), "αααααααααα");
    box.SetKeepBytes(0);
    box.SetText(std::string(100000, 'x'));
    EXPECT_EQ(box.Text().size(), 100000u) << "no limit once it is lifted";

    // The window's log: thousands of lines leave it bounded, newest first.
    testing::TestApp app;
    for (int i = 0; i < 10000; ++i) Log_Line(app.ctx, "file number " + std::to_string(i) + " is gone");
    const std::string& log = app.ctx.form1.Text2[0].Text();
    EXPECT_LE(log.size(), kLogKeepBytes);
    EXPECT_GT(log.size(), kLogKeepBytes / 2);
    EXPECT_NE(log.find("file number 9999 is gone"), std::string::npos);
    EXPECT_EQ(log.find("file number 0 is gone"), std::string::npos);
    EXPECT_EQ(log.substr(log.size() - 8), " is gone") << "no line is left cut";
}

}  // namespace
}  // namespace velmora
