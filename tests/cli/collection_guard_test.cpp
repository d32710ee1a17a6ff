// velmora-cli over a Collection another velmora-cli is playing: no writer
// waits, none writes over another.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/golden_collection.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;

TEST(CollectionGuard, AWriterWaitsForNoOneAndWritesOverNoOne) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media", more = tmp.Path() / "more";
    fs::create_directories(media), fs::create_directories(more);
    testing::Put(media / "long.wav", testing::Wav_Bytes(8000 * 30));
    testing::Put(more / "b.mp3", "b");
    const fs::path collection = tmp.Path() / "velmora_sylloges" / "two.qel";
    const std::string coll = Quoted(collection);
    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);

    const fs::path said = tmp.Path() / "play.txt";
    testing::ChildProcess player({VELMORA_CLI, "play", collection.string(), "--ao", "null"}, tmp.Path() / "out.txt",
                                 said);
    const fs::path lock = collection.string() + ".lock";
    const std::string pid = std::to_string(player.Pid());
    ASSERT_TRUE(testing::Within(20000, [&] { return Bytes(lock) == pid + " velmora-cli\n"; })) << Bytes(said);
    const std::string holder = "velmora-cli (pid " + pid + ")";

    // The other writers stop at once, name the holder and touch nothing.
    const std::string main_then = Bytes(collection);
    for (const std::string& command : {"add " + coll + " " + Quoted(more), "identify " + coll, "play " + coll}) {
        const testing::CliRun run = Cli(command, tmp.Path());
        EXPECT_EQ(run.code, 1) << command << "\n" << run.out << run.err;
        EXPECT_NE(run.err.find("open for writing in " + holder), std::string::npos) << command << "\n" << run.err;
    }
    EXPECT_TRUE(Bytes(collection) == main_then) << "the main file changed";
    // Readers take no lock.
    EXPECT_EQ(Cli("dump " + coll, tmp.Path()).code, 0);
    EXPECT_EQ(Cli("info " + coll, tmp.Path()).code, 0);

    // The player saves, ends by the signal it was sent, and lets go: the add goes through.
    player.Signal(SIGTERM);
    ASSERT_TRUE(player.Ended(10000));
    EXPECT_EQ(player.EndSignal(), SIGTERM) << Bytes(said);
    EXPECT_FALSE(fs::exists(lock));
    const testing::CliRun add = Cli("add " + coll + " " + Quoted(more), tmp.Path());
    EXPECT_EQ(add.code, 0) << add.out << add.err;
    EXPECT_EQ(nlohmann::json::parse(Cli("dump " + coll, tmp.Path()).out)["tracks"].size(), 2u);
}

}  // namespace
}  // namespace velmora
