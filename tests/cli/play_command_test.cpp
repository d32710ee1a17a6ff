// velmora-cli play run as a program over the golden Collection, its Tracks
// now short silent files: what it does without a sound device, and what it
// refuses. Bad media and damaged Collections go through the corpus.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <string>

#include "cli_run.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

// This machine has no sound device, so the default output is the real test.
// A sound server that is not there makes one anywhere.
TEST(PlayCommand, WithoutASoundDeviceTheCollectionPlaysSilentlyThrough) {
    testing::TempFolder tmp;
    const fs::path one = tmp.Path() / "one.wav", two = tmp.Path() / "two.wav";
    testing::Put(one, testing::Wav_Bytes(8000)), testing::Put(two, testing::Wav_Bytes(8000));
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
    testing::Write_Golden(at, testing::Golden_With_Paths(one.string(), two.string()));
    constexpr const char* kNoSound = "No sound device found, files play without sound";
    for (const char* ao : {"", " --ao pulse"}) {
        SCOPED_TRACE(ao);
        if (*ao != '\0') setenv("PULSE_SERVER", "unix:/nonexistent/velmora-no-sound", 1);
        const auto run = Cli("play " + testing::Quoted(at.main) + ao, tmp.Path());
        unsetenv("PULSE_SERVER");
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_NE(run.err.find(kCycleEnd), std::string::npos) << run.err;
        EXPECT_EQ(run.err.find("going on to the next one"), std::string::npos) << run.err;
        // Once; at most once with the default output, which may find a device.
        const size_t told = testing::Count(run.err, kNoSound);
        EXPECT_TRUE(*ao != '\0' ? told == 1 : told <= 1) << run.err;
    }
}

TEST(PlayCommand, RefusesWhatItCannotPlay) {
    testing::TempFolder scratch;
    EXPECT_EQ(Cli("play '" + (scratch.Path() / "none.qel").string() + "'", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play a.qel --ao", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play a.qel --sleep 90", scratch.Path()).code, 2);
}

// A minute of silence, put to sleep after three seconds of it: the play
// pauses there and the save keeps the spot.
TEST(PlayCommand, SleepPausesAfterItsTimeAndSavesWherePlayingStood) {
    testing::TempFolder tmp;
    const fs::path wav = tmp.Path() / "quiet.wav";
    testing::Put(wav, testing::Wav_Bytes(8000 * 60));
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
    testing::Write_Golden(at, testing::Golden_With_Paths(wav.string(), wav.string()));
    // Without the sleep the minute plays twice and the time limit ends it.
    const auto run = Cli("play " + testing::Quoted(at.main) + " --ao null --sleep 3s", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.err.find("the sleep time is over"), std::string::npos) << run.err;
    const auto dump = Cli("dump " + testing::Quoted(at.main), tmp.Path());
    std::smatch position;
    ASSERT_TRUE(std::regex_search(dump.out, position, std::regex("\"Current_Position\": (\\d+)"))) << dump.out;
    EXPECT_TRUE(std::stoi(position[1]) >= 2 && std::stoi(position[1]) <= 4) << position[1];
}

}  // namespace
}  // namespace velmora
