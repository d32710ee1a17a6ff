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

struct FileCommand : ::testing::Test {
    testing::TempFolder folder;
    fs::path music = folder.Path() / "music", out = folder.Path() / "out άλλο";
    std::string qel = (folder.Path() / "c.qel").string();

    FileCommand() {
        fs::create_directories(music);
        fs::create_directories(out);
        for (const char* name : {"Τραγούδι 1.mp3", "it's 2.mp3", "three.mp3"})
            std::ofstream(music / name) << std::string(5000, name[0]);
        EXPECT_EQ(Cli("add " + Q(qel) + " " + Q(music.string()), folder.Path()).code, 0);
    }
    static std::string Q(const std::string& s) { return "\"" + s + "\""; }
    std::string Dump() { return Cli("dump " + Q(qel), folder.Path()).out; }
};

TEST_F(FileCommand, CopyAndMovePointTheCollectionAtTheNewFiles) {
    auto copied = Cli("copy " + Q(qel) + " " + Q(out.string()) + " --all --point", folder.Path());
    EXPECT_EQ(copied.code, 0) << copied.err;
    EXPECT_NE(copied.out.find(" 3 tried, 3 done, 0 failed"), std::string::npos) << copied.out;
    EXPECT_NE(copied.out.find("-> " + (music / "it's 2.mp3").string() + " ---> " + (out / "it's 2.mp3").string()),
              std::string::npos);
    EXPECT_TRUE(fs::exists(music / "three.mp3") && fs::exists(out / "three.mp3"));
    EXPECT_EQ(testing::Count(Dump(), (out / "").string()), 3u) << "every Track names its copy";

    // Moving the copies back onto their sources replaces them, and the
    // Tracks follow.
    auto moved = Cli("move " + Q(qel) + " " + Q(music.string()) + " --class - --point", folder.Path());
    EXPECT_EQ(moved.code, 0) << moved.err;
    EXPECT_TRUE(fs::is_empty(out));
    EXPECT_EQ(testing::Count(Dump(), (music / "").string()), 3u);

    auto refused = Cli("move " + Q(qel) + " " + Q((folder.Path() / "missing").string()) + " --all", folder.Path());
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(music), fs::directory_iterator()), 3) << "nothing is lost";
}

TEST_F(FileCommand, DeleteToTheTrashLeavesWhatTheFileManagerRestoresFrom) {
    const fs::path data = folder.Path() / "data";
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
    auto deleted = Cli("delete " + Q(qel) + " --all --trash", folder.Path());
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(deleted.code, 0) << deleted.err;
    EXPECT_TRUE(fs::is_empty(music));
    EXPECT_EQ(std::distance(fs::directory_iterator(data / "Trash/info"), fs::directory_iterator()), 3);
    EXPECT_EQ(testing::Count(Dump(), ".mp3"), 0u);
}

}  // namespace
}  // namespace velmora
