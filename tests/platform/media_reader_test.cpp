// The media reader over files made with ffmpeg for the run, checked against
// what ffprobe says of the same files, and over damaged files.

#include <gtest/gtest.h>

#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/popularimeterframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/xiphcomment.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <tuple>
#include <vector>

#include "media_folder.h"
#include "platform/media_reader.h"
#include "platform/mpeg_frames.h"
#include "platform/rating_tags.h"
#include "support/child_process.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Output;

const char* const kGreek = "Καλημέρα κόσμε";

const testing::MediaFolder& Files() {
    static const testing::MediaFolder folder([](testing::MediaFolder& f) {
        const std::string tone = "-f lavfi -i sine=frequency=440:duration=5 ";
        const std::string film = "-f lavfi -i testsrc=size=160x120:rate=25:duration=4 -f lavfi -i sine=duration=4 ";
        const std::string greek = std::string("-metadata title='") + kGreek + "' -metadata artist='Σωκράτης' " +
                                  "-metadata album='Ωδές' -metadata genre='Λαϊκό' -metadata date=1998 ";
        const std::string wav = "-i " + f.Q("tone.wav");
        f.Ffmpeg(tone + f.Q("tone.wav"));
        f.Ffmpeg(wav + "-b:a 128k " + greek + f.Q("cbr.mp3"));
        // Joined without a Xing header: a 320k part, then a 64k part twice as long.
        f.Ffmpeg(wav + "-b:a 320k -write_xing 0 " + f.Q("part320.mp3"));
        f.Ffmpeg("-f lavfi -i sine=frequency=300:duration=10 -b:a 64k -write_xing 0 " + f.Q("part64.mp3"));
        f.Run("cat " + f.Q("part320.mp3") + f.Q("part64.mp3") + "> " + f.Q("vbr.mp3"));
        f.Ffmpeg(wav + "-c:a libvorbis " + greek + f.Q("tone.ogg"));
        f.Ffmpeg(wav + greek + f.Q("tone.flac"));
        f.Ffmpeg(wav + "-c:a aac " + greek + f.Q("tone.m4a"));
        // The ASF muxer keeps the year only under the attribute's own name.
        f.Ffmpeg(wav + "-c:a wmav2 -metadata WM/Year=1998 " + greek + f.Q("tone.wma"));
        f.Ffmpeg(film + "-c:v mpeg1video -c:a mp2 -shortest " + f.Q("film.mpg"));
        f.Ffmpeg(film + "-c:v mpeg4 -c:a libmp3lame -shortest -metadata title=Avi " + f.Q("film.avi"));
        f.Ffmpeg(film + "-c:v mpeg4 -c:a aac -shortest -metadata title=Mp4 " + f.Q("film.mp4"));
        f.Ffmpeg("-f lavfi -i testsrc=size=64x48 -frames:v 1 " + f.Q("still.jpg"));
        f.Ffmpeg("-f lavfi -i testsrc=size=64x48 -frames:v 1 " + f.Q("still.png"));
        f.Run("cp " + f.Q("still.png") + f.Q("picture.mp3"));
    });
    return folder;
}

double FfprobeSeconds(const std::string& path) {
    return std::atof(
        Output("ffprobe -v error -show_entries format=duration -of default=nw=1:nk=1 '" + path + "'").c_str());
}

class MediaReader : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Files().error, ""); }
};

