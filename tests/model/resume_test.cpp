// Leaving in the middle of a Track and starting again on the same folder.
#include <gtest/gtest.h>

#include <cmath>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using testing::Player;
using testing::TestApp;

TEST(Resume, ARestartGoesOnAtTheSameTrackByTheStartPointMode) {
    struct Case {
        uint8_t mode;
        int second;
    } const cases[] = {{0, 0}, {1, 37}, {2, 37}};
    for (const auto& c : cases) {
        SCOPED_TRACE("Autostart_Index " + std::to_string(c.mode));
        Player first(5, 100.0);
        first.ctx.settings.Random_Order = 0;
        first.ctx.settings.Autostart_Index = c.mode;
        Save_Collection(first.ctx, false, true);  // the Collection as it stands on disk
        for (int press = 0; press < 3; ++press) first.Press();  // row 2, the third played
        first.loop.Advance(37'400);
        ASSERT_NEAR(first.player.currentPosition().value_or(0), 37, 0.5);
        Form_QueryUnload(first.ctx);

        TestApp again;
        again.ctx.program_folder = first.folder.Str();
        for (int i = 0; i < 5; ++i) again.player.SetDuration(first.Path(i), 100.0);
        Form_Load(again.ctx);  // starts playing by itself
        again.loop.Advance(400);

        const TrackTable& t = again.ctx.table;
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Number[2], t.Played_Count, again.player.URL(),
                             again.player.playState(), std::lround(again.player.currentPosition().value_or(-1))),
                  std::tuple(2, 3, 3, first.Path(2), PS_Playing, c.second));

        again.ctx.form1.Command3[0].Click.emit();
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Number[3]), std::tuple(3, 4)) << "the walk goes on from there";
    }
}

}  // namespace
}  // namespace velmora
