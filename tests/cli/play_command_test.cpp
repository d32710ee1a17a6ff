// velmora-cli play run as a program, with silent audio, over a Collection
// of two short files that a program on the test doubles wrote.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/startup.h"
#include "cli_run.h"
#include "collection/collection_file.h"
#include "core/track_table.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

using testing::Cli;

TEST(PlayCommand, PlaysTheCollectionThroughAndEndsWithTheCycle) {
    testing::TestApp app;
    const fs::path media = app.folder.Path() / "media";
    fs::create_directories(media);
    Form_Load(app.ctx);
    TrackTable& t = app.ctx.table;
    t.Track_Count = 2;
    t.Dimension(2);
    for (int i = 0; i < 2; ++i) {
        const std::string file = (media / ("tone " + std::to_string(i) + ".mp3")).string();
        const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=" + std::to_string(440 + 220 * i) +
                                 ":duration=1 '" + file + "'";
        ASSERT_EQ(std::system(make.c_str()), 0);
        app.ctx.form1.List2.AddItem(file);
        for (auto& mirror : app.ctx.form1.List3_0) mirror.AddItem(Row_Number_Text(i));
        t.Duration[i] = Currency(1);
        t.Total_Duration += t.Duration[i];
    }
    t.Current_Track = 0;
    t.Played_Count = 1;
    t.Played_Number[0] = 1;
    Save_Collection(app.ctx, false, true);
    Form_QueryUnload(app.ctx);
    const std::string collection = app.ctx.collection.Collection_Path;
    ASSERT_TRUE(fs::exists(collection)) << collection;

    const auto written = fs::last_write_time(collection);
    const auto run = Cli("play '" + collection + "' --ao null", app.folder.Path());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.err.find(kCycleEnd), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("[2/2] tone 1.mp3"), std::string::npos) << "the status names the second Track\n" << run.err;
    EXPECT_NE(run.err.find("  [-]"), std::string::npos) << "the status shows the Track's class\n" << run.err;

    // Leaving saved the Collection as closing the window does, and it still reads.
    EXPECT_GT(fs::last_write_time(collection), written);
    testing::TestApp reread;
    reread.ctx.program_folder = app.folder.Str();
    Form_Load(reread.ctx);
    EXPECT_EQ(reread.ctx.collection.Collection_Path, collection);
    EXPECT_EQ(reread.ctx.form1.List2.ListCount(), 2);
    Form_QueryUnload(reread.ctx);
}

// A Collection of the files made in media by the shell commands, added as a user adds them.
std::string Collection_Of(const testing::TempFolder& scratch, const std::vector<std::string>& commands) {
    const fs::path media = scratch.Path() / "media";
    fs::create_directories(media);
    for (const std::string& command : commands) {
        const std::string run = "cd '" + media.string() + "' && " + command;
        EXPECT_EQ(std::system(run.c_str()), 0) << command;
    }
    const std::string collection = (scratch.Path() / "velmora_sylloges" / "test.qel").string();
    const auto added = Cli("add '" + collection + "' '" + media.string() + "'", scratch.Path());
    EXPECT_EQ(added.code, 0) << added.err;
    return collection;
}

std::string Tone(const std::string& name) {
    return "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=1 '" + name + "'";
}

TEST(PlayCommand, FilesThatDoNotPlayAreNamedAndPassedAndTheRunEnds) {
    testing::TempFolder scratch;
    const std::string wav = "ffmpeg -v error -y -f lavfi -i sine=duration=1 -fflags +bitexact -flags:a +bitexact "
                            "-map_metadata -1 -c:a pcm_s16le ";
    const std::string collection = Collection_Of(
        scratch, {Tone("good 1.mp3"), Tone("good 2.mp3"), "head -c 30000 /dev/urandom > noise.mp3",
                  "head -c 30000 /dev/urandom > noise.avi",
                  // An ID3 tag that claims some 256 MB before the audio.
                  Tone("lying.mp3") + " && printf '\\177\\177\\177\\177' | "
                                      "dd of=lying.mp3 bs=1 seek=6 conv=notrunc status=none",
                  wav + "full.wav && head -c 44 full.wav > header.wav && rm full.wav",
                  // RIFF and data sizes of 0xFFFFFFF0 over a second of samples.
                  wav + "huge.wav && printf '\\360\\377\\377\\377' > size && "
                        "dd if=size of=huge.wav bs=1 seek=4 conv=notrunc status=none && "
                        "dd if=size of=huge.wav bs=1 seek=40 conv=notrunc status=none && rm size"});

    const auto run = Cli("play '" + collection + "' --ao null", scratch.Path());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.err.find(kCycleEnd), std::string::npos) << run.err;
    auto failed = [&](const std::string& name) {
        const std::string path = (scratch.Path() / "media" / name).string();
        return run.err.find(")" + path + " cannot be played") != std::string::npos ||
               run.err.find(")" + path + " made no progress") != std::string::npos;
    };
    for (const char* name : {"noise.mp3", "noise.avi", "lying.mp3", "header.wav"})
        EXPECT_TRUE(failed(name)) << name << " is named in the log\n" << run.err;
    // The lying sizes of the last WAV do not stop mpv from playing its samples.
    for (const char* name : {"good 1.mp3", "good 2.mp3", "huge.wav"}) {
        EXPECT_NE(run.err.find("] " + std::string(name) + "  "), std::string::npos) << name << "\n" << run.err;
        EXPECT_FALSE(failed(name)) << name << "\n" << run.err;
    }
}

// This machine has no sound device, so the default output is the real test.
// A sound server that is not there makes one anywhere.
TEST(PlayCommand, WithoutASoundDeviceTheCollectionPlaysSilentlyThrough) {
    testing::TempFolder scratch;
    const std::string collection = Collection_Of(scratch, {Tone("one.mp3"), Tone("two.mp3")});
    constexpr const char* kNoSound = "No sound device found, files play without sound";
    for (const char* ao : {"", " --ao pulse"}) {
        SCOPED_TRACE(ao);
        if (*ao != '\0') setenv("PULSE_SERVER", "unix:/nonexistent/velmora-no-sound", 1);
        const auto run = Cli("play '" + collection + "'" + ao, scratch.Path());
        unsetenv("PULSE_SERVER");
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_NE(run.err.find(kCycleEnd), std::string::npos) << run.err;
        EXPECT_EQ(run.err.find("going on to the next one"), std::string::npos) << run.err;
        // Once at most with the default output, which may find a device.
        EXPECT_LE(testing::Count(run.err, kNoSound), 1u) << run.err;
        if (*ao != '\0') {
            EXPECT_EQ(testing::Count(run.err, kNoSound), 1u) << run.err;
        }
    }
}

TEST(PlayCommand, RefusesWhatItCannotPlay) {
    testing::TempFolder scratch;
    EXPECT_EQ(Cli("play '" + (scratch.Path() / "none.qel").string() + "'", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play", scratch.Path()).code, 2);
    EXPECT_EQ(Cli("play a.qel --ao", scratch.Path()).code, 2);
}

}  // namespace
}  // namespace velmora
