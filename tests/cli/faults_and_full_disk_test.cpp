// velmora-cli over damaged Collections and a full disk: every command tells
// what is wrong in the same words, a failed save is a failing exit with its
// cause, and nothing is told as done before it is on the disk.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "cli_run.h"
#include "support/file_size_limit.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Cli;
using testing::CliRun;

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

// The three files of a Collection, as they stand: the commands must leave them so.
std::string Files(const testing::GoldenFiles& at) {
    return testing::Bytes(at.main) + "|" + testing::Bytes(at.files) + "|" + testing::Bytes(at.filters);
}

// One-second tones, made by ffmpeg.
void Tones(const fs::path& folder, std::initializer_list<const char*> names) {
    fs::create_directories(folder);
    for (const char* name : names) {
        const std::string make =
            "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=1 " + Quoted(folder / name);
        ASSERT_EQ(std::system(make.c_str()), 0) << make;
    }
}

TEST(CliFaults, EveryCommandTellsWhatKeepsTheLoadFromReadingTheCollectionWhole) {
    struct Damage {
        const char* name;
        void (*apply)(testing::Golden&);
        std::string where;  // "files" or "main": the file the words name
        std::string words;
    };
    const Damage damages[] = {
        {"class 9", [](testing::Golden& g) { g.files.replace(47 * 400, 2, "\x09\x00", 2); }, "files",
         "Track 1: Rating_Class 9 is out of range 0 to 5"},
        {"undefined byte", [](testing::Golden& g) { g.files[56 * 400 + 2 + 6] = '\x81'; }, "files",
         "Track 1: the path holds bytes code page 1253 does not define"},
        {"current beyond", [](testing::Golden& g) { g.main.replace(3 * 300, 4, "\x05\x00\x00\x00", 4); }, "main",
         "Current_Track 5 is out of range 0 to 1"},
    };
    for (const Damage& d : damages) {
        SCOPED_TRACE(d.name);
        testing::TempFolder tmp;
        fs::create_directories(tmp.Path() / "media");
        const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
        testing::Golden g = testing::Golden_Bytes();
        d.apply(g);
        testing::Write_Golden(at, g);
        const std::string words = (d.where == "files" ? at.files : at.main).string() + ": " + d.words;
        const std::string before = Files(at);
        const std::string coll = Quoted(at.main);
        for (const std::string& command : {"dump " + coll, "info " + coll, "identify " + coll,
                                           "add " + coll + " " + Quoted(tmp.Path() / "media")}) {
            const CliRun run = Cli(command, tmp.Path());
            EXPECT_EQ(run.code, 1) << command;
            EXPECT_NE(run.err.find(words), std::string::npos) << command << "\n" << run.err;
            if (!run.out.empty()) {
                EXPECT_EQ(run.out.back(), '\n') << command << " ends its last line";
            }
        }
        EXPECT_TRUE(Files(at) == before) << "the files are as they were";
    }
}

TEST(CliFaults, AFullDiskFailsTheCommandWithItsCauseAndLeavesTheCollectionAsItWas) {
    testing::TempFolder tmp;
    Tones(tmp.Path() / "media", {"a.mp3", "b.mp3"});
    const fs::path sylloges = tmp.Path() / "velmora_sylloges";
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str(), "full");
    const fs::path& collection = at.main;
    const std::string coll = Quoted(collection);
    ASSERT_EQ(Cli("add " + coll + " " + Quoted(tmp.Path() / "media"), tmp.Path()).code, 0);
    Tones(tmp.Path() / "media", {"c.mp3"});
    const std::string before = Files(at);
    // Two Tracks make a files side file of 36,000 bytes: the limit lets the
    // main file and the texts through, not the Tracks.
    const std::string cause = (sylloges / "full_files.qqel.new").string() + ": write: File too large";

    CliRun add, identify;
    {
        testing::FileSizeLimit full(20000);
        ASSERT_TRUE(full.Set());
        add = Cli("add " + coll + " " + Quoted(tmp.Path() / "media"), tmp.Path());
        identify = Cli("identify " + coll, tmp.Path());
    }
    EXPECT_EQ(add.code, 1);
    EXPECT_NE(add.err.find(": the Collection could not be saved: " + cause), std::string::npos) << add.err;
    EXPECT_EQ(add.out.find("Tracks,"), std::string::npos) << "no count of Tracks saved:\n" << add.out;
    EXPECT_EQ(identify.code, 1);
    EXPECT_NE(identify.err.find(cause), std::string::npos) << identify.err;
    EXPECT_EQ(identify.out.find("Εντάξει...Ok"), std::string::npos) << identify.out;
    EXPECT_TRUE(Files(at) == before) << "the files are as they were";

    // The pointer file cannot be written: play names it and opens nothing,
    // not even an empty default Collection.
    fs::create_directories(sylloges / "default.qr.new");
    CliRun play = Cli("play " + coll + " --ao null", tmp.Path());
    EXPECT_EQ(play.code, 1);
    EXPECT_NE(play.err.find("not played: " + (sylloges / "default.qr").string() + ": the file cannot be written"),
              std::string::npos)
        << play.err;
    EXPECT_FALSE(fs::exists(sylloges / "velmora.qel"));
    fs::remove(sylloges / "default.qr.new");

    // The save on leaving fails: the exit says so, and why.
    {
        testing::FileSizeLimit full(20000);
        ASSERT_TRUE(full.Set());
        play = Cli("play " + coll + " --ao null", tmp.Path());
    }
    EXPECT_EQ(play.code, 1) << play.err;
    EXPECT_NE(play.err.find("the Collection could not be saved: " + collection.parent_path().string() +
                            "/full_files.qqel: write: File too large"),
              std::string::npos)
        << play.err;
}

TEST(CliFaults, AddRefusesAPathTooLongForItsRecordAndSavesTheRest) {
    testing::TempFolder tmp;
    fs::path deep = tmp.Path() / "media";
    for (int i = 0; i < 2; ++i) deep /= std::string(200, 'd');
    fs::create_directories(deep);
    testing::Put(deep / "long.mp3", "");
    testing::Put(tmp.Path() / "media" / "short.mp3", "");
    const fs::path collection = tmp.Path() / "velmora_sylloges" / "x.qel";

    const CliRun add = Cli("add " + Quoted(collection) + " " + Quoted(tmp.Path() / "media") + " --subdirs", tmp.Path());
    EXPECT_EQ(add.code, 0) << add.err;
    EXPECT_NE(add.out.find("The name cannot be stored in the Collection: " + (deep / "long.mp3").string()),
              std::string::npos)
        << add.out;
    EXPECT_NE(add.out.find(": 1 Tracks, 1 new\n"), std::string::npos) << add.out;
    const CliRun dump = Cli("dump " + Quoted(collection), tmp.Path());
    EXPECT_NE(dump.out.find("\"Track_Path\": \"" + (tmp.Path() / "media" / "short.mp3").string() + "\""),
              std::string::npos)
        << dump.out;
}

}  // namespace
}  // namespace velmora
