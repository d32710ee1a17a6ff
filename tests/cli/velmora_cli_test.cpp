// velmora-cli's commands that only read, run as a program over the golden
// Collection, the bytes the model's writer is checked against, so the tool
// reads what the program writes and is checked against the format, not
// against itself.

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// The golden Collection under a Greek name, its files side file in the
// load's spelling of the suffix. Standard error goes to a folder of its own,
// so that what lies beside the Collection is the commands' doing alone.
struct ReadCommand : ::testing::Test {
    testing::TempFolder tmp, scratch;
    testing::GoldenFiles at = Place(testing::Golden_Bytes());

    testing::GoldenFiles Place(const testing::Golden& g) {
        testing::GoldenFiles where = testing::Golden_Files_In(tmp.Str(), "μουσική");
        testing::Write_Golden(where, g);
        const fs::path other = where.files.parent_path() / "μουσική_Files.qqel";
        fs::rename(where.files, other);
        where.files = other;
        return where;
    }
    CliRun Run(const std::string& command, const std::string& rest = "") {
        return Cli(command + " " + Quoted(at.main) + rest, scratch.Path());
    }
};

std::string B(int n) { return std::string(static_cast<size_t>(n), ' '); }

TEST_F(ReadCommand, DumpShowsEveryStoredFieldUnderItsNameAndInfoTheTotals) {
    // Value boxes 1 and 8 hold items too: each goes out under its box's number.
    testing::Golden g = testing::Golden_Bytes();
    g.filters = testing::Golden_Filters({{"Unmarked", "\xCC\xDC\xED\xEF\xF2"}, {}, {}, {}, {}, {}, {}, {"1960"}});
    Place(g);
    CliRun run = Run("dump");
    ASSERT_EQ(run.code, 0) << run.err;
    const json j = json::parse(run.out);

    EXPECT_EQ(j["header"], json::parse(R"({"Version_String": "5.0", "Drive": "/", "Dir": "/home/μουσική",
        "Current_Track": 1, "Current_Position": 82, "Track_Count": 2, "Video_Mode": 0,
        "Alarm_File": "/alarm/ξύπνα.mp3", "Class_Play": [0, 0, 0, -1, -1, 0], "Played_Count": 2,
        "Played_High": 2})"));
    ASSERT_EQ(j["tracks"].size(), 2u);
    EXPECT_EQ(j["tracks"][0], json::parse(R"({"Played_Number": 1, "Duration": 200.0, "Rating_Class": 3,
        "File_Size": 4.5678, "Stop_Position": 12.0, "Bitrate": 128, "Artist": "Μάνος", "Genre": "Έντεχνο",
        "Album": "Album A", "Title": "Τίτλος", "Year": "1960", "Track_Path": "/home/μουσική/α.mp3",
        "Identified": true, "Slot_Value": [0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0],
        "Slot_Text": ["", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "σχόλιο"]})"));
    const json& t = j["tracks"][1];
    EXPECT_EQ(std::tuple(t["Duration"].get<double>(), t["File_Size"].get<double>(), t["Stop_Position"].get<double>()),
              std::tuple(301.5, 1024.0, 82.0));
    EXPECT_EQ(std::tuple(t["Identified"], t["Slot_Value"][15], t["Slot_Text"][0]), std::tuple(false, -1, "x"));
    EXPECT_NE(run.out.find("\"File_Size\": 4.5678,"), std::string::npos) << "four decimals as they are stored";

    const json& f = j["filters"];
    EXPECT_EQ(f["Combo4_0(1)"], json({"Unmarked", "Μάνος"}));
    EXPECT_EQ(f["Combo4_0(2)"], json::array());
    EXPECT_EQ(f["Combo4_0(8)"], json({"1960"}));
    EXPECT_EQ(f["List5"], json({"head", "", "000001|000001|Μάνος|B", "000002|000002|A"}))
        << "the rows are stored with their upper index, their count less one";

    // info sums the classes and shows large sizes in gigabytes.
    run = Run("info");
    ASSERT_EQ(run.code, 0) << run.err;
    for (const std::string& line : std::vector<std::string>{"Tracks:      2\n", "Played:      2 in this cycle (Played_Count 2, Played_High 2)\n",
          "Resumes at:  Track 1, 000:00:01:22\n", "  A               1  000:00:05:02  1.00 Gb\n",
          "  B               1  000:00:03:20  4.57 Mb\n", "  Unmarked        0  000:00:00:00  0.00 Mb\n",
          "  all             2  000:00:08:22  1.00 Gb\n", "Filters:     " + at.filters.string() + "\n"})
        EXPECT_NE(run.out.find(line), std::string::npos) << line << " in\n" << run.out;
}

