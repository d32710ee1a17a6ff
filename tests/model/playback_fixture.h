#pragma once
// A started program over the doubles with a Collection of real files of the
// given lengths, standing as a fresh load leaves it: the first row resumes as
// the first played. Records every file the main engine is given.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/startup.h"
#include "base/text_format.h"
#include "playback/transport.h"
#include "support/test_app.h"

namespace velmora::testing {

struct Started {
    int row;
    int number;  // its Played_Number when the engine got it
};

struct Player : TestApp {
    explicit Player(int tracks, double seconds = 2.0) {
        Form_Load(ctx);
        Fill(tracks, seconds);
        m_recorder = player.PlayStateChange.connect([this](int state) {
            if (state == PS_Transitioning && ctx.form1.List2.FindExact(player.URL()) >= 0) {
                const int row = ctx.table.Current_Track;
                started.push_back({row, ctx.table.Played_Number[row]});
            }
        });
    }

    std::string Path(int row) const {
        char name[32];
        std::snprintf(name, sizeof name, "track_%03d.mp3", row);
        return (folder.Path() / "media" / name).string();
    }

    void Fill(int tracks, double seconds) {
        std::filesystem::create_directories(folder.Path() / "media");
        TrackTable& t = ctx.table;
        t.Track_Count = tracks;
        t.Dimension(tracks);
        for (int i = 0; i < tracks; ++i) {
            std::ofstream(Path(i)) << "x";
            player.SetDuration(Path(i), seconds);
            ctx.form1.List2.AddItem(Path(i));
            // Number, class letter, and the rest by number: the class list
            // is what the recount of the classes reads.
            for (int b = 0; b < 5; ++b) ctx.form1.List3_0[b].AddItem(b == 1 ? Class_Letter(0) : Row_Number_Text(i));
            t.Duration[i] = Currency::FromDouble(seconds);
            t.Total_Duration += t.Duration[i];
            t.Class_Count[0] += Currency(1);
            t.Class_Duration[0] += t.Duration[i];
            t.Saved[i] = true;
        }
        t.Current_Track = 0;
        t.Played_Count = tracks > 0 ? 1 : 0;
        t.Played_Number[0] = t.Played_Count;
        t.Resume_Pending = tracks > 0 ? -1 : 0;
    }

    void Press() { Command3_Click(ctx, 0); }

    // Plays on until the cycle-end line is in the log, or the limit passes.
    bool RunToCycleEnd(int64_t limit_ms) {
        for (int64_t spent = 0; spent < limit_ms; spent += 5000) {
            if (Log().find(kCycleEnd) != std::string::npos) return true;
            loop.Advance(5000);
        }
        return Log().find(kCycleEnd) != std::string::npos;
    }

    // The rows in the order the engine got them.
    std::vector<int> Rows() const {
        std::vector<int> rows;
        for (const Started& s : started) rows.push_back(s.row);
        return rows;
    }

    const std::string& Log() const { return ctx.form1.Text2[0].Text(); }
    static size_t Count(const std::string& text, const std::string& part) {
        size_t n = 0;
        for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
        return n;
    }

    static constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";
    std::vector<Started> started;

private:
    Subscription m_recorder;
};

}  // namespace velmora::testing
