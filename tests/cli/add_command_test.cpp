// velmora-cli add run as a program over folders of real and of empty media
// files, followed through identify, dump and play as a user would.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

using testing::Cli;
using testing::CliRun;

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

std::string Bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Touch(const fs::path& path) {
    fs::create_directories(path.parent_path());
    std::ofstream{path};
}

// The Collection lies in a program folder of its own, which start-up takes
// from the velmora_sylloges folder that holds it.
fs::path Collection_In(const testing::TempFolder& tmp) { return tmp.Path() / "velmora_sylloges" / "new.qel"; }

TEST(AddCommand, AddsATreeThatIdentifyDumpAndPlayThenSee) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "μουσική";
    fs::create_directories(media / "sub");
    const std::string greek = "Καλημέρα κόσμε";
    struct Made {
        fs::path path;
        double seconds;
        std::string options;
    };
    const Made made[] = {
        {media / "a tone.mp3", 1.5, "-b:a 128k -metadata title='" + greek + "'"},
        {media / "b.wav", 1.0, ""},
        {media / "sub" / "c.mp3", 2.0, "-b:a 64k"},
    };
    for (const Made& m : made) {
        const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=" +
                                 std::to_string(m.seconds) + " " + m.options + " " + Quoted(m.path);
        ASSERT_EQ(std::system(make.c_str()), 0) << make;
    }
    Touch(media / "notes.txt");  // not a media type: never a Track
    const fs::path collection = Collection_In(tmp);

    const CliRun add = Cli("add " + Quoted(collection) + " " + Quoted(media) + " --subdirs", tmp.Path());
    ASSERT_EQ(add.code, 0) << add.out << add.err;
    EXPECT_NE(add.out.find("Subdirectories --> 2 Αρχεία - Files ---> 3"), std::string::npos) << add.out;
    EXPECT_NE(add.out.find("Number of Added files : 3."), std::string::npos) << add.out;

    const CliRun identify = Cli("identify " + Quoted(collection), tmp.Path());
    ASSERT_EQ(identify.code, 0) << identify.out << identify.err;
    EXPECT_NE(identify.out.find("Calculating... :  -3"), std::string::npos) << identify.out;

    const CliRun dump = Cli("dump " + Quoted(collection), tmp.Path());
    ASSERT_EQ(dump.code, 0) << dump.err;
    const auto j = nlohmann::json::parse(dump.out);
    ASSERT_EQ(j["tracks"].size(), 3u) << dump.out;
    std::map<std::string, nlohmann::json> by_path;
    for (const auto& track : j["tracks"]) by_path[track["Track_Path"].get<std::string>()] = track;
    for (const Made& m : made) {
        ASSERT_TRUE(by_path.contains(m.path.string())) << m.path << "\n" << dump.out;
        const auto& track = by_path[m.path.string()];
        EXPECT_NEAR(track["Duration"].get<double>(), m.seconds, 0.1) << m.path;
        EXPECT_GT(track["File_Size"].get<double>(), 0.0) << m.path;
        EXPECT_EQ(track["Identified"], true) << m.path;
    }
    EXPECT_EQ(by_path[made[0].path.string()]["Title"], greek);

    const CliRun play = Cli("play " + Quoted(collection) + " --ao null", tmp.Path());
    EXPECT_EQ(play.code, 0) << play.err;
    EXPECT_NE(play.err.find(kCycleEnd), std::string::npos) << play.err;
    for (const char* name : {"] a tone.mp3", "] b.wav", "] c.mp3"})
        EXPECT_NE(play.err.find(name), std::string::npos) << name << " was not played\n" << play.err;
}