// filter prints the rows of the list that counts, as the window would hold
// them; search the number and path of each row holding the text.
TEST_F(ReadCommand, FilterAndSearchPrintTheRowsThatCount) {
    // Track 2 is of class A; its row in full, head rows first.
    CliRun run = Run("filter", " --class A");
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string track2 = "000001|000002|Title B" + B(38) + "|Κλάση Α΄ - Class A  |00:05:02 |01.00Gb" + B(3) +
                               "|320Kbps|" + B(15) + "|Artist B" + B(12) + "|" + B(50) + "|" + B(4) + "|b.mp3" +
                               B(55) + "|/home/" + B(250) + "|\n";
    ASSERT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3) << run.out;
    EXPECT_TRUE(run.out.starts_with("FILTER| TOTAL|")) << run.out;
    EXPECT_TRUE(run.out.ends_with(track2)) << run.out;

    // Boxes combine: an artist in other case and part of a year.
    run = Run("filter", " --artist ΜΆΝΟΣ --year 96");
    EXPECT_NE(run.out.find("\n000001|000001|Τίτλος"), std::string::npos) << run.out;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3);
    run = Run("filter", " --artist Μάνος --class A");
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2) << "the heads alone";
    // No choice: every Track, numbered twice.
    EXPECT_NE(Run("filter").out.find("\n000002|000002|Title B"), std::string::npos);

    run = Run("search", " '  ΜΆΝΟΣ '");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "000001\t/home/μουσική/α.mp3\n");
    EXPECT_EQ(Run("search", " .mp3").out, "000001\t/home/μουσική/α.mp3\n000002\t/home/b.mp3\n");
    EXPECT_EQ(Run("search", " nowhere").out, "");
}

// The read commands only look: whatever they meet, they write, move and
// create nothing, not even a file they are told of that does not exist.
TEST_F(ReadCommand, ReadErrorsGoToStandardErrorWithAFailingCode) {
    // The second Track loses its last records.
    fs::resize_file(at.files, 45 * 400 + 20 * 400);
    const auto before = testing::File_Tree(tmp.Path());
    CliRun run = Run("dump");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("Track 1"), std::string::npos) << run.err;
    EXPECT_EQ(json::parse(run.out)["tracks"].size(), 1u) << "what was read still comes out whole";
    run = Run("info");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.out.find("Tracks:      2 (1 read)\n"), std::string::npos) << run.out;
    // The cut inside the second Track: search prints the first.
    run = Run("search", " mp3");
    EXPECT_EQ(std::tuple(run.code, run.out), std::tuple(1, "000001\t/home/μουσική/α.mp3\n"));
    EXPECT_NE(run.err.find("could not be read whole"), std::string::npos) << run.err;

    for (const auto& [command, rest] :
         {std::pair{"frobnicate", ""}, {"filter", " --class Q"}, {"filter", " --artist"}, {"search", ""}})
        EXPECT_EQ(Run(command, rest).code, 2) << command << rest;
    EXPECT_NE(Run("frobnicate").err.find("usage"), std::string::npos);

    at.main = tmp.Path() / "velmora_sylloges" / "missing.qel";
    for (const char* command : {"info", "dump", "filter"}) {
        run = Run(command);
        EXPECT_EQ(std::tuple(run.code, run.out), std::tuple(1, "")) << command;
        EXPECT_NE(run.err.find("missing.qel"), std::string::npos) << run.err;
    }
    EXPECT_NE(run.err.find("no such Collection file"), std::string::npos) << run.err;
    EXPECT_EQ(testing::File_Tree(tmp.Path()), before);

    EXPECT_EQ(Cli("--version", scratch.Path()).out, "velmora-cli " VELMORA_VERSION "\n");
}

// A copy of the program in a folder of its own: that folder is App_Path,
// and the pointer file there names the Collection a start opens.
TEST(VelmoraCli, FolderNamesTheProgramFolderAndTheLastCollection) {
    testing::TempFolder tmp;
    const fs::path copy = tmp.Path() / "velmora-cli";
    fs::copy_file(VELMORA_CLI, copy);
    fs::permissions(copy, fs::perms::owner_all);
    CliRun run = Cli("folder", tmp.Path(), copy.string());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, tmp.Str() + "\n" + tmp.Str() + "velmora_sylloges/velmora.qel\n");

    fs::create_directories(tmp.Path() / "velmora_sylloges");
    testing::Put(tmp.Path() / "velmora_sylloges" / "default.qr", "/m/\xCC\xDC\xED\xEF\xF2.qel\r\n 1  2 \r\n");
    run = Cli("folder", tmp.Path(), copy.string());
    EXPECT_EQ(run.out, tmp.Str() + "\n/m/Μάνος.qel\n") << "the path read from code page 1253";
}

}  // namespace
}  // namespace velmora
