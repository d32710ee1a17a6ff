// velmora-cli import and export run as a program: a list from elsewhere
// made a Collection, written out and read back unchanged; and a list that
// add meets in a folder.

#include <gtest/gtest.h>

#include <filesystem>

#include "cli_run.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;

TEST(PlaylistCommand, ImportExportAndImportAgainGiveTheSameListAndAnAddTakesAListIn) {
    testing::TempFolder tmp;
    const fs::path sylloges = tmp.Path() / "velmora_sylloges";
    testing::Put(tmp.Path() / "list.m3u", "#EXTM3U\r\n#EXTINF:12,Άλφα - Βήτα\r\nm/ένα.mp3\r\nm/two.mp3\r\nm/ένα.mp3\r\n");
    const std::string first = Quoted(sylloges / "first.qel"), second = Quoted(sylloges / "second.qel");
    const CliRun made = Cli("import " + first + " " + Quoted(tmp.Path() / "list.m3u"), tmp.Path());
    EXPECT_EQ(made.code, 0) << made.err;
    EXPECT_NE(made.out.find("2 Tracks, 2 new, 1 doubles"), std::string::npos) << made.out;

    ASSERT_EQ(Cli("export " + first + " " + Quoted(tmp.Path() / "out.m3u8"), tmp.Path()).code, 0);
    const std::string m = tmp.Str() + "m/";
    EXPECT_EQ(Bytes(tmp.Path() / "out.m3u8"), "#EXTM3U\n#EXTINF:12,Άλφα - Βήτα\n#VELMORA:Artist=Άλφα\n"
                                              "#VELMORA:Title=Βήτα\n" + m + "ένα.mp3\n#EXTINF:-1,\n" + m +
                                              "two.mp3\n");
    ASSERT_EQ(Cli("import " + second + " " + Quoted(tmp.Path() / "out.m3u8"), tmp.Path()).code, 0);
    ASSERT_EQ(Cli("export " + second + " " + Quoted(tmp.Path() / "again.m3u8"), tmp.Path()).code, 0);
    EXPECT_EQ(Bytes(tmp.Path() / "again.m3u8"), Bytes(tmp.Path() / "out.m3u8"));

    // A Collection that stands is only added to when asked.
    const CliRun refused = Cli("import " + second + " " + Quoted(tmp.Path() / "list.m3u"), tmp.Path());
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("--merge"), std::string::npos);
    testing::Put(tmp.Path() / "more.m3u", "m/three.mp3\nm/two.mp3\n");
    const CliRun merged = Cli("import " + second + " " + Quoted(tmp.Path() / "more.m3u") + " --merge", tmp.Path());
    EXPECT_NE(merged.out.find("3 Tracks, 1 new, 1 doubles"), std::string::npos) << merged.out << merged.err;
    EXPECT_EQ(Cli("export " + second + " " + Quoted(tmp.Path() / "out.txt"), tmp.Path()).code, 2);

    // A list among the files of an added folder brings its entries.
    const fs::path media = tmp.Path() / "media";
    fs::create_directories(media);
    testing::Put(media / "a.mp3", "");
    testing::Put(media / "list.m3u", "other/b.mp3\r\n/elsewhere/c.mp3\r\n");
    const std::string qel = Quoted(sylloges / "c.qel");
    const CliRun added = Cli("add " + qel + " " + Quoted(media), tmp.Path());
    ASSERT_EQ(added.code, 0) << added.out << added.err;
    ASSERT_EQ(Cli("export " + qel + " " + Quoted(tmp.Path() / "all.m3u8"), tmp.Path()).code, 0);
    const std::string all = Bytes(tmp.Path() / "all.m3u8");
    for (const std::string& path : {(media / "a.mp3").string(), (media / "other/b.mp3").string(),
                                    std::string("/elsewhere/c.mp3")})
        EXPECT_EQ(testing::Count(all, "\n" + path + "\n"), 1u) << path << " in\n" << all;
    EXPECT_EQ(all.find("list.m3u"), std::string::npos) << "the list itself is no Track";
}

}  // namespace
}  // namespace velmora