TEST_F(MediaReader, AgreesWithFfprobeOnEveryFormatKeepsGreekTagsAndKnowsPictures) {
    // Name, type and title; the Greek-tagged files carry the other Greek fields too.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"cbr.mp3", "audio", kGreek},  {"tone.ogg", "audio", kGreek}, {"tone.flac", "audio", kGreek},
        {"tone.wav", "audio", ""},     {"tone.m4a", "audio", kGreek}, {"tone.wma", "audio", kGreek},
        {"film.mpg", "video", ""},     {"film.avi", "video", "Avi"},  {"film.mp4", "video", "Mp4"},
    };
    for (const auto& [name, type, title] : cases) {
        SCOPED_TRACE(name);
        const std::string path = Files().Path(name);
        auto item = ReadMediaItem(path);
        EXPECT_NEAR(item->duration(), FfprobeSeconds(path), 0.1);
        EXPECT_GT(item->duration(), 3.5);
        EXPECT_EQ(std::tuple(item->getItemInfo("MediaType"), item->getItemInfo("Title"), item->getItemInfo("Filesize")),
                  std::tuple(type, title, std::to_string(fs::file_size(path))));
        EXPECT_GT(std::atoll(item->getItemInfo("Bitrate").c_str()), 8000);
        EXPECT_EQ(item->getItemInfo("UserRating") + item->getItemInfo("No such thing"), "");
        if (title == kGreek) {
            EXPECT_EQ(std::tuple(item->getItemInfo("Artist"), item->getItemInfo("album"), item->getItemInfo("GENRE"),
                                 item->getItemInfo("WM/Year")),
                      std::tuple("Σωκράτης", "Ωδές", "Λαϊκό", "1998"));
        }
    }
    EXPECT_NEAR(std::atof(ReadMediaItem(Files().Path("cbr.mp3"))->getItemInfo("Bitrate").c_str()), 128000, 2000);
    EXPECT_EQ(ReadMediaItem(Files().Path("tone.wav"))->getItemInfo("Bitrate"), "706000");  // 44.1 kHz, 16 bits, mono
    EXPECT_TRUE(ReadMediaItem(Files().Path("film.avi"))->isReadOnlyItem("Title")) << "no tag to write in";
    // Pictures are known by their bytes, whatever their name says.
    for (const char* name : {"still.jpg", "still.png", "picture.mp3"}) {
        auto item = ReadMediaItem(Files().Path(name));
        EXPECT_EQ(std::tuple(item->getItemInfo("MediaType"), item->duration()), std::tuple(std::string("photo"), 0.0))
            << name;
    }
}

TEST_F(MediaReader, Mp3WithoutXingHeaderGetsItsTrueLength) {
    const std::string path = Files().Path("vbr.mp3");
    // The frames as ffprobe counts them are the true length; its quick
    // answer, like any estimate from the first frame, is far off.
    const std::string counted = Output("ffprobe -v error -count_packets -of default=nw=1:nk=1 "
                                       "-show_entries stream=nb_read_packets,sample_rate '" + path + "'");
    double rate = 0, packets = 0;
    ASSERT_EQ(std::sscanf(counted.c_str(), "%lf %lf", &rate, &packets), 2) << counted;
    const double truth = packets * 1152 / rate;
    ASSERT_GT(std::abs(FfprobeSeconds(path) - truth), 2.0) << "the file must fool an estimate";

    auto item = ReadMediaItem(path);
    EXPECT_NEAR(item->duration(), truth, 0.1);
    const double bytes = static_cast<double>(fs::file_size(path));
    EXPECT_NEAR(std::atof(item->getItemInfo("Bitrate").c_str()), bytes * 8 / truth, 4000);
}

