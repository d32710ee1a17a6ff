// velmora-cli play run as a program over the golden Collection, its Tracks
// now silent files: what it refuses, and how a sleep or a quit signal ends
// it. Bad media and damaged Collections go through the corpus.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;

// The golden Collection over two silent WAV files of `samples` samples each.
testing::GoldenFiles Quiet_Collection(const testing::TempFolder& tmp, uint32_t samples) {
    const fs::path one = tmp.Path() / "quiet.wav", two = tmp.Path() / "two.wav";
    testing::Put(one, testing::Wav_Bytes(samples)), testing::Put(two, testing::Wav_Bytes(samples));
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
    testing::Write_Golden(at, testing::Golden_With_Paths(one.string(), two.string()));
    return at;
}

// The header as the last save left it.
nlohmann::json Saved(const testing::GoldenFiles& at, const fs::path& scratch) {
    return nlohmann::json::parse(Cli("dump " + Quoted(at.main), scratch).out)["header"];
}

TEST(PlayCommand, RefusesWhatItCannotPlay) {
    testing::TempFolder scratch;
    for (const std::string& args : {"'" + (scratch.Path() / "none.qel").string() + "'", std::string(),
                                   std::string("a.qel --ao"), std::string("a.qel --sleep 90")})
        EXPECT_EQ(Cli("play " + args, scratch.Path()).code, 2) << args;
}

// A minute of silence, put to sleep after three seconds of it: the play
// pauses there and the save keeps the spot. Without the sleep the minute
// plays twice and the time limit ends it. The output is the default one: on
// a machine without a sound device that is the real test, and the missing
// device is told at most once.
TEST(PlayCommand, SleepPausesAfterItsTimeAndSavesWherePlayingStood) {
    testing::TempFolder tmp;
    const testing::GoldenFiles at = Quiet_Collection(tmp, 8000 * 60);
    const auto run = Cli("play " + Quoted(at.main) + " --sleep 3s", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.err.find("the sleep time is over"), std::string::npos) << run.err;
    EXPECT_LE(testing::Count(run.err, "No sound device found, files play without sound"), 1u) << run.err;
    const int position = Saved(at, tmp.Path())["Current_Position"];
    EXPECT_TRUE(position >= 2 && position <= 4) << position;
}

// play run as a process, waited for until standard error shows `after`.
std::unique_ptr<testing::ChildProcess> Player(const testing::TempFolder& tmp, const fs::path& main, const char* after) {
    const fs::path err = tmp.Path() / "err.txt";
    auto play = std::make_unique<testing::ChildProcess>(
        std::vector<std::string>{VELMORA_CLI, "play", main.string(), "--ao", "null"}, tmp.Path() / "out.txt", err);
    EXPECT_TRUE(testing::Within(20000, [&] { return Bytes(err).find(after) != std::string::npos; })) << Bytes(err);
    return play;
}

// A quit signal, as a terminal's Ctrl-C or a kill sends it: the player ends
// within seconds through its own quit, which saves once, and then by the
// signal.
void Ends_Through_The_Quit(testing::ChildProcess& play, const testing::TempFolder& tmp) {
    play.Signal(SIGTERM);
    ASSERT_TRUE(play.Ended(8000)) << "still running 8 s after the signal\n" << Bytes(tmp.Path() / "err.txt");
    const std::string said = Bytes(tmp.Path() / "err.txt");
    EXPECT_EQ(play.EndSignal(), SIGTERM) << play.Outcome() << "\n" << said;
    EXPECT_EQ(testing::Count(said, "velmora-cli: saving"), 1u) << said;
}

// The start-up logs the load's lines, then waits until its start screen has
// stood two seconds.
TEST(PlayCommand, ASignalDuringTheStartUpEndsItThroughTheQuitThatSaves) {
    testing::TempFolder tmp;
    const testing::GoldenFiles at = Quiet_Collection(tmp, 8000 * 60);
    const auto play = Player(tmp, at.main, "End loading");
    Ends_Through_The_Quit(*play, tmp);
    nlohmann::json saved = Saved(at, tmp.Path());
    EXPECT_TRUE(saved["Track_Count"] == 2 && saved["Current_Position"] >= 0) << saved;
}

// While a Track plays, the player holds the Collection: the other writers
// stop at once, name the holder and touch nothing; readers take no lock.
// Ended by a signal, it saves where playing stood and lets go.
TEST(PlayCommand, WhilePlayingNoWriterWaitsOrWritesOverItAndASignalEndsIt) {
    testing::TempFolder tmp;
    const testing::GoldenFiles at = Quiet_Collection(tmp, 8000 * 60);
    const fs::path more = tmp.Path() / "more";
    fs::create_directories(more);
    testing::Put(more / "b.mp3", "b");
    const std::string coll = Quoted(at.main);
    const auto play = Player(tmp, at.main, "/2] quiet.wav");
    const fs::path lock = at.main.string() + ".lock";
    const std::string pid = std::to_string(play->Pid());
    EXPECT_EQ(Bytes(lock), pid + " velmora-cli\n");

    const std::string main_then = Bytes(at.main);
    for (const std::string& command : {"add " + coll + " " + Quoted(more), "identify " + coll, "play " + coll}) {
        const CliRun run = Cli(command, tmp.Path());
        EXPECT_EQ(run.code, 1) << command << "\n" << run.out << run.err;
        EXPECT_NE(run.err.find("open for writing in velmora-cli (pid " + pid + ")"), std::string::npos)
            << command << "\n" << run.err;
    }
    EXPECT_TRUE(Bytes(at.main) == main_then) << "the main file changed";
    EXPECT_EQ(Cli("dump " + coll, tmp.Path()).code, 0);
    EXPECT_EQ(Cli("info " + coll, tmp.Path()).code, 0);

    std::this_thread::sleep_for(std::chrono::milliseconds(2500));
    Ends_Through_The_Quit(*play, tmp);
    EXPECT_FALSE(fs::exists(lock));
    EXPECT_GE(Saved(at, tmp.Path())["Current_Position"], 1) << "where playing stopped was saved";
    const CliRun add = Cli("add " + coll + " " + Quoted(more), tmp.Path());
    EXPECT_EQ(add.code, 0) << add.out << add.err;
    EXPECT_EQ(Saved(at, tmp.Path())["Track_Count"], 3);
}

}  // namespace
}  // namespace velmora
