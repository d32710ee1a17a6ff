// velmora-cli tag and ratings run as programs over real files, checked by
// dump and by readers that are not the program's own.

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Output;

nlohmann::json Tracks(const std::string& coll, const fs::path& scratch) {
    const CliRun dump = Cli("dump " + coll, scratch);
    return nlohmann::json::parse(dump.out, nullptr, false)["tracks"];
}

TEST(TagCommand, WritesTagsAndRatingsBothWaysAndLeavesAReadOnlyFileAlone) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media";
    Tones(media, {"a.mp3", "b.mp3", "c.mp3"});
    fs::permissions(media / "c.mp3", fs::perms::owner_read);
    const std::string coll = Quoted(tmp.Path() / "velmora_sylloges" / "t.qel");
    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);

    const CliRun tag = Cli("tag " + coll + " 1 --title 'Ωδή στη χαρά' --year 1999 --genre Λαϊκό", tmp.Path());
    ASSERT_EQ(tag.code, 0) << tag.err;
    EXPECT_EQ(Output("ffprobe -v error -show_entries format_tags=title,genre -of default=nw=1 " +
                     Quoted(media / "a.mp3")),
              "TAG:title=Ωδή στη χαρά\nTAG:genre=Λαϊκό\n");
    EXPECT_EQ(Tracks(coll, tmp.Path())[0]["Title"], "Ωδή στη χαρά");

    const std::string before = testing::Bytes(media / "c.mp3");
    const CliRun refused = Cli("tag " + coll + " 3 --title x", tmp.Path());
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("c.mp3"), std::string::npos) << refused.err;
    EXPECT_EQ(testing::Bytes(media / "c.mp3"), before);
    EXPECT_EQ(Tracks(coll, tmp.Path())[2]["Title"], "");
    EXPECT_EQ(Cli("tag " + coll + " 4 --title x", tmp.Path()).code, 1) << "no such Track";

    // The classes as added are Unmarked: written, the files hold no rating;
    // then a rating another player gave is read back as its class.
    const CliRun to = Cli("ratings " + coll + " --to-files", tmp.Path());
    EXPECT_EQ(to.code, 1) << "the read-only file is reported";
    EXPECT_EQ(testing::Bytes(media / "c.mp3"), before);
    const std::string give = "/usr/bin/python3 -c \"from mutagen.id3 import ID3, POPM; t = ID3('" +
                             (media / "b.mp3").string() + "'); t.add(POPM(email='x@y', rating=128)); t.save()\"";
    ASSERT_EQ(std::system(give.c_str()), 0);
    const CliRun from = Cli("ratings " + coll + " --from-files", tmp.Path());
    EXPECT_EQ(from.code, 0) << from.err;
    EXPECT_EQ(Tracks(coll, tmp.Path())[1]["Rating_Class"], 3);
    EXPECT_EQ(Cli("ratings " + coll + " --sideways", tmp.Path()).code, 2);
}

}  // namespace
}  // namespace velmora
