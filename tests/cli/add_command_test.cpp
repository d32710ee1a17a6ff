// velmora-cli add run as a program over folders of real and of empty media
// files, followed through identify, dump, play, tag and ratings as a user
// would.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;

void Touch(const fs::path& path) {
    fs::create_directories(path.parent_path());
    testing::Put(path, "");
}

// The Collection lies in a program folder of its own, which start-up takes
// from the velmora_sylloges folder that holds it.
fs::path Collection_In(const testing::TempFolder& tmp) { return tmp.Path() / "velmora_sylloges" / "new.qel"; }

bool Has(const CliRun& run, const std::string& part) { return (run.out + run.err).find(part) != std::string::npos; }

TEST(AddCommand, AddsATreeThatIdentifyDumpPlayTagAndRatingsThenSee) {
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
    const std::string coll = Quoted(Collection_In(tmp));

    const CliRun add = Cli("add " + coll + " " + Quoted(media) + " --subdirs", tmp.Path());
    ASSERT_EQ(add.code, 0) << add.out << add.err;
    EXPECT_TRUE(Has(add, "Subdirectories --> 2 Αρχεία - Files ---> 3") && Has(add, "Number of Added files : 3."))
        << add.out;

    // Identify reads every Track; going on with the rest then reads none.
    for (const auto& [args, read] : {std::pair{"", ":  -3"}, {" --continue", ":  -0"}}) {
        const CliRun identify = Cli("identify " + coll + args, tmp.Path());
        ASSERT_EQ(identify.code, 0) << identify.out << identify.err;
        EXPECT_TRUE(identify.out.starts_with("Εντάξει...Ok\n")) << identify.out;
        EXPECT_TRUE(Has(identify, std::string("Calculating... ") + read)) << identify.out;
    }

    auto dump = [&] { return nlohmann::json::parse(Cli("dump " + coll, tmp.Path()).out); };
    const auto j = dump();
    ASSERT_EQ(j["tracks"].size(), 3u) << j;
    std::map<fs::path, size_t> row;  // of each file's Track in the Collection
    for (size_t r = 0; r < j["tracks"].size(); ++r) row[j["tracks"][r]["Track_Path"].get<std::string>()] = r;
    for (const Made& m : made) {
        SCOPED_TRACE(m.path);
        ASSERT_TRUE(row.contains(m.path)) << j;
        const auto& track = j["tracks"][row[m.path]];
        EXPECT_NEAR(track["Duration"].get<double>(), m.seconds, 0.1);
        EXPECT_NEAR(track["File_Size"].get<double>(), static_cast<double>(fs::file_size(m.path)) / 1048576, 1e-4);
        EXPECT_EQ(track["Identified"], true);
    }
    EXPECT_EQ(j["tracks"][row[made[0].path]]["Title"], greek);
    EXPECT_NEAR(j["tracks"][row[made[0].path]]["Bitrate"].get<double>(), 125, 8);

    // Played through a sound server that is not there: silently, told once.
    // One status line a Track, with its number, name, times and class;
    // leaving saves the Collection as closing the window does.
    const auto written = fs::last_write_time(Collection_In(tmp));
    setenv("PULSE_SERVER", "unix:/nonexistent/velmora-no-sound", 1);
    const CliRun play = Cli("play " + coll + " --ao pulse", tmp.Path());
    unsetenv("PULSE_SERVER");
    EXPECT_EQ(play.code, 0) << play.err;
    EXPECT_TRUE(Has(play, "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced")) << play.err;
    EXPECT_EQ(testing::Count(play.err, "No sound device found, files play without sound"), 1u) << play.err;
    EXPECT_FALSE(Has(play, "going on to the next one")) << play.err;
    for (const char* name : {"a tone.mp3", "b.wav", "c.mp3"}) {
        const std::regex status(std::string("\\[[123]/3\\] ") + name + "  \\d\\d:\\d\\d:\\d\\d / -\\d\\d:\\d\\d:\\d\\d  \\[-\\]");
        EXPECT_TRUE(std::regex_search(play.err, status)) << name << " was not played\n" << play.err;
    }
    EXPECT_GT(fs::last_write_time(Collection_In(tmp)), written);
    EXPECT_EQ(dump()["tracks"].size(), 3u);
    EXPECT_TRUE(Bytes(Collection_In(tmp).parent_path() / "default.qr").starts_with(Collection_In(tmp).string() + "\n"))
        << "the next start opens the Collection played";

    // Tags and ratings go into the files, checked by readers that are not
    // the program's own; a read-only file is left alone and reported.
    const fs::path& tone = made[0].path;
    const fs::path& locked = made[2].path;
    auto number = [&](const fs::path& path) { return " " + std::to_string(row[path] + 1); };
    fs::permissions(locked, fs::perms::owner_read);
    const std::string locked_bytes = Bytes(locked);
    const CliRun tag =
        Cli("tag " + coll + number(tone) + " --title 'Ωδή στη χαρά' --year 1999 --genre Λαϊκό", tmp.Path());
    ASSERT_EQ(tag.code, 0) << tag.err;
    const std::string probe = "ffprobe -v error -show_entries format_tags=title,genre -of default=nw=1 ";
    EXPECT_EQ(testing::Output(probe + Quoted(tone)), "TAG:title=Ωδή στη χαρά\nTAG:genre=Λαϊκό\n");
    const CliRun refused = Cli("tag " + coll + number(locked) + " --title x", tmp.Path());
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("c.mp3"), std::string::npos) << refused.err;
    const CliRun past = Cli("tag " + coll + " 4 --title x", tmp.Path());
    EXPECT_EQ(std::tuple(past.code, past.err.find("no Track 4") != std::string::npos), std::tuple(1, true)) << past.err;
    // The classes as added are Unmarked: written, the files hold no rating;
    // then a rating another player gave is read back as its class.
    EXPECT_EQ(Cli("ratings " + coll + " --to-files", tmp.Path()).code, 1) << "the read-only file is reported";
    EXPECT_EQ(Bytes(locked), locked_bytes);
    const std::string give = "/usr/bin/python3 -c \"from mutagen.id3 import ID3, POPM; t = ID3('" + tone.string() +
                             "'); t.add(POPM(email='x@y', rating=128)); t.save()\"";
    ASSERT_EQ(std::system(give.c_str()), 0);
    const CliRun from = Cli("ratings " + coll + " --from-files", tmp.Path());
    EXPECT_EQ(from.code, 0) << from.err;
    const auto tracks = dump()["tracks"];
    EXPECT_EQ(std::tuple(tracks[row[tone]]["Title"], tracks[row[tone]]["Rating_Class"], tracks[row[locked]]["Title"]),
              std::tuple("Ωδή στη χαρά", 3, ""));
    EXPECT_EQ(Cli("ratings " + coll + " --sideways", tmp.Path()).code, 2);
}

