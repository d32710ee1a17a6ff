// One press plays a Collection of five short files through libmpv (null
// outputs) on Qt's loop, and the walk numbers them as they were played.

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "playback/transport.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

TEST(PlayThrough, FiveFilesPlayByThemselvesAfterOnePress) {
    testing::TempFolder folder;
    const fs::path media = folder.Path() / "media";
    fs::create_directories(media);
    std::vector<std::string> files;
    for (int i = 0; i < 5; ++i) {
        files.push_back((media / ("tone_" + std::to_string(i) + ".mp3")).string());
        ASSERT_EQ(std::system(("ffmpeg -v error -y -f lavfi -i sine=frequency=" + std::to_string(330 + 110 * i) +
                               ":duration=1 '" + files.back() + "'").c_str()), 0);
    }

    QtEventLoop loop;
    testing::ScriptedDialogs dialogs;
    testing::RecordingShell shell;
    const MpvEngine::Options quiet{"null", "null", 0};
    MpvEngine player(loop, quiet), reader(loop, quiet), video(loop, quiet), second(loop, quiet);
    ASSERT_EQ(player.InitError(), "");
    AppContext ctx(Ports{loop, dialogs, shell, player, reader, video, second});
    ctx.program_folder = folder.Str();
    ctx.settings.Auto_Start = 0;
    Form_Load(ctx);
    ctx.settings.Auto_Start = 0;  // the preferences file of a first run holds the default

    TrackTable& t = ctx.table;
    t.Track_Count = 5;
    t.Dimension(5);
    for (int i = 0; i < 5; ++i) {
        ctx.form1.List2.AddItem(files[i]);
        for (auto& mirror : ctx.form1.List3_0) mirror.AddItem(Row_Number_Text(i));
        t.Duration[i] = Currency(1);
        t.Total_Duration += t.Duration[i];
        t.Saved[i] = true;
    }
    t.Current_Track = 0;
    t.Played_Count = t.Played_Number[0] = 1;
    t.Resume_Pending = -1;

    // The rows in the order the engine was given them.
    std::vector<int> order;
    Subscription recorder = player.PlayStateChange.connect([&](int) {
        const int row = ctx.form1.List2.FindExact(player.URL());
        if (row >= 0 && (order.empty() || order.back() != row)) order.push_back(row);
    });

    QElapsedTimer clock;
    clock.start();
    Command3_Click(ctx, 0);
    bool saved = false;
    std::vector<int> numbers_at_save;
    auto log = [&] { return ctx.form1.Text2[0].Text(); };
    while (log().find(kCycleEnd) == std::string::npos && clock.elapsed() < 15'000) {
        loop.WaitForEvents(50);
        if (!saved && order.size() == 5 && player.playState() == PS_Playing) {
            Save_Collection(ctx, false, true);
            saved = true;
            for (int row : order) numbers_at_save.push_back(t.Played_Number[row]);
        }
    }
    const qint64 spent = clock.elapsed();
    std::printf("five one-second files played through in %lld ms\n", static_cast<long long>(spent));

    ASSERT_NE(log().find(kCycleEnd), std::string::npos) << log();
    ASSERT_TRUE(saved);
    ASSERT_EQ(order.size(), 5u);
    EXPECT_EQ(numbers_at_save, (std::vector<int>{1, 2, 3, 4, 5}));
    // Replay mode 0: the engine lets the last file go.
    loop.WaitForEvents(200);
    EXPECT_NE(player.playState(), PS_Playing);

    // The saved Collection, read by a fresh program on the test doubles, holds the same numbers.
    testing::TestApp fresh;
    fresh.ctx.program_folder = folder.Str();
    Form_Load(fresh.ctx);
    ASSERT_EQ(fresh.ctx.form1.List2.ListCount(), 5);
    for (size_t k = 0; k < order.size(); ++k)
        EXPECT_EQ(fresh.ctx.table.Played_Number[order[k]], static_cast<int>(k) + 1) << "row " << order[k];
    Form_QueryUnload(fresh.ctx);
    Form_QueryUnload(ctx);
}

}  // namespace
}  // namespace velmora
