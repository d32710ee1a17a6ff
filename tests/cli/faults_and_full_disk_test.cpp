// velmora-cli over a full disk: a failed save is a failing exit with its
// cause, and nothing is told as done before it is on the disk.

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstring>

#include <filesystem>
#include <string>

#include "cli_run.h"
#include "support/file_size_limit.h"
#include "support/golden_collection.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

// The three files of a Collection, as they stand: the commands must leave them so.
std::string Files(const testing::GoldenFiles& at) {
    return testing::Bytes(at.main) + "|" + testing::Bytes(at.files) + "|" + testing::Bytes(at.filters);
}

TEST(CliFaults, AFullDiskFailsTheCommandWithItsCauseAndLeavesTheCollectionAsItWas) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media";
    fs::create_directories(media);
    testing::Put(media / "a.wav", testing::Wav_Bytes(8000)), testing::Put(media / "b.wav", testing::Wav_Bytes(8000));
    const fs::path sylloges = tmp.Path() / "velmora_sylloges";
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str(), "full");
    const std::string coll = Quoted(at.main);
    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);
    testing::Put(media / "c.wav", testing::Wav_Bytes(8000));
    const std::string before = Files(at);
    // Two Tracks make a files side file of 36,000 bytes: the limit lets the
    // main file and the texts through, not the Tracks.
    const std::string cause = (sylloges / "full_files.qqel.new").string() + ": write: File too large";

    CliRun add, identify, play;
    {
        testing::FileSizeLimit full(20000);
        ASSERT_TRUE(full.Set());
        add = Cli("add " + coll + " " + Quoted(media), tmp.Path());
        identify = Cli("identify " + coll, tmp.Path());
        EXPECT_TRUE(Files(at) == before) << "the files are as they were";
        play = Cli("play " + coll + " --ao null", tmp.Path());
    }
    EXPECT_EQ(add.code, 1);
    EXPECT_NE(add.err.find(": the Collection could not be saved: " + cause), std::string::npos) << add.err;
    EXPECT_EQ(add.out.find("Tracks,"), std::string::npos) << "no count of Tracks saved:\n" << add.out;
    EXPECT_EQ(identify.code, 1);
    EXPECT_NE(identify.err.find(cause), std::string::npos) << identify.err;
    EXPECT_EQ(identify.out.find("Εντάξει...Ok"), std::string::npos) << identify.out;
    // The save on leaving fails: the exit says so, and why.
    EXPECT_EQ(play.code, 1) << play.err;
    EXPECT_NE(play.err.find("the Collection could not be saved: " + (sylloges / "full_files.qqel").string() +
                            ": write: File too large"),
              std::string::npos)
        << play.err;

    // The pointer file cannot be written: play names it and opens nothing,
    // not even an empty default Collection.
    fs::create_directories(sylloges / "default.qr.new");
    play = Cli("play " + coll + " --ao null", tmp.Path());
    EXPECT_EQ(play.code, 1);
    EXPECT_NE(play.err.find("not played: " + (sylloges / "default.qr").string() + ": the file cannot be written"),
              std::string::npos)
        << play.err;
    EXPECT_FALSE(fs::exists(sylloges / "velmora.qel"));
}

// A tmpfs of 2 MB, unmounted with the object; where the test may not mount
// (not root, or a container without the right) it says why.
struct SmallTmpfs {
    explicit SmallTmpfs(const fs::path& at) : point(at) {
        fs::create_directories(at);
        if (::mount("tmpfs", at.c_str(), "tmpfs", 0, "size=2m") != 0) why = std::strerror(errno);
    }
    ~SmallTmpfs() { ::umount2(point.c_str(), MNT_DETACH); }
    fs::path point;
    std::string why;
};

// Five files of 600 KB onto it: the first ones fit, the rest fail each with
// its own line, and nothing half written stays behind.
TEST(CliFaults, CopiesOntoAFullFileSystemLeaveWholeFilesOrNoneAndTheSourcesIntact) {
    testing::TempFolder tmp;
    SmallTmpfs full(tmp.Path() / "full");
    if (!full.why.empty()) GTEST_SKIP() << "cannot mount a 2 MB tmpfs here (" << full.why << "): needs CAP_SYS_ADMIN";
    const fs::path media = tmp.Path() / "media", collection = tmp.Path() / "velmora_sylloges" / "c.qel";
    fs::create_directories(media);
    auto bytes = [](int i) { return std::string(600 * 1024, static_cast<char>('a' + i)); };
    for (int i = 0; i < 5; ++i) testing::Put(media / ("t" + std::to_string(i) + ".mp3"), bytes(i));
    ASSERT_EQ(Cli("add " + Quoted(collection) + " " + Quoted(media), tmp.Path()).code, 0);
    const std::string tracks = Cli("dump " + Quoted(collection), tmp.Path()).out;

    const CliRun copy = Cli("copy " + Quoted(collection) + " " + Quoted(full.point) + " --all", tmp.Path());
    EXPECT_EQ(copy.code, 1) << copy.out << copy.err;
    int arrived = 0;
    for (int i = 0; i < 5; ++i) {
        const fs::path copied = full.point / ("t" + std::to_string(i) + ".mp3");
        const bool there = fs::exists(copied);
        arrived += there;
        EXPECT_EQ(testing::Bytes(media / copied.filename()), bytes(i));
        EXPECT_TRUE(!there || testing::Bytes(copied) == bytes(i)) << copied << " is not whole";
        EXPECT_EQ(copy.out.find("failed to copy to ---> " + copied.string()) == std::string::npos, there) << copy.out;
    }
    EXPECT_TRUE(arrived >= 1 && arrived < 5) << arrived << " arrived";
    for (const auto& entry : fs::directory_iterator(full.point))
        EXPECT_NE(entry.path().filename().string().front(), '.') << "left behind: " << entry.path();
    EXPECT_EQ(Cli("dump " + Quoted(collection), tmp.Path()).out, tracks);
}

}  // namespace
}  // namespace velmora
