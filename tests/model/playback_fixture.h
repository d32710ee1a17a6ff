#pragma once
// A started program over the doubles with a Collection of real files of the
// given lengths, as a fresh load leaves it. Records every file the main
// engine is given.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/startup.h"
#include "playback/transport.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora::testing {

struct Started {
    int row;
    int number;  // its Played_Number when the engine got it
    int64_t at;  // the loop's tick count then
};

struct Player : TestApp {
    explicit Player(int tracks, double seconds = 2.0) {
        Form_Load(ctx);
        rows = Numbered_Rows((folder.Path() / "media").string(), tracks, seconds);
        Make_Files(*this, rows);
        Fill_Tracks(ctx, rows);
        m_recorder = player.PlayStateChange.connect([this](int state) {
            if (state == PS_Transitioning && ctx.form1.List2.FindExact(player.URL()) >= 0)
                started.push_back(
                    {ctx.table.Current_Track, ctx.table.Played_Number[ctx.table.Current_Track], loop.TickCount()});
        });
    }

    const std::string& Path(int row) const { return rows[row].path; }
    void Press() { Command3_Click(ctx, 0); }
    void PressThenRun(int64_t ms) {
        Press();
        loop.Advance(ms);
    }

    bool RunToCycleEnd(int64_t limit_ms) {
        for (int64_t spent = 0; spent < limit_ms && Count(Log(), kCycleEnd) == 0; spent += 5000) loop.Advance(5000);
        return Count(Log(), kCycleEnd) > 0;
    }

    std::vector<int> Rows() const {
        std::vector<int> order;
        for (const Started& s : started) order.push_back(s.row);
        return order;
    }

    static constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";
    std::vector<TrackRow> rows;
    std::vector<Started> started;

private:
    Subscription m_recorder;
};

}  // namespace velmora::testing