TEST(AddCommand, OneFolderAloneThenItsSubfoldersThenAllOverAgainAsDoubles) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media";
    for (const char* name : {"a.mp3", "B.MP3", "c.wav", "sub/d.mp3", "sub/deeper/e.mp3", "readme.txt"})
        Touch(media / name);
    // A name code page 1253 cannot carry, and a path too long for its
    // record, are refused and told, not stored.
    Touch(media / "sub" / "曲.mp3");
    const fs::path too_long = media / "sub" / std::string(200, 'd') / std::string(200, 'd') / "long.mp3";
    Touch(too_long);
    const std::string coll = Quoted(Collection_In(tmp));
    auto tracks = [&] {
        const auto j = nlohmann::json::parse(Cli("dump " + coll, tmp.Path()).out);
        std::vector<std::string> paths;
        for (const auto& t : j["tracks"]) paths.push_back(t["Track_Path"]);
        return paths;
    };
    const std::string m = media.string();
    const std::vector<std::string> top{m + "/a.mp3", m + "/B.MP3", m + "/c.wav"};
    std::vector<std::string> all = top;
    all.insert(all.end(), {m + "/sub/d.mp3", m + "/sub/deeper/e.mp3"});
    const std::string nothing_new = "Number of Added files : 0. Λάθη σε αρχεία με μηδενικό μήκος - Error in files "
                                    "with zero bytes : 0. Διπλά αρχεία - Double Files : ";
    const struct {
        std::string args;
        std::vector<std::string> said, tracks;
    } runs[] = {
        // One folder: its own files only. Every file of the folder walks the
        // whole folder again, so three new files meet each other six times.
        {Quoted(media) + "/", {"Number of Added files : 3. ", "Double Files : 6"}, top},
        // The subfolders: only what is new is added, behind the rows there were.
        {Quoted(media) + " --subdirs",
         {"Number of Added files : 2. ", "The name cannot be stored in the Collection: " + m + "/sub/曲.mp3",
          "The name cannot be stored in the Collection: " + too_long.string(), "Files not added : 2",
          ": 5 Tracks, 2 new\n"},
         all},
        // A subfolder and the whole tree again: all doubles, each folder
        // searched afresh, nothing changes.
        {Quoted(media / "sub") + " " + Quoted(media) + " --subdirs",
         {nothing_new + "2\n", nothing_new + "5\n", "5 Tracks, 0 new"},
         all},
    };
    for (const auto& r : runs) {
        SCOPED_TRACE(r.args);
        const CliRun run = Cli("add " + coll + " " + r.args, tmp.Path());
        ASSERT_EQ(run.code, 0) << run.out << run.err;
        for (const std::string& part : r.said) EXPECT_TRUE(Has(run, part)) << part << " in\n" << run.out;
        EXPECT_EQ(tracks(), r.tracks);
    }
}

