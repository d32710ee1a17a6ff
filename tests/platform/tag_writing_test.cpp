// Tags and ratings written through the reader into files made with ffmpeg,
// checked by the sound's hash, by TagLib and by a reader that is not TagLib.

#include <gtest/gtest.h>

#include <sys/file.h>
#include <fcntl.h>
#include <unistd.h>

#include <taglib/id3v1tag.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/popularimeterframe.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "media_folder.h"
#include "platform/media_reader.h"
#include "support/child_process.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;
using testing::Output;

const char* const kFormats[] = {"mp3", "ogg", "opus", "flac", "m4a", "wma", "wav"};

const testing::MediaFolder& Files() {
    static const testing::MediaFolder folder([](testing::MediaFolder& f) {
        const std::string tone = "-f lavfi -i sine=frequency=440:duration=3 -metadata title=Old ";
        f.Ffmpeg(tone + "-b:a 128k -write_id3v1 1 " + f.Q("tone.mp3"));
        f.Ffmpeg(tone + "-c:a libvorbis " + f.Q("tone.ogg"));
        f.Ffmpeg(tone + "-c:a libopus " + f.Q("tone.opus"));
        f.Ffmpeg(tone + f.Q("tone.flac"));
        f.Ffmpeg(tone + "-c:a aac " + f.Q("tone.m4a"));
        f.Ffmpeg(tone + "-c:a wmav2 " + f.Q("tone.wma"));
        f.Ffmpeg(tone + f.Q("tone.wav"));
        f.Ffmpeg("-f lavfi -i testsrc=size=32x32 -frames:v 1 " + f.Q("cover.jpg"));
        for (const char* ext : {"mp3", "flac", "m4a"})
            f.Ffmpeg("-f lavfi -i sine=duration=1 -i " + f.Q("cover.jpg") + "-map 0 -map 1 -c:v copy -disposition:v attached_pic " +
                     f.Q(std::string("art.") + ext));
    });
    return folder;
}

// The hash of the sound's packets as the demuxer hands them out, tags aside.
std::string SoundHash(const std::string& path) {
    return Output("ffmpeg -v error -i '" + path + "' -map 0:a -c copy -f md5 - 2>&1");
}

class TagWriting : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Files().error, ""); }
    // A copy of the tone in that format, to change.
    static std::string Copy(const std::string& ext, const std::string& as) {
        return Files().Copy("tone." + ext, as + "." + ext);
    }
};

TEST_F(TagWriting, GreekTagsAndEveryClassRoundTripWithTheSoundUntouched) {
    const std::pair<const char*, const char*> tags[] = {{"Title", "Ένας τίτλος"}, {"Artist", "Σωκράτης"},
                                                        {"Album", "Ωδές"},        {"Year", "1998"},
                                                        {"Comment", "Σχόλιο"},    {"Genre", "017 - Ροκ - Rock"}};
    for (const char* ext : kFormats) {
        SCOPED_TRACE(ext);
        const std::string path = Copy(ext, "round");
        const std::string sound = SoundHash(path);
        ASSERT_EQ(sound.rfind("MD5=", 0), 0u) << sound;
        auto item = ReadMediaItem(path);
        ASSERT_FALSE(item->isReadOnlyItem("UserRating"));
        EXPECT_TRUE(item->isReadOnlyItem("MediaType"));
        // Each write answers the new value at once and keeps the tags written before it.
        for (auto [name, value] : tags) {
            ASSERT_TRUE(item->setItemInfo(name, value).ok()) << name;
            EXPECT_EQ(item->getItemInfo(name), value) << name;
        }
        for (auto [name, value] : {std::pair{"WM/Year", "soon"}, {"UserRating", "x"}, {"Bitrate", "1"}})
            EXPECT_FALSE(item->setItemInfo(name, value).ok()) << name;
        for (const char* written : {"1", "25", "50", "75", "99", "0"}) {
            ASSERT_TRUE(item->setItemInfo("UserRating", written).ok());
            const std::string read = ReadMediaItem(path)->getItemInfo("UserRating");
            EXPECT_EQ(read, std::string(written) == "0" ? "" : written);
        }
        auto again = ReadMediaItem(path);
        for (auto [name, value] : tags) EXPECT_EQ(again->getItemInfo(name == std::string("Year") ? "WM/Year" : name), value) << name;
        EXPECT_EQ(SoundHash(path), sound);
        EXPECT_NEAR(again->duration(), 3.0, 0.1);
        ASSERT_TRUE(item->setItemInfo("Comment", "").ok());
        EXPECT_EQ(ReadMediaItem(path)->getItemInfo("Comment"), "");
        // Nothing of the copies is left beside the file.
        for (const auto& entry : fs::directory_iterator(Files().dir))
            EXPECT_FALSE(entry.path().filename().string().ends_with(".velmora-tag"));
    }
}

