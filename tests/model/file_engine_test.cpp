#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/app_context.h"
#include "fileops/file_engine.h"
#include "support/file_size_limit.h"
#include "support/file_tree.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Bytes;
using testing::TestApp;

struct FileEngine : ::testing::Test {
    TestApp app;
    std::string src = app.folder.Str() + "src/";
    std::string dst = app.folder.Str() + "dst/";

    FileEngine() {
        fs::create_directories(src);
        fs::create_directories(dst);
        app.ctx.settings.Recycle_Deleted = 0;
    }
    std::string Make(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    int Run(const std::string& from, const std::string& to, int mode) {
        int error = 0;
        Copy_Move_Delete_File(app.ctx, from, to, mode, error);
        return error;
    }
};

TEST_F(FileEngine, CopyKeepsBytesTimeAndAwkwardNamesAndOntoItselfTouchesNothing) {
    const std::string name = "Ελληνικό \"τραγούδι\" it's.mp3";
    const std::string a = Make(src + name, std::string(3 << 20, 'q'));
    fs::last_write_time(a, fs::file_time_type::clock::now() - std::chrono::hours(48));
    Make(dst + name, "an older copy");
    EXPECT_EQ(Run(a, dst + name, kFileCopy), 0);
    EXPECT_EQ(Bytes(dst + name), Bytes(a));
    EXPECT_EQ(fs::last_write_time(dst + name), fs::last_write_time(a));
    EXPECT_EQ(app.Log().substr(8), "-> " + a + " ---> " + dst + name + "\n");
    EXPECT_EQ(testing::File_Tree(dst).size(), 1u) << "no temporary file is left behind";

    const std::string b = Make(src + "b.mp3", "bytes");
    EXPECT_EQ(Run(b, b, kFileCopy), -1);
    EXPECT_EQ(Run(b, b, kFileMove), -1);
    EXPECT_EQ(Bytes(b), "bytes");
    EXPECT_EQ(testing::Count(app.Log(), "Source file is the same with destination file."), 2u);
    EXPECT_EQ(testing::Count(app.Log(), "\n"), 3u) << "one line each";
    EXPECT_TRUE(Holds(app.Log(), "->" + b + "Το αρχείο προορισμού είναι το ίδιο με το αρχείο προέλευσης <-> " + b));
}

TEST_F(FileEngine, AFailedWriteLeavesNoPartialFileAndTheSourceWhole) {
    const std::string a = Make(src + "big.mp3", std::string(1 << 20, 'b'));
    Make(dst + "big.mp3", "the copy that stood before");
    {
        testing::FileSizeLimit full(64 << 10);
        ASSERT_TRUE(full.Set());
        EXPECT_EQ(Run(a, dst + "big.mp3", kFileCopy), -1);
    }
    EXPECT_EQ(Bytes(dst + "big.mp3"), "the copy that stood before");
    EXPECT_EQ(testing::File_Tree(dst).size(), 1u);
    EXPECT_EQ(fs::file_size(a), 1u << 20);
    EXPECT_TRUE(
        Holds(app.Log(), "-> " + a + " XXX αδυναμία αντιγραφής σε - failed to copy to ---> " + dst + "big.mp3"));
}

// A copy fails for a vanished source and a destination that is no folder.
// The hazard users have long lived with: a move whose copy fails still
// deletes the source, and counts as done.
TEST_F(FileEngine, AFailedCopyKeepsTheSourceButAFailedMoveLosesIt) {
    const std::string blocker = Make(app.folder.Str() + "not_a_folder", "x");
    EXPECT_EQ(Run(src + "gone.mp3", dst + "gone.mp3", kFileCopy), -1);
    EXPECT_FALSE(fs::exists(dst + "gone.mp3"));
    const std::string a = Make(src + "a.mp3", "a");
    EXPECT_EQ(Run(a, blocker + "/a.mp3", kFileCopy), -1);
    EXPECT_EQ(Bytes(a), "a");
    EXPECT_EQ(testing::Count(app.Log(), "failed to copy to"), 2u);

    EXPECT_EQ(Run(a, app.folder.Str() + "missing/a.mp3", kFileMove), 0);
    EXPECT_FALSE(fs::exists(a) || fs::exists(app.folder.Str() + "missing"));
    EXPECT_EQ(testing::Count(app.Log(), "failed to copy to"), 3u);
    EXPECT_TRUE(Holds(app.Log(), "-> διαγραφή - deleting ---> " + a));
}

// Off the disk, the Collection's delete command shows the same files going
// as the trash does, and the trash never fails.
TEST_F(FileEngine, DeletingThePlayingFileLetsTheEngineGoFirstAndACollectionTakesItsSideFiles) {
    const std::string a = Make(src + "playing.mp3", "x");
    app.player.SetDuration(a, 100);
    ASSERT_TRUE(app.player.setURL(a).ok());
    app.ctx.playback.Current_File = a;
    app.ctx.form1.Text1[0].SetText("its title");
    EXPECT_EQ(Run(a, "", kFileDelete), 0);
    EXPECT_FALSE(fs::exists(a));
    EXPECT_EQ(app.ctx.form1.Text1[0].Text(), "") << "the tags of a file gone for good are cleared";
    EXPECT_EQ(Run(a, "", kFileDelete), -1) << "a missing file fails plain removal";
    EXPECT_TRUE(Holds(app.Log(), "-> XXX αδυναμία διαγραφής - failed to delete ---> " + a + "\n"));

    const std::string main = Make(src + "c.qel", "m");
    const std::string side = Make(src + "c_Files.qqel", "f");
    app.ctx.settings.Recycle_Deleted = -1;
    int error = 0;
    Delete_File_And_Side_Files(app.ctx, main, error);
    Delete_File_And_Side_Files(app.ctx, src + "never.mp3", error);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(app.shell.trashed, (std::vector<std::string>{main, side, src + "never.mp3"}));
}

}  // namespace
}  // namespace velmora
