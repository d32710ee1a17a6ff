// velmora-cli copy, move and delete run as programs over real files.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "cli_run.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

size_t Entries(const fs::path& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(FileCommand, CopyMoveAndDeleteTakeTheTracksWithTheFiles) {
    testing::TempFolder folder;
    const fs::path music = folder.Path() / "music", out = folder.Path() / "out άλλο";
    const std::string qel = Quoted(folder.Path() / "c.qel");
    fs::create_directories(music);
    fs::create_directories(out);
    for (const char* name : {"Τραγούδι 1.mp3", "it's 2.mp3", "three.mp3"})
        std::ofstream(music / name) << std::string(5000, name[0]);
    ASSERT_EQ(Cli("add " + qel + " " + Quoted(music), folder.Path()).code, 0);
    auto dump = [&] { return Cli("dump " + qel, folder.Path()).out; };

    auto run = Cli("copy " + qel + " " + Quoted(out) + " --all --point", folder.Path());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find(" 3 tried, 3 done, 0 failed"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("-> " + (music / "it's 2.mp3").string() + " ---> " + (out / "it's 2.mp3").string()),
              std::string::npos);
    EXPECT_TRUE(fs::exists(music / "three.mp3") && fs::exists(out / "three.mp3"));
    EXPECT_EQ(testing::Count(dump(), (out / "").string()), 3u) << "every Track names its copy";

    // Moving the copies back onto their sources replaces them, and the
    // Tracks follow.
    run = Cli("move " + qel + " " + Quoted(music) + " --class - --point", folder.Path());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(fs::is_empty(out));
    EXPECT_EQ(testing::Count(dump(), (music / "").string()), 3u);
    EXPECT_EQ(Cli("move " + qel + " " + Quoted(folder.Path() / "missing") + " --all", folder.Path()).code, 1);
    EXPECT_EQ(Entries(music), 3u) << "nothing is lost";

    // To the trash, leaving what the file manager restores from.
    const fs::path data = folder.Path() / "data";
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
    run = Cli("delete " + qel + " --all --trash", folder.Path());
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(fs::is_empty(music));
    EXPECT_EQ(Entries(data / "Trash/info"), 3u);
    EXPECT_EQ(testing::Count(dump(), ".mp3"), 0u);
}

}  // namespace
}  // namespace velmora
