// The window's program run as a process, drawn offscreen, sent a quit
// signal at chosen moments: it ends within seconds through its own quit,
// which saves, and then by the signal, and the Collection stays loadable.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <ostream>
#include <string>
#include <thread>

#include "cli/cli_run.h"
#include "support/child_process.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;

struct Moment {
    const char* name;
    bool old_version;  // a version-4.0 main file, whose load shows a box and waits
    int after_start_ms;  // from when the start-up has made the program's folders
    int signal;
};

// The start-up makes the folders, shows the start screen, loads, and waits
// until the start screen has stood two seconds: a signal right after the
// folders appear comes during the start-up.
const Moment kMoments[] = {
    {"DuringTheStartUp", false, 0, SIGTERM},
    {"WhileTheBoxOfAnOldVersionIsOpen", true, 1000, SIGTERM},
    {"InTheMainLoop", false, 3500, SIGINT},
};

void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

class QuitSignal : public ::testing::TestWithParam<Moment> {};

TEST_P(QuitSignal, EndsThroughTheQuitThatSavesAndThenByTheSignal) {
    const Moment& moment = GetParam();
    testing::TempFolder tmp;
    // The program's folder is the one its executable stands in.
    const fs::path program = tmp.Path() / "velmora";
    std::error_code ec;
    fs::create_hard_link(VELMORA_GUI_PROGRAM, program, ec);
    if (ec) fs::copy_file(VELMORA_GUI_PROGRAM, program);
    const testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str());
    testing::Golden g = testing::Golden_Bytes();
    if (moment.old_version) g.main.replace(2, 3, "4.0");
    testing::Write_Golden(at, g);
    const fs::path preferences = tmp.Path() / "velmora_preferences/default_pref.qr";

    ChildProcess window({program.string()}, tmp.Path() / "out.txt", tmp.Path() / "err.txt",
                        {"QT_QPA_PLATFORM=offscreen"});
    ASSERT_TRUE(window.Started());
    ASSERT_TRUE(testing::Within(20000, [&] { return fs::exists(tmp.Path() / "velmora_reports"); }))
        << testing::Bytes(tmp.Path() / "err.txt");
    std::this_thread::sleep_for(std::chrono::milliseconds(moment.after_start_ms));
    ASSERT_FALSE(fs::exists(preferences)) << "only the quit writes the preferences";
    window.Signal(moment.signal);

    ASSERT_TRUE(window.Ended(8000)) << "still running 8 s after the signal";
    EXPECT_EQ(window.EndSignal(), moment.signal) << window.Outcome();
    EXPECT_TRUE(fs::exists(preferences)) << "the quit did not run";
    const testing::CliRun dump = testing::Cli("dump " + testing::Quoted(at.main), tmp.Path());
    EXPECT_EQ(dump.code, 0) << dump.err;
    if (!moment.old_version) {
        EXPECT_NE(dump.out.find("\"Track_Count\": 2"), std::string::npos) << "the Tracks were saved";
    }
}

INSTANTIATE_TEST_SUITE_P(Window, QuitSignal, ::testing::ValuesIn(kMoments),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace velmora
