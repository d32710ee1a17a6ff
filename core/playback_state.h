#pragma once
// What playing keeps between events: the walk, the start of a Track, the
// clock's one-shot action and its display totals, the play states.

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "base/currency.h"

namespace velmora {

// The shuffled walk draws from a generator that starts from the same state at
// every start of the program, so one Collection is shuffled the same way each run.
constexpr std::mt19937::result_type kWalkSeed = 5489u;

// Which window a play-state handler belongs to; also the index of Last_Play_State.
enum PlayWindow : int { kWindowMain = 0, kWindowVideo = 1, kWindowSecond = 2 };

// Window icons by state; the view draws them, the tray takes the same one.
constexpr int kIconPlaying = 100;
constexpr int kIconPaused = 101;
constexpr int kIconStopped = 102;

// What the next clock tick is to do.
enum TickActionKind : uint8_t { kTickNothing = 0, kTickStart = 1, kTickNext = 2 };

struct PlaybackState {
    // The walk.
    int16_t Jump_To_Selected = 0;  // -1: the next walk takes List2.ListIndex
    int16_t Step_Direction = 0;    // 1 forward, 0 next button, -1 previous button, -2 back by the step count
    int32_t Walk_Mark = 0;         // Played_Number of the row the walk starts from; -1 once a row was refused
    std::string Current_File;
    std::mt19937 Generator{kWalkSeed};
    bool Cycle_Restarting = false;  // the end of a cycle is starting the next one

    // The start of a Track.
    uint8_t Tick_Action = kTickNothing;
    int16_t Saved_Interval = 0;     // the clock's period while the short one is in force
    int32_t First_Play_Done = 0;
    int16_t Tag_Boxes_Ready = -1;   // 0 while the tag boxes are being filled
    int16_t Preview_Index = 0;

    // The watch over the Track the clock started (track_watch.h): its file,
    // empty while nothing is watched, and the position last seen moving and when.
    std::string Watch_File;
    double Watch_Position = -1;
    int64_t Watch_Since = 0;

    // Play states.
    int16_t Is_Paused = 0;
    std::array<int32_t, 3> Last_Play_State{};  // by PlayWindow
    int Window_Icon = kIconStopped;            // of Form1 and Form4, and so of the tray
    bool No_Sound_Told = false;                // the log has said that there is no sound device
    bool No_Tray_Told = false;                 // the log has said that there is no system tray

    // The clock.
    int32_t Last_Track = 0;
    std::string Last_Name;
    std::string Tray_Tip;
    Currency Played_Duration;        // the rows played before the current one
    Currency Played_Now;
    Currency Time_Left;
    Currency Played_Class_Duration;  // the same within the chosen classes
    // Played_Duration is out of date and is counted when next read
    // (Settle_Played_Duration): the walk changes it at every step, and
    // only the clock's tick and the save read it.
    bool Played_Duration_Pending = false;
    Currency Played_Class_Now;
    Currency Class_Time_Left;
    int32_t Position_Hours = 0, Position_Minutes = 0, Position_Seconds = 0;
    int32_t Left_Hours = 0, Left_Minutes = 0, Left_Seconds = 0;
    // The DDD:HH:MM:SS texts of the totals, kept from the last tick.
    std::string Sum_Text, Now_Text, Left_Text;
    std::string Class_Sum_Text, Class_Now_Text, Class_Left_Text;

    // The transport.
    std::string Selected_File;  // the row last clicked in List2

    // The second player: -1 hides the window that Passage leaves.
    int16_t Second_Player_Flag = -1;
    // The preview panes: counts their runs, so that a run waiting for its
    // first pane knows a newer click has taken the panes over.
    uint64_t Preview_Run = 0;
};

}  // namespace velmora