TEST(AddCommand, OneFolderAloneThenItsSubfoldersThenAllOverAgainAsDoubles) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media";
    for (const char* name : {"a.mp3", "B.MP3", "c.wav", "sub/d.mp3", "sub/deeper/e.mp3", "readme.txt"})
        Touch(media / name);
    // A name code page 1253 cannot carry is refused and told, not stored.
    Touch(media / "sub" / "曲.mp3");
    const fs::path collection = Collection_In(tmp);
    const std::string coll = Quoted(collection);
    auto tracks = [&] {
        const CliRun dump = Cli("dump " + coll, tmp.Path());
        const auto j = nlohmann::json::parse(dump.out);
        std::vector<std::string> paths;
        for (const auto& t : j["tracks"]) paths.push_back(t["Track_Path"]);
        return paths;
    };

    // One folder: its own files only. Every file of the folder walks the
    // whole folder again, so three new files meet each other six times.
    CliRun run = Cli("add " + coll + " " + Quoted(media) + "/", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_NE(run.out.find("Number of Added files : 3. "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("Double Files : 6"), std::string::npos) << run.out;
    const std::string m = media.string();
    EXPECT_EQ(tracks(), (std::vector<std::string>{m + "/a.mp3", m + "/B.MP3", m + "/c.wav"}));

    // The subfolders: only what is new is added, behind the rows there were.
    run = Cli("add " + coll + " " + Quoted(media) + " --subdirs", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_NE(run.out.find("Number of Added files : 2. "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("The name cannot be stored in the Collection: " + m + "/sub/曲.mp3"), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("Files not added : 1"), std::string::npos) << run.out;
    const std::vector<std::string> all{m + "/a.mp3", m + "/B.MP3", m + "/c.wav", m + "/sub/d.mp3",
                                       m + "/sub/deeper/e.mp3"};
    EXPECT_EQ(tracks(), all);

    // A subfolder and the whole tree again: all doubles, each folder searched
    // afresh, nothing changes.
    run = Cli("add " + coll + " " + Quoted(media / "sub") + " " + Quoted(media) + " --subdirs", tmp.Path());
    ASSERT_EQ(run.code, 0) << run.out << run.err;
    const std::string nothing_new = "Number of Added files : 0. Λάθη σε αρχεία με μηδενικό μήκος - Error in files "
                                    "with zero bytes : 0. Διπλά αρχεία - Double Files : ";
    EXPECT_NE(run.out.find(nothing_new + "2\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(nothing_new + "5\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("5 Tracks, 0 new"), std::string::npos) << run.out;
    EXPECT_EQ(tracks(), all);
}

TEST(AddCommand, ErrorsLeaveTheCollectionAsItWas) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media";
    Touch(media / "a.mp3");
    const fs::path collection = Collection_In(tmp);
    const std::string coll = Quoted(collection);

    // A missing folder: nothing is created, not even the Collection.
    CliRun run = Cli("add " + coll + " " + Quoted(media) + " " + Quoted(tmp.Path() / "gone") + " --subdirs",
                     tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find((tmp.Path() / "gone").string() + ": no such folder"), std::string::npos) << run.err;
    EXPECT_TRUE(run.out.empty()) << run.out;
    EXPECT_FALSE(fs::exists(collection.parent_path()));

    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);
    const fs::path side = collection.parent_path() / "new_files.qqel";
    ASSERT_TRUE(fs::is_regular_file(side));
    const std::string main_bytes = Bytes(collection), side_bytes = Bytes(side);
    Touch(media / "b.mp3");

    run = Cli("add " + coll + " " + Quoted(tmp.Path() / "gone"), tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Bytes(collection), main_bytes);

    // A files side file cut short: the Collection is not read whole, so the
    // add would save over Tracks it never saw.
    fs::resize_file(side, 400 * 20);
    run = Cli("add " + coll + " " + Quoted(media), tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("could not be read whole"), std::string::npos) << run.err;
    EXPECT_EQ(Bytes(collection), main_bytes);
    EXPECT_EQ(Bytes(side), side_bytes.substr(0, 400 * 20));

    // Another version's file is not ours to overwrite.
    std::string foreign = main_bytes;
    foreign.replace(foreign.find("5.0"), 3, "4.1");
    std::ofstream(collection, std::ios::binary) << foreign;
    run = Cli("add " + coll + " " + Quoted(media), tmp.Path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("another version (4.1)"), std::string::npos) << run.err;
    EXPECT_EQ(Bytes(collection), foreign);

    EXPECT_EQ(Cli("add " + coll, tmp.Path()).code, 2) << "a folder is needed";
    EXPECT_EQ(Cli("add " + coll + " " + Quoted(media) + " --deep", tmp.Path()).code, 2);
}

}  // namespace
}  // namespace velmora
