// velmora-cli filter and search over the golden Collection: the rows of the
// list that counts, as the window would hold them, and nothing written.

#include <gtest/gtest.h>

#include <filesystem>

#include "cli_run.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

std::string B(int n) { return std::string(static_cast<size_t>(n), ' '); }

struct CatalogueCli : ::testing::Test {
    testing::TempFolder tmp;
    testing::GoldenFiles at = testing::Golden_Files_In(tmp.Str(), "c");
    CatalogueCli() { testing::Write_Golden(at); }
    CliRun Run(const std::string& args) { return Cli(args, tmp.Path()); }
    std::string File() const { return "'" + at.main.string() + "'"; }
};

TEST_F(CatalogueCli, FilterPrintsTheRowsOfTheListThatCounts) {
    const testing::Golden before = testing::Golden_Bytes();
    // Track 2 is of class A; its row in full, head rows first.
    CliRun run = Run("filter " + File() + " --class A");
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string track2 = "000001|000002|Title B" + B(38) + "|Κλάση Α΄ - Class A  |00:05:02 |01.00Gb" + B(3) +
                               "|320Kbps|" + B(15) + "|Artist B" + B(12) + "|" + B(50) + "|" + B(4) + "|b.mp3" +
                               B(55) + "|/home/" + B(250) + "|\n";
    ASSERT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3) << run.out;
    EXPECT_TRUE(run.out.starts_with("FILTER| TOTAL|")) << run.out;
    EXPECT_TRUE(run.out.ends_with(track2)) << run.out;

    // Boxes combine: an artist in other case and part of a year.
    run = Run("filter " + File() + " --artist ΜΆΝΟΣ --year 96");
    EXPECT_NE(run.out.find("\n000001|000001|Τίτλος"), std::string::npos) << run.out;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3);
    run = Run("filter " + File() + " --artist Μάνος --class A");
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2) << "the heads alone";

    // No choice: every Track, numbered twice.
    run = Run("filter " + File());
    EXPECT_NE(run.out.find("\n000002|000002|Title B"), std::string::npos) << run.out;

    // What was read is as it was, and nothing was added beside it.
    EXPECT_EQ(testing::Bytes(at.main), before.main);
    EXPECT_EQ(testing::Bytes(at.files), before.files);
    EXPECT_EQ(testing::Bytes(at.filters), before.filters);
}

TEST_F(CatalogueCli, SearchPrintsTheNumberAndPathOfEachRowHoldingTheText) {
    CliRun run = Run("search " + File() + " '  ΜΆΝΟΣ '");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "000001\t/home/μουσική/α.mp3\n");
    run = Run("search " + File() + " .mp3");
    EXPECT_EQ(run.out, "000001\t/home/μουσική/α.mp3\n000002\t/home/b.mp3\n");
    EXPECT_EQ(Run("search " + File() + " nowhere").out, "");
}

TEST_F(CatalogueCli, WrongCallsAndDamagedCollectionsAreTold) {
    EXPECT_EQ(Run("filter " + File() + " --class Q").code, 2);
    EXPECT_EQ(Run("filter " + File() + " --artist").code, 2);
    EXPECT_EQ(Run("search " + File()).code, 2);
    const CliRun missing = Run("filter '" + tmp.Str() + "none.qel'");
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("no such Collection file"), std::string::npos) << missing.err;

    // The files side file cut inside the second Track: the first is printed,
    // and the exit code says the Collection was not read whole.
    testing::Golden g = testing::Golden_Bytes();
    testing::Put(at.files, g.files.substr(0, 45 * 400 + 100));
    const CliRun cut = Run("search " + File() + " mp3");
    EXPECT_EQ(cut.code, 1);
    EXPECT_EQ(cut.out, "000001\t/home/μουσική/α.mp3\n");
    EXPECT_NE(cut.err.find("could not be read whole"), std::string::npos) << cut.err;
    EXPECT_EQ(testing::Bytes(at.files), g.files.substr(0, 45 * 400 + 100));
}

}  // namespace
}  // namespace velmora