// What other players read: POPM on its own scale (mp3), RATING and
// FMPS_RATING (Xiph), rate (MP4), WM/SharedUserRating (ASF).
TEST_F(TagWriting, AnotherReaderSeesTheIntendedStars) {
    const std::string script =
        "import sys, mutagen\n"
        "from mutagen.id3 import ID3\n"
        "p = sys.argv[1]\n"
        "if p.endswith('.mp3'):\n"
        "    t = ID3(p); print(t.version[1], [(f.email, f.rating) for f in t.getall('POPM')])\n"
        "elif p.endswith('.m4a'): print(mutagen.File(p)['rate'])\n"
        "elif p.endswith('.wma'): print(mutagen.File(p)['WM/SharedUserRating'][0].value)\n"
        "else: f = mutagen.File(p); print(f['RATING'], f['FMPS_RATING'])\n";
    const std::string py = (Files().dir / "read.py").string();
    std::ofstream(py) << script;
    const std::pair<const char*, const char*> expected[] = {
        {"mp3", "4 [('Velmora II', 196)]\n"}, {"ogg", "['75'] ['0.75']\n"}, {"opus", "['75'] ['0.75']\n"},
        {"flac", "['75'] ['0.75']\n"},      {"m4a", "['75']\n"},           {"wma", "75\n"}};
    for (auto [ext, seen] : expected) {
        const std::string path = Copy(ext, "other");
        ASSERT_TRUE(ReadMediaItem(path)->setItemInfo("UserRating", "75").ok()) << ext;
        EXPECT_EQ(Output("/usr/bin/python3 '" + py + "' '" + path + "' 2>&1"), seen) << ext;
    }
}

TEST_F(TagWriting, KeepsAnotherPlayersFrameAndTheId3v1TagInStep) {
    const std::string path = Copy("mp3", "frames");
    {
        TagLib::MPEG::File file(path.c_str());
        auto* popm = new TagLib::ID3v2::PopularimeterFrame;
        popm->setEmail("someone@else");
        popm->setRating(64);
        popm->setCounter(7);
        file.ID3v2Tag(true)->addFrame(popm);
        file.save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v3);
    }
    // What a write killed before its rename left beside the file.
    const fs::path stale = Files().dir / ".frames.mp3.velmora-tag";
    std::ofstream(stale) << "left by a kill";
    auto item = ReadMediaItem(path);
    ASSERT_TRUE(item->setItemInfo("UserRating", "99").ok());
    ASSERT_TRUE(item->setItemInfo("Title", "New").ok());
    EXPECT_FALSE(fs::exists(stale));
    TagLib::MPEG::File file(path.c_str());
    const auto frames = file.ID3v2Tag()->frameList("POPM");
    ASSERT_EQ(frames.size(), 1u);
    auto* popm = dynamic_cast<TagLib::ID3v2::PopularimeterFrame*>(frames.front());
    EXPECT_EQ(std::tuple(popm->email().to8Bit(), popm->rating(), popm->counter()),
              std::tuple("someone@else", 255, 7u));
    EXPECT_EQ(file.ID3v2Tag()->header()->majorVersion(), 4u);
    ASSERT_TRUE(file.hasID3v1Tag());
    EXPECT_EQ(file.ID3v1Tag()->title().to8Bit(), "New");
}

TEST_F(TagWriting, AFileThatCannotBeWrittenIsLeftAsItWas) {
    const std::string marked = Copy("mp3", "marked");
    fs::permissions(marked, fs::perms::owner_read | fs::perms::group_read);
    const std::string locked = Copy("flac", "locked");
    const int holder = ::open(locked.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    for (const std::string& path : {marked, locked}) {
        SCOPED_TRACE(path);
        const std::string before = Bytes(path);
        auto item = ReadMediaItem(path);
        const Status written = item->setItemInfo("UserRating", "50");
        EXPECT_FALSE(written.ok());
        EXPECT_NE(written.error().find(path), std::string::npos) << written.error();
        EXPECT_EQ(Bytes(path), before);
    }
    EXPECT_TRUE(ReadMediaItem(marked)->isReadOnlyItem("Title"));
    ::close(holder);

    const std::string gone = Copy("ogg", "gone");
    auto item = ReadMediaItem(gone);
    fs::remove(gone);
    EXPECT_FALSE(item->setItemInfo("Title", "x").ok());
    EXPECT_FALSE(fs::exists(gone));
    EXPECT_FALSE(ReadMediaItem(Copy("mp3", "bad"))->setItemInfo("UserRating", "100").ok());
}

TEST_F(TagWriting, ThePictureInsideAFileIsReadOnlyWhenAskedFor) {
    const std::string cover = Bytes(Files().Path("cover.jpg"));
    ASSERT_GT(cover.size(), 100u);
    for (const char* ext : {"mp3", "flac", "m4a"})
        EXPECT_EQ(ReadMediaItem(Files().Path(std::string("art.") + ext))->getItemInfo("WM/Picture"), cover) << ext;
    EXPECT_EQ(ReadMediaItem(Files().Path("tone.ogg"))->getItemInfo("WM/Picture"), "");
}

}  // namespace
}  // namespace velmora
