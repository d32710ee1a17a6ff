// velmora-cli play run as a process and sent a quit signal at chosen
// moments, as a terminal's Ctrl-C or a kill sends it: it ends within
// seconds through its own quit, which saves, and then by the signal.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <regex>
#include <ostream>
#include <string>
#include <thread>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;
using testing::Bytes;

struct Moment {
    const char* name;
    const char* after;    // what standard error shows before the signal goes
    int then_ms;
    int signal;
    bool played;          // a Track has played for some seconds by then
};

// The start-up logs the load's lines, then waits until its start screen has
// stood two seconds; the status line comes once a Track plays.
const Moment kMoments[] = {
    {"DuringTheStartUp", "End loading", 0, SIGTERM, false},
    {"WhilePlaying", "/2] quiet.wav", 2500, SIGTERM, true},
};

void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

class PlaySignal : public ::testing::TestWithParam<Moment> {};

TEST_P(PlaySignal, EndsThroughTheQuitThatSavesAndThenByTheSignal) {
    const Moment& moment = GetParam();
    testing::TempFolder tmp;
    const fs::path wav = tmp.Path() / "quiet.wav";
    testing::Put(wav, testing::Wav_Bytes(8000 * 60));
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
    testing::Write_Golden(at, testing::Golden_With_Paths(wav.string(), wav.string()));

    const fs::path err = tmp.Path() / "err.txt";
    ChildProcess play({VELMORA_CLI, "play", at.main.string(), "--ao", "null"}, tmp.Path() / "out.txt", err);
    ASSERT_TRUE(testing::Within(20000, [&] { return Bytes(err).find(moment.after) != std::string::npos; }))
        << Bytes(err);
    std::this_thread::sleep_for(std::chrono::milliseconds(moment.then_ms));
    play.Signal(moment.signal);

    ASSERT_TRUE(play.Ended(8000)) << "still running 8 s after the signal\n" << Bytes(err);
    const std::string said = Bytes(err);
    EXPECT_EQ(play.EndSignal(), moment.signal) << play.Outcome() << "\n" << said;
    EXPECT_EQ(testing::Count(said, "velmora-cli: saving"), 1u) << said;
    const testing::CliRun dump = testing::Cli("dump " + testing::Quoted(at.main), tmp.Path());
    ASSERT_EQ(dump.code, 0) << dump.err;
    const std::string& json = dump.out;
    EXPECT_NE(json.find("\"Track_Count\": 2"), std::string::npos) << json;
    std::smatch position;
    ASSERT_TRUE(std::regex_search(json, position, std::regex("\"Current_Position\": (\\d+)")));
    if (moment.played) {
        EXPECT_GE(std::stoi(position[1]), 1) << "where playing stopped was saved";
    }
}

INSTANTIATE_TEST_SUITE_P(Play, PlaySignal, ::testing::ValuesIn(kMoments),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace velmora
