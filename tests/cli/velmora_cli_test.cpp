// velmora-cli run as a program over Collection files written here record by
// record, so the tool is checked against the format and not against itself.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "base/record_file.h"
#include "cli_run.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

using testing::Cli;
using testing::CliRun;

// A Collection of two Tracks below velmora_sylloges, its files side file in
// the load's spelling, and a filter file beside it.
struct CollectionFiles {
    explicit CollectionFiles(const fs::path& root) {
        fs::create_directories(root / "velmora_sylloges");
        fs::create_directories(root / "velmora_filtra");
        main = (root / "velmora_sylloges" / "μουσική.qel").string();
        files = (root / "velmora_sylloges" / "μουσική_Files.qqel").string();
        filters = (root / "velmora_filtra" / "μουσική_filters.qqel").string();

        RecordFile m;
        m.Open(main, 300);
        m.PutString(1, "5.0");
        m.PutString(2, "/");
        m.PutString(3, "/home/ελένη/music");
        m.PutLong(4, 1);
        m.PutLong(5, 95);
        m.PutLong(6, 2);
        m.PutInteger(7, -1);
        m.PutString(11, "/alarm.mp3");
        for (int c = 0; c < 6; ++c) m.PutInteger(12 + c, c == 5 ? -1 : 0);
        m.PutLong(18, 2);
        m.PutLong(19, 1);
        m.Close();

        // Track 0: S, played, 245.1234 s, 5.1234 Mb; Track 1: unmarked, 1 h, 1024 Mb.
        const int64_t duration[2] = {2451234, 36000000}, size[2] = {51234, 10240000};
        RecordFile f;
        f.Open(files, 400);
        for (int i = 0; i < 2; ++i) {
            const int64_t b = 45 * i;
            f.PutLong(b + 1, 1 - i);
            f.PutCurrency(b + 2, Currency::FromRaw(duration[i]));
            f.PutInteger(b + 3, static_cast<int16_t>(5 - 5 * i));
            f.PutCurrency(b + 4, Currency::FromRaw(size[i]));
            f.PutCurrency(b + 5, Currency(120 * i));
            f.PutInteger(b + 6, 320);
            const char* texts[6] = {"Μάνος Χατζιδάκις", "Soundtrack", "Άλμπουμ", "Τίτλος", "1960",
                                    i == 0 ? "/home/ελένη/a.mp3" : "/home/ελένη/b.mp3"};
            for (int k = 0; k < 6; ++k) f.PutString(b + 7 + k, texts[k]);
            f.PutBoolean(b + 13, i == 0);
            for (int j = 0; j < 16; ++j) {
                f.PutInteger(b + 14 + 2 * j, static_cast<int16_t>(j == 15 ? -7 : j));
                f.PutString(b + 15 + 2 * j, j == 3 ? "σχόλιο" : "");
            }
        }
        f.Close();

        RecordFile l;
        l.Open(filters, 600);
        const int16_t counts[9] = {2, 0, 0, 0, 0, 0, 0, 1, 2};
        for (int r = 0; r < 9; ++r) l.PutInteger(r + 1, counts[r]);
        l.PutString(10, "Ασημείωτα - Unmarked");
        l.PutString(11, "Μάνος Χατζιδάκις");
        l.PutString(12, "1960");
        for (int r = 0; r < 3; ++r) l.PutString(13 + r, "row " + std::to_string(r));
        l.Close();
    }
    std::string main, files, filters;
};

TEST(VelmoraCli, DumpShowsEveryStoredFieldUnderItsName) {
    testing::TempFolder tmp;
    CollectionFiles c(tmp.Path());
    const CliRun run = Cli("dump '" + c.main + "'", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.err;
    const auto j = nlohmann::json::parse(run.out);

    const auto& h = j["header"];
    EXPECT_EQ(h["Dir"], "/home/ελένη/music");
    EXPECT_EQ(h["Current_Position"], 95);
    EXPECT_EQ(h["Video_Mode"], -1);
    EXPECT_EQ(h["Alarm_File"], "/alarm.mp3");
    EXPECT_EQ(h["Class_Play"], nlohmann::json({0, 0, 0, 0, 0, -1}));

    ASSERT_EQ(j["tracks"].size(), 2u);
    const auto& t = j["tracks"][0];
    EXPECT_EQ(t["Duration"].get<double>(), 245.1234);
    EXPECT_NE(run.out.find("\"Duration\": 245.1234,"), std::string::npos) << "four decimals as they are stored";
    EXPECT_EQ(t["Rating_Class"], 5);
    EXPECT_EQ(t["File_Size"].get<double>(), 5.1234);
    EXPECT_EQ(t["Artist"], "Μάνος Χατζιδάκις");
    EXPECT_EQ(t["Track_Path"], "/home/ελένη/a.mp3");
    EXPECT_EQ(t["Identified"], true);
    EXPECT_EQ(t["Slot_Value"][15], -7);
    EXPECT_EQ(t["Slot_Text"][3], "σχόλιο");
    EXPECT_EQ(j["tracks"][1]["Stop_Position"].get<double>(), 120.0);

    const auto& f = j["filters"];
    EXPECT_EQ(f["Combo4_0(1)"], nlohmann::json({"Ασημείωτα - Unmarked", "Μάνος Χατζιδάκις"}));
    EXPECT_EQ(f["Combo4_0(8)"], nlohmann::json({"1960"}));
    EXPECT_EQ(f["List5"], nlohmann::json({"row 0", "row 1", "row 2"})) << "record 9 is the count less one";
}

TEST(VelmoraCli, InfoSumsTheClassesAndShowsLargeSizesInGigabytes) {
    testing::TempFolder tmp;
    CollectionFiles c(tmp.Path());
    const CliRun run = Cli("info '" + c.main + "'", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("Tracks:      2\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("Played:      1 in this cycle"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("  S               1  000:00:04:05  5.12 Mb\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("  Unmarked        1  000:01:00:00  1.00 Gb\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("  all             2  000:01:04:05  1.01 Gb\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(c.filters), std::string::npos);
}

TEST(VelmoraCli, ReadErrorsGoToStandardErrorWithAFailingCode) {
    testing::TempFolder tmp;
    CollectionFiles c(tmp.Path());
    // The second Track loses its last records.
    fs::resize_file(c.files, 45 * 400 + 20 * 400);
    CliRun run = Cli("dump '" + c.main + "'", tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("Track 1"), std::string::npos) << run.err;
    EXPECT_EQ(nlohmann::json::parse(run.out)["tracks"].size(), 1u) << "what was read still comes out whole";

    run = Cli("info '" + (tmp.Path() / "missing.qel").string() + "'", tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("missing.qel"), std::string::npos);
    EXPECT_TRUE(run.out.empty());

    run = Cli("frobnicate x", tmp.Path());
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("usage"), std::string::npos);
    run = Cli("--version", tmp.Path());
    EXPECT_EQ(run.out, "velmora-cli " VELMORA_VERSION "\n");
}

}  // namespace
}  // namespace velmora
