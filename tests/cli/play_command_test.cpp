// velmora-cli play run as a program, with silent audio, over a Collection
// of two short files that a program on the test doubles wrote.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/startup.h"
#include "cli_run.h"
#include "collection/collection_file.h"
#include "core/track_table.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

using testing::Cli;

TEST(PlayCommand, PlaysTheCollectionThroughAndEndsWithTheCycle) {
    testing::TestApp app;
    const fs::path media = app.folder.Path() / "media";
    fs::create_directories(media);
    Form_Load(app.ctx);
    TrackTable& t = app.ctx.table;
    t.Track_Count = 2;
    t.Dimension(2);
    for (int i = 0; i < 2; ++i) {
        const std::string file = (media / ("tone " + std::to_string(i) + ".mp3")).string();
        const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=" + std::to_string(440 + 220 * i) +
                                 ":duration=1 '" + file + "'";
        ASSERT_EQ(std::system(make.c_str()), 0);
        app.ctx.form1.List2.AddItem(file);
        for (auto& mirror : app.ctx.form1.List3_0) mirror.AddItem(Row_Number_Text(i));
        t.Duration[i] = Currency(1);
        t.Total_Duration += t.Duration[i];
    }
    t.Current_Track = 0;
    t.Played_Count = 1;
    t.Played_Number[0] = 1;
    Save_Collection(app.ctx, false, true);
    Form_QueryUnload(app.ctx);
    const std::string collection = app.ctx.collection.Collection_Path;
    ASSERT_TRUE(fs::exists(collection)) << collection;

    const auto written = fs::last_write_time(collection);
    const auto run = Cli("play '" + collection + "' --ao null", app.folder.Path());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.err.find(kCycleEnd), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("[2/2] tone 1.mp3"), std::string::npos) << "the status names the second Track\n" << run.err;
    EXPECT_NE(run.err.find("  [-]"), std::string::npos) << "the status shows the Track's class\n" << run.err;

    // Leaving saved the Collection as closing the window does, and it still reads.
    EXPECT_GT(fs::last_write_time(collection), written);
    testing::TestApp reread;
    reread.ctx.program_folder = app.folder.Str();
    Form_Load(reread.ctx);
    EXPECT_EQ(reread.ctx.collection.Collection_Path, collection);
    EXPECT_EQ(reread.ctx.form1.List2.ListCount(), 2);
    Form_QueryUnload(reread.ctx);
}

TEST(PlayCommand, RefusesWhatItCannotPlay) {
    testing::TempFolder scratch;
    EXPECT_EQ(Cli("play '" + (scratch.Path() / "none.qel").string() + "'", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play a.qel --ao", scratch.Path()).code, 2);
}

}  // namespace
}  // namespace velmora
