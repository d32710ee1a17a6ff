// One press plays a Collection of five short files through libmpv (null
// outputs) on Qt's loop, and the walk numbers them as they were played.

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <string>
#include <vector>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "media_folder.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "playback/transport.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

TEST(PlayThrough, FiveFilesPlayByThemselvesAfterOnePress) {
    std::vector<testing::TrackRow> rows;
    const testing::MediaFolder media("velmora-play", [&](testing::MediaFolder& f) {
        for (int i = 0; i < 5; ++i) {
            const std::string name = "tone_" + std::to_string(i) + ".mp3";
            f.Ffmpeg("-f lavfi -i sine=frequency=" + std::to_string(330 + 110 * i) + ":duration=1 " + f.Q(name));
            rows.push_back({f.Path(name), 1.0});
        }
    });
    ASSERT_EQ(media.error, "");
    testing::TempFolder folder;

    QtEventLoop loop;
    testing::ScriptedDialogs dialogs;
    testing::RecordingShell shell;
    const MpvEngine::Options quiet{"null", "null", 0};
    MpvEngine player(loop, quiet), reader(loop, quiet), video(loop, quiet), second(loop, quiet);
    ASSERT_EQ(player.InitError(), "");
    AppContext ctx(Ports{loop, dialogs, shell, player, reader, video, second});
    ctx.program_folder = folder.Str();
    Form_Load(ctx);
    ctx.settings.Auto_Start = 0;  // the preferences file of a first run holds the default
    testing::Fill_Tracks(ctx, rows);

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
            for (int row : order) numbers_at_save.push_back(ctx.table.Played_Number[row]);
        }
    }
    std::printf("five one-second files played through in %lld ms\n", static_cast<long long>(clock.elapsed()));

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
