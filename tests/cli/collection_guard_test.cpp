// velmora-cli over a Collection another velmora-cli is playing, and over
// Collection files that are folders, pipes or broken links: no writer
// waits, none writes over another or over what is not a regular file.

#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <thread>

#include "cli_run.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;
using testing::Cli;
using testing::CliRun;

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

// velmora-cli play in the background, standard error to a file.
pid_t Start_Playing(const fs::path& collection, const fs::path& err_file) {
    const pid_t child = fork();
    if (child == 0) {
        const int in = open("/dev/null", O_RDONLY), err = open(err_file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(in, STDIN_FILENO), dup2(err, STDERR_FILENO), dup2(err, STDOUT_FILENO);
        execl(VELMORA_CLI, VELMORA_CLI, "play", collection.c_str(), "--ao", "null", static_cast<char*>(nullptr));
        _exit(127);
    }
    return child;
}

bool Eventually(const std::function<bool()>& done) {
    for (int i = 0; i < 200; ++i) {
        if (done()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return false;
}

TEST(CollectionGuard, AWriterWaitsForNoOneAndWritesOverNoOne) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media", more = tmp.Path() / "more";
    fs::create_directories(media), fs::create_directories(more);
    const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=30 " +
                             Quoted(media / "long.mp3");
    ASSERT_EQ(std::system(make.c_str()), 0);
    std::ofstream(more / "b.mp3") << "b";
    const fs::path collection = tmp.Path() / "velmora_sylloges" / "two.qel";
    const std::string coll = Quoted(collection);
    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);

    const pid_t player = Start_Playing(collection, tmp.Path() / "play.txt");
    ASSERT_GT(player, 0);
    const fs::path lock = collection.string() + ".lock";
    const std::string holder = "velmora-cli (pid " + std::to_string(player) + ")";
    ASSERT_TRUE(Eventually([&] { return Bytes(lock) == std::to_string(player) + " velmora-cli\n"; }))
        << Bytes(tmp.Path() / "play.txt");

    // The other writers stop at once, name the holder and touch nothing.
    const std::string main_then = Bytes(collection);
    for (const std::string& command : {"add " + coll + " " + Quoted(more), "identify " + coll, "play " + coll}) {
        const CliRun run = Cli(command, tmp.Path());
        EXPECT_EQ(run.code, 1) << command << "\n" << run.out << run.err;
        EXPECT_NE(run.err.find("open for writing in " + holder), std::string::npos) << command << "\n" << run.err;
    }
    EXPECT_TRUE(Bytes(collection) == main_then) << "the main file changed";
    // Readers take no lock.
    EXPECT_EQ(Cli("dump " + coll, tmp.Path()).code, 0);
    EXPECT_EQ(Cli("info " + coll, tmp.Path()).code, 0);

    // Once the player has saved and gone, the add goes through.
    kill(player, SIGTERM);
    int status = 0;
    ASSERT_EQ(waitpid(player, &status, 0), player);
    // The player saves, then ends by the signal it was sent.
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << Bytes(tmp.Path() / "play.txt");
    EXPECT_FALSE(fs::exists(lock));
    const CliRun add = Cli("add " + coll + " " + Quoted(more), tmp.Path());
    EXPECT_EQ(add.code, 0) << add.out << add.err;
    const auto j = nlohmann::json::parse(Cli("dump " + coll, tmp.Path()).out);
    EXPECT_EQ(j["tracks"].size(), 2u);
}

TEST(CollectionGuard, WhatIsNoRegularFileIsToldAndLeftAlone) {
    using Make = std::function<void(const fs::path&)>;
    const Make fifo = [](const fs::path& p) { ASSERT_EQ(mkfifo(p.c_str(), 0600), 0); };
    struct Case {
        const char* name;
        bool side;  // the files side file rather than the main file
        Make make;
        const char* told;
    };
    const Case cases[] = {
        {"a folder", false, [](const fs::path& p) { fs::create_directory(p); }, "a folder, not a regular file"},
        {"a link to nothing", false, [](const fs::path& p) { fs::create_symlink("/no/such.qel", p); },
         "a link to a file that does not exist"},
        {"a loop of links", false, [](const fs::path& p) { fs::create_symlink(p.filename(), p); }, "a loop of links"},
        {"a link to /dev/zero", false, [](const fs::path& p) { fs::create_symlink("/dev/zero", p); }, "a device"},
        {"a pipe", false, fifo, "a named pipe"},
        {"a pipe as the files side file", true, fifo, "a named pipe"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        testing::TempFolder tmp;
        const fs::path media = tmp.Path() / "media";
        fs::create_directories(media);
        std::ofstream(media / "a.mp3") << "a";
        const fs::path collection = tmp.Path() / "velmora_sylloges" / "c.qel";
        const fs::path side = tmp.Path() / "velmora_sylloges" / "c_files.qqel";
        ASSERT_EQ(Cli("add " + Quoted(collection) + " " + Quoted(media), tmp.Path()).code, 0);
        if (!c.side) {
            // The main file gone, its files side file of many Tracks still there.
            std::ofstream(side, std::ios::binary | std::ios::app) << std::string(90000, 'x');
            fs::remove(collection);
        } else {
            fs::remove(side);
        }
        c.make(c.side ? side : collection);
        const auto before = testing::File_Tree(tmp.Path());

        testing::TempFolder scratch;
        for (const char* name : {"identify", "add", "play", "dump", "info"}) {
            const std::string command = name;
            const std::string args = command == "add" ? " " + Quoted(media) : "";
            const CliRun run = Cli(command + " " + Quoted(collection) + args, scratch.Path());
            EXPECT_NE(run.code, 0) << command << "\n" << run.out << run.err;
            EXPECT_NE(run.err.find(c.told), std::string::npos) << command << "\n" << run.err;
            EXPECT_TRUE(testing::File_Tree(tmp.Path()) == before) << command << " changed what stood there";
        }
    }
}

}  // namespace
}  // namespace velmora
