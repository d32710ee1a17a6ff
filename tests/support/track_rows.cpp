#include "support/track_rows.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "collection/collection_file.h"
#include "core/mirror_rows.h"
#include "ratings/rating_calculation.h"
#include "support/test_app.h"

namespace velmora::testing {

void Fill_Tracks(AppContext& ctx, const std::vector<TrackRow>& rows) {
    TrackTable& t = ctx.table;
    const int n = static_cast<int>(rows.size());
    t.Track_Count = n;
    t.Dimension(n);
    MirrorRows mirrors;
    for (int i = 0; i < n; ++i) {
        const TrackRow& row = rows[i];
        t.Duration[i] = Currency::FromDouble(row.seconds);
        t.File_Size[i] = Currency::FromDouble(row.megabytes);
        t.Bitrate[i] = static_cast<int16_t>(row.bitrate);
        t.Saved[i] = true;
        ctx.form1.List2.AddItem(row.path);
        mirrors.Add({Row_Number_Text(i), Class_Letter(row.rating), row.seconds > 0 ? Duration_Text(t.Duration[i]) : "",
                     row.megabytes > 0 ? Size_Text(t.File_Size[i]) : "",
                     row.bitrate > 0 ? Bitrate_Text(row.bitrate) : ""});
    }
    mirrors.Flush(ctx.form1);
    Calculate_Ratings(ctx);
    t.Current_Track = 0;
    t.Played_Count = n > 0 ? 1 : 0;
    t.Played_Number[0] = t.Played_Count;
    t.Resume_Pending = n > 0 ? -1 : 0;
}

void Make_Files(TestApp& app, const std::vector<TrackRow>& rows) {
    for (const TrackRow& row : rows) {
        std::filesystem::create_directories(std::filesystem::path(row.path).parent_path());
        std::ofstream(row.path) << "x";
        for (StubEngine* engine : {&app.player, &app.video, &app.second}) engine->SetDuration(row.path, row.seconds);
    }
}

std::vector<TrackRow> Numbered_Rows(const std::string& dir, int n, double seconds) {
    std::vector<TrackRow> rows;
    for (int i = 0; i < n; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "/track_%03d.mp3", i);
        rows.push_back({dir + name, seconds});
    }
    return rows;
}

std::string Write_Collection(const std::string& folder, const std::string& name, const std::vector<TrackRow>& rows,
                             const std::vector<int32_t>& played) {
    TestApp other(folder);
    AppContext& ctx = other.ctx;
    ctx.core.App_Path = folder;
    Fill_Tracks(ctx, rows);
    for (size_t i = 0; i < played.size(); ++i) ctx.table.Played_Number[i] = played[i];
    std::filesystem::create_directories(folder + "velmora_sylloges");
    std::filesystem::create_directories(folder + "velmora_filtra");
    ctx.collection.Collection_Path = folder + "velmora_sylloges/" + name + ".qel";
    EXPECT_TRUE(Save_Collection(ctx, false, true)) << ctx.collection.Save_Fault;
    return ctx.collection.Collection_Path;
}

}  // namespace velmora::testing
