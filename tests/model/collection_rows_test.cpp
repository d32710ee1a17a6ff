// Each Track keeps its own fields through the load and the saves, whatever
// any other Track's path holds: the columns and the path list never
// drift apart, on the disk or in memory.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/collection_records.h"
#include "collection/collection_file.h"
#include "support/golden_collection.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::Holds;
using testing::TestApp;
using Strings = std::vector<std::string>;

std::string Path(int i) { return "/m/t" + std::to_string(i) + ".mp3"; }

// A program started over `folder`, its Collection loaded.
void Open(TestApp& app, const std::string& folder) {
    ASSERT_TRUE(testing::Load_In(app, folder)) << app.ctx.collection.Load_Fault;
}

// Four Tracks, each field telling whose it is, saved whole under `app`'s folder.
void Make_Four(TestApp& app) {
    testing::Start_In(app, app.folder.Str());
    TrackTable& t = app.ctx.table;
    for (int i = 0; i < 4; ++i) app.ctx.form1.List2.AddItem(Path(i));
    t.Track_Count = 4;
    t.Grow_Columns();
    for (int i = 0; i < 4; ++i) {
        t.Title[i] = "title" + std::to_string(i);
        t.Stop_Position[i] = Currency(10 * i);  // but the last, see below
        t.Rating_Class[i] = static_cast<int16_t>(i + 1);
    }
    // The walk stands in the last Track, whose stop position the save takes
    // from the engine: 0.
    t.Current_Track = 3;
    ASSERT_TRUE(Save_Collection(app.ctx, false, true));
}

// Every row's path, title, stop position and class, as one text each.
Strings Rows(const AppContext& ctx) {
    Strings rows;
    const TrackTable& t = ctx.table;
    for (int r = 0; r < ctx.form1.List2.ListCount(); ++r)
        rows.push_back(std::string(ctx.form1.List2.List(r)) + " " + t.Title[r] + " " + std::to_string(t.Stop_Position[r].Round()) +
                       " " + std::string(ctx.form1.List3_0[1].List(r)));
    return rows;
}

// Track 1 loses its path, and a byte of Track 2's title is one code page
// 1253 leaves undefined.
TEST(CollectionRows, APathlessTrackIsLeftOutAndTheTracksBehindKeepTheirOwnFields) {
    TestApp made;
    Make_Four(made);
    const testing::GoldenFiles at = testing::Golden_Files_In(made.folder.Str());
    std::string files = testing::Bytes(at.files);
    auto at_record = [](int32_t track, int64_t field) { return (Track_Record(track, field) - 1) * kFilesRecordLength; };
    files.replace(at_record(1, track_record::kTrackPath), 2, std::string(2, '\0'));
    files[at_record(2, track_record::kTitle) + 2 + 4] = '\x81';
    testing::Put(at.files, files);
    const Strings kept{"/m/t0.mp3 title0 0 X", "/m/t2.mp3 titl?2 20 B", "/m/t3.mp3 title3 0 A"};

    TestApp loaded;
    Open(loaded, made.folder.Str());
    EXPECT_EQ(Rows(loaded.ctx), kept) << "an undefined byte beside the path reads as '?'";
    EXPECT_EQ(std::tuple(loaded.ctx.table.Track_Count, loaded.ctx.table.Current_Track), std::tuple(3, 2))
        << "the walk stays on the Track it stood on";
    EXPECT_TRUE(Holds(loaded.Log(), "Tracks without a path left out: 1"));

    // An incremental save writes the Tracks that moved up at their new rows.
    ASSERT_TRUE(Save_Collection(loaded.ctx, false, false)) << loaded.ctx.collection.Save_Fault;
    TestApp again;
    Open(again, made.folder.Str());
    EXPECT_EQ(Rows(again.ctx), kept);
}

}  // namespace
}  // namespace velmora