TEST_F(MediaReader, DamagedFilesGiveNothingAndDoNotCrash) {
    auto expect_nothing = [](const std::string& path) {
        SCOPED_TRACE(path);
        auto item = ReadMediaItem(path);
        EXPECT_EQ(item->duration(), 0.0);
        for (const char* name : {"Title", "MediaType", "Bitrate", "Filesize", "UserRating"})
            EXPECT_EQ(item->getItemInfo(name), "") << name;
        EXPECT_TRUE(item->isReadOnlyItem("Title") && !item->setItemInfo("Title", "x").ok());
    };
    expect_nothing(Files().Path("missing.mp3"));
    expect_nothing(Files().dir.string());

    std::mt19937 random(1253);
    std::vector<char> noise(300000);
    for (char& b : noise) b = static_cast<char>(random());
    const char* extensions[] = {"mp3", "ogg", "flac", "wav", "m4a", "wma", "mpg", "avi", "mp4", "jpg", "mkv", "bin"};
    for (const char* ext : extensions) {
        const std::string path = Files().Path(std::string("noise.") + ext);
        std::ofstream(path, std::ios::binary).write(noise.data(), static_cast<std::streamsize>(noise.size()));
        expect_nothing(path);
        const std::string empty = Files().Path(std::string("empty.") + ext);
        std::ofstream{empty};
        expect_nothing(empty);
    }

    // Cut inside the headers there is nothing to read; cut in the middle the
    // part that is left is read, never more than the whole.
    for (const char* name : {"cbr.mp3", "tone.ogg", "tone.flac", "tone.wav", "tone.m4a", "tone.wma", "film.mpg",
                             "film.avi", "film.mp4"}) {
        const std::string path = Files().Path(name);
        const auto size = fs::file_size(path);
        for (uintmax_t keep : {uintmax_t{12}, size / 2, size - 100}) {
            const std::string cut = Files().Copy(name, std::string("cut-") + name);
            fs::resize_file(cut, keep);
            const double duration = ReadMediaItem(cut)->duration();
            EXPECT_LE(duration, keep == 12 ? 0.0 : ReadMediaItem(path)->duration() + 0.1) << name << " cut to " << keep;
        }
    }
    const std::string cut = Files().Copy("cbr.mp3", "half.mp3");
    fs::resize_file(cut, fs::file_size(cut) / 2);
    EXPECT_NEAR(ReadMediaItem(cut)->duration(), 2.5, 0.3) << "the Xing header speaks of the whole file";
}

TEST(MediaReaderRating, ScalesMeetOnTheFiveStars) {
    // The same stars on the four scales: POPM, percent, FMPS, Windows Media.
    const std::tuple<int, int, double, long long, int> cases[] = {
        {0, 0, 0.0, 0, 0},       {1, 20, 0.2, 1, 1},      {31, 29, 0.29, 1, 1},   {32, 30, 0.3, 25, 25},
        {64, 40, 0.4, 25, 25},   {95, 49, 0.49, 25, 25},  {96, 50, 0.5, 50, 50},  {128, 60, 0.6, 50, 50},
        {159, 69, 0.69, 50, 50}, {160, 70, 0.7, 75, 75},  {196, 80, 0.8, 75, 75}, {223, 89, 0.89, 75, 75},
        {224, 90, 0.9, 99, 99},  {255, 100, 1.0, 99, 99}, {255, 250, 7.5, 500, 99},
    };
    for (const auto& [popm, percent, fmps, wm, expected] : cases) {
        EXPECT_EQ(UserRatingFromPopularimeter(popm), expected) << popm;
        EXPECT_EQ(UserRatingFromPercent(percent), expected) << percent;
        EXPECT_EQ(UserRatingFromFmps(fmps), expected) << fmps;
        EXPECT_EQ(UserRatingFromWindowsMedia(wm), expected) << wm;
    }
    EXPECT_EQ(std::tuple(UserRatingFromWindowsMedia(-3), UserRatingFromFmps(-0.5)), std::tuple(0, 0));
}

// Changes a copy of the file with TagLib's class for its format and answers
// the rating the reader then finds.
template <class File, class Change>
std::string Rated(const std::string& name, Change change) {
    const std::string path = Files().Copy(name, "rated-" + name);
    {
        File file(path.c_str());
        change(file);
        file.save();
    }
    return ReadMediaItem(path)->getItemInfo("UserRating");
}