// Damaged Collections and files that are no files go through the corpus.
TEST(AddCommand, ErrorsLeaveTheCollectionAsItWas) {
    testing::TempFolder tmp;
    const fs::path media = tmp.Path() / "media", gone = tmp.Path() / "gone";
    Touch(media / "a.mp3");
    const fs::path collection = Collection_In(tmp);
    const std::string coll = Quoted(collection);

    // A missing folder, or a file named for a folder: nothing is created,
    // not even the Collection.
    CliRun run = Cli("add " + coll + " " + Quoted(media) + " " + Quoted(gone) + " " + Quoted(media / "a.mp3") +
                         " --subdirs",
                     tmp.Path());
    EXPECT_EQ(std::tuple(run.code, run.out), std::tuple(1, ""));
    EXPECT_TRUE(Has(run, gone.string() + ": no such folder")) << run.err;
    EXPECT_TRUE(Has(run, (media / "a.mp3").string() + ": not a folder")) << run.err;
    EXPECT_FALSE(fs::exists(collection.parent_path()));

    ASSERT_EQ(Cli("add " + coll + " " + Quoted(media), tmp.Path()).code, 0);
    const fs::path side = collection.parent_path() / "new_files.qqel";
    const std::string main_bytes = Bytes(collection);
    Touch(media / "b.mp3");
    EXPECT_EQ(Cli("add " + coll + " " + Quoted(gone), tmp.Path()).code, 1) << "a missing folder, the Collection there";
    EXPECT_EQ(Bytes(collection), main_bytes);

    // A files side file cut short: the Collection is not read whole, so the
    // add would save over Tracks it never saw. That it leaves the files as
    // they were, the corpus checks.
    fs::resize_file(side, 400 * 20);
    run = Cli("add " + coll + " " + Quoted(media), tmp.Path());
    EXPECT_EQ(std::tuple(run.code, Has(run, "could not be read whole")), std::tuple(1, true)) << run.err;

    EXPECT_EQ(Cli("add " + coll, tmp.Path()).code, 2) << "a folder is needed";
    EXPECT_EQ(Cli("add " + coll + " " + Quoted(media) + " --deep", tmp.Path()).code, 2);
}

}  // namespace
}  // namespace velmora
