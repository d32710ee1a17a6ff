// velmora-cli identify run as a program over a Collection of a real file, a
// truncated one, random bytes and a file that is gone.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/startup.h"
#include "cli_run.h"
#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "core/track_table.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

using testing::Cli;
using testing::CliRun;

TEST(IdentifyCommand, ReadsEveryTrackSurvivesBadFilesAndContinueReadsNothingTwice) {
    testing::TestApp app;
    const fs::path media = app.folder.Path() / "media";
    fs::create_directories(media);
    const std::string tone = (media / "τόνος.mp3").string();
    const std::string make =
        "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=1.5 -b:a 128k '" + tone + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);
    {
        std::ifstream in(tone, std::ios::binary);
        std::string bytes(std::istreambuf_iterator<char>(in), {});
        std::ofstream((media / "cut.mp3").string(), std::ios::binary) << bytes.substr(0, 700);
        std::string noise(4096, '\0');
        for (size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>((i * 2654435761u) >> 13);
        std::ofstream((media / "noise.ogg").string(), std::ios::binary) << noise;
    }
    Form_Load(app.ctx);
    const std::string paths[] = {tone, (media / "cut.mp3").string(), (media / "noise.ogg").string(),
                                 (media / "gone.mp3").string()};
    for (int i = 0; i < 4; ++i) {
        app.ctx.form1.List2.AddItem(paths[i]);
        for (auto& mirror : app.ctx.form1.List3_0) mirror.AddItem(Row_Number_Text(i));
    }
    app.ctx.table.Track_Count = 4;
    app.ctx.table.Grow_Columns();
    Save_Collection(app.ctx, false, true);
    Form_QueryUnload(app.ctx);
    const std::string collection = app.ctx.collection.Collection_Path;

    const CliRun first = Cli("identify '" + collection + "'", app.folder.Path());
    ASSERT_EQ(first.code, 0) << first.out;
    EXPECT_NE(first.out.find("Calculating... :  -4"), std::string::npos) << first.out;
    EXPECT_EQ(first.out.rfind("Εντάξει...Ok\n", 0), 0u) << first.out;

    testing::TestApp reread;
    reread.ctx.program_folder = app.folder.Str();
    Form_Load(reread.ctx);
    const TrackTable& t = reread.ctx.table;
    ASSERT_EQ(reread.ctx.form1.List2.ListCount(), 4);
    EXPECT_NEAR(t.Duration[0].ToDouble(), 1.5, 0.1);
    EXPECT_NEAR(t.Bitrate[0], 125, 8);
    EXPECT_EQ(t.File_Size[0], Currency::FromDouble(static_cast<double>(fs::file_size(tone)) / 1048576.0));
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(t.Identified[i]) << i;
    EXPECT_EQ(t.Duration[3], Currency());
    Form_QueryUnload(reread.ctx);

    const CliRun again = Cli("identify '" + collection + "' --continue", app.folder.Path());
    ASSERT_EQ(again.code, 0) << again.out;
    EXPECT_NE(again.out.find("Calculating... :  -0"), std::string::npos) << again.out;

    // A files side file cut short: the run would save the rows it could read
    // over all of them, so it does not run, and the files stay as they were.
    const CollectionPaths p = Collection_Paths_Of(reread.ctx, collection);
    fs::resize_file(p.files, fs::file_size(p.files) / 2);
    const auto bytes = [](const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    const std::string main_before = bytes(p.main), files_before = bytes(p.files);
    const CliRun damaged = Cli("identify '" + collection + "'", app.folder.Path());
    EXPECT_EQ(damaged.code, 1) << damaged.out;
    EXPECT_EQ(bytes(p.main), main_before);
    EXPECT_EQ(bytes(p.files), files_before);
}

}  // namespace
}  // namespace velmora