TEST_F(MediaReader, ReadsTheRatingsOtherPlayersWrite) {
    namespace T = TagLib;
    // Two players' frames; the first holds no rating, the second's counts.
    EXPECT_EQ(Rated<T::MPEG::File>("cbr.mp3", [](auto& file) {
        for (auto [email, value] : {std::pair{"no@rating", 0}, std::pair{"Windows Media Player 9 Series", 196}}) {
            auto* frame = new T::ID3v2::PopularimeterFrame;
            frame->setEmail(email);
            frame->setRating(value);
            file.ID3v2Tag(true)->addFrame(frame);
        }
    }), "75");
    EXPECT_EQ(Rated<T::MPEG::File>("cbr.mp3", [](auto& file) {
        auto* txxx = new T::ID3v2::UserTextIdentificationFrame(T::String::UTF8);
        txxx->setDescription("FMPS_Rating");
        txxx->setText("0.4");
        file.ID3v2Tag(true)->addFrame(txxx);
    }), "25");
    EXPECT_EQ(Rated<T::FLAC::File>("tone.flac", [](auto& f) { f.xiphComment(true)->addField("RATING", "100"); }), "99");
    EXPECT_EQ(Rated<T::Ogg::Vorbis::File>("tone.ogg", [](auto& f) { f.tag()->addField("FMPS_RATING", "0.6"); }), "50");
    EXPECT_EQ(Rated<T::MP4::File>("tone.m4a", [](auto& f) { f.tag()->setItem("rate", T::StringList("20")); }), "1");
    EXPECT_EQ(Rated<T::ASF::File>("tone.wma", [](auto& f) {
        f.tag()->setAttribute("WM/SharedUserRating", T::ASF::Attribute(99u));
    }), "99");
}

// The frame walk on bytes made here: MPEG-1 layer III, 44.1 kHz, frames of
// 417 bytes at 128k and 1044 bytes at 320k.
std::vector<uint8_t> Frame(uint8_t bitrate_index) {
    const uint8_t head[4] = {0xFF, 0xFB, static_cast<uint8_t>(bitrate_index << 4), 0x64};
    const auto h = ParseMpegFrameHeader(head);
    std::vector<uint8_t> frame(h ? h->length : 4, 0x55);
    std::copy(head, head + 4, frame.begin());
    return frame;
}

MpegStreamCount Count(const std::vector<uint8_t>& bytes) {
    const ReadAt read = [&](int64_t at, uint8_t* buffer, size_t size) {
        const size_t n = at >= static_cast<int64_t>(bytes.size()) ? 0 : std::min(size, bytes.size() - at);
        std::copy_n(bytes.begin() + at, n, buffer);
        return n;
    };
    return CountMpegFrames(read, 0, static_cast<int64_t>(bytes.size()));
}

TEST(MediaReaderMpegFrames, CountsFramesAcrossTagsAndNoise) {
    const uint8_t head[4] = {0xFF, 0xFB, 0x90, 0x64};
    const auto h = ParseMpegFrameHeader(head);
    ASSERT_TRUE(h.has_value());
    EXPECT_EQ(std::tuple(h->bitrate_kbps, h->sample_rate, h->length, h->samples), std::tuple(128, 44100, 417, 1152));
    const uint8_t mpeg2[4] = {0xFF, 0xF3, 0x12, 0xC4};  // MPEG-2 layer III, 8k, 22.05 kHz, padded
    const auto h2 = ParseMpegFrameHeader(mpeg2);
    EXPECT_TRUE(h2 && h2->length == 27 && h2->samples == 576);
    const uint8_t reserved[4] = {0xFF, 0xFB, 0x9C, 0x64};  // sample-rate index 3
    EXPECT_FALSE(ParseMpegFrameHeader(reserved).has_value());

    std::vector<uint8_t> stream;
    auto add = [&](const std::vector<uint8_t>& part) { stream.insert(stream.end(), part.begin(), part.end()); };
    for (int i = 0; i < 3; ++i) add(Frame(0xE));  // 320k
    add({'I', 'D', '3', 4, 0, 0, 0, 0, 0, 5, 0xFF, 0xFB, 0x90, 0x64, 0});  // a tag whose body looks like a frame
    for (int i = 0; i < 4; ++i) add(Frame(0x9));
    add({0x00, 0xFF, 0xFB, 0x90, 0x64, 0x12, 0x34});  // noise with a lone header in it
    for (int i = 0; i < 2; ++i) add(Frame(0x9));
    add({0xFF, 0xFB, 0x90, 0x64, 0x00});  // a last frame cut short

    const MpegStreamCount count = Count(stream);
    EXPECT_EQ(std::tuple(count.frames, count.samples, count.bytes), std::tuple(9, 9 * 1152, 3 * 1044 + 6 * 417));
    EXPECT_NEAR(count.Seconds(), 9 * 1152 / 44100.0, 1e-9);
}

}  // namespace
}  // namespace velmora
