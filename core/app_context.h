#pragma once
// The application context: owns the track table, the windows' controls, the
// settings, each subsystem's state and the ports. No mutable globals: a test
// builds a fresh context over a temporary program folder.

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/file_lock.h"
#include "base/signal.h"
#include "core/filter_rows.h"
#include "core/dialogs.h"
#include "core/event_loop.h"
#include "core/forms.h"
#include "core/media_engine.h"
#include "core/metadata_state.h"
#include "core/playback_state.h"
#include "core/playlist_reader.h"
#include "core/settings.h"
#include "core/shell.h"
#include "core/track_table.h"

namespace velmora {

// The ports the model reaches the world through. The engines have fixed jobs.
struct Ports {
    EventLoop& loop;
    Dialogs& dialogs;
    Shell& shell;
    MediaEngine& player;  // WindowsMediaPlayer1 of Form1: plays audio
    MediaEngine& reader;  // WindowsMediaPlayer2 of Form1: never plays, reads files
    MediaEngine& video;   // WindowsMediaPlayer1 of Form2
    MediaEngine& second;  // WindowsMediaPlayer1 of Form4
    // Reads .wpl play lists; without it they are refused as unreadable.
    PlaylistXmlReader* playlists = nullptr;
    // WindowsMediaPlayer3 of Form1, the preview panes; null where a program
    // has no panes (the terminal's).
    std::array<MediaEngine*, kPaneCount> panes{};
};

// What start-up and the running loop share across subsystems.
struct CoreState {
    std::string App_Path;        // always ends in '/'
    std::string Version_String;  // kCollectionVersion, that of the Collection files
    std::string Executable_Name = "velmora";
    std::array<std::string, 128> Genre_List;
    std::array<std::string, 32> Media_Extensions;
    std::vector<std::string> Search_Addresses;  // the three entries of Combo3

    // Guards of the one re-entrant thread.
    bool Suppress_Events = false;
    bool Busy_Working = false;
    bool Filtering = false;
    int Esc_Key = 0;
    // Port calls ("player.stop") whose last run failed; each is logged when
    // it begins failing and not again until it has succeeded (port_faults.h).
    std::set<std::string> Failing_Calls;

    int64_t Splash_Started = 0;  // tick when the start screen was shown
    // Run from the terminal: no start screen is drawn and no tray icon is
    // held, so start-up and shut-down do not wait for them.
    bool Windowless = false;
    int32_t Last_Save = 0;       // seconds since midnight of the last automatic save
    bool Ended = false;          // Form_QueryUnload has run
    // Why the last save of the preferences failed, naming the file; empty
    // after a clean one.
    std::string Settings_Fault;
};

// The open Collection's files.
struct CollectionState {
    std::string Collection_Path;  // the main file
    int Saves_This_Run = 0;       // clean saves since start; every fifth makes the backups
    std::string Alarm_File;
    // Statistics kept in the pointer file.
    int32_t Stat_Files = 0, Stat_Years = 0, Stat_Months = 0, Stat_Days = 0;
    int32_t Stat_Hours = 0, Stat_Minutes = 0, Stat_Seconds = 0;
    // The filter lists as the filters side file holds them (value boxes 1 to
    // 8, then the filter rows), when known from the last load or write: an
    // incremental save then rewrites only the records that differ. Each item
    // is kept as a hash of its text, not as a copy of a list that can hold a
    // row per Track.
    std::array<std::vector<uint64_t>, 9> Stored_Filters;
    bool Stored_Filters_Known = false;
    // The Revision of each list when Stored_Filters last matched it; 0 when
    // that is not known and the items must be compared.
    std::array<uint64_t, 9> Stored_Revisions{};
    // The last load could not read everything the files hold (damage,
    // another version, too many Tracks). Until the next save has moved those
    // files aside, a save would put the part that was read over the whole.
    bool Read_In_Part = false;
    // The backups of a Collection read in part may be the last whole copy of
    // it: they are not renewed for the rest of the run.
    bool Backups_Held = false;
    // Why this program must not write the Collection: another program holds
    // it, or one of its files is not a regular file. Empty when it may.
    std::string Write_Refused;
    // What kept the last load from reading the Collection whole, and why the
    // last save failed, each naming the file or the Track; empty when it did
    // not happen.
    std::string Load_Fault;
    std::string Save_Fault;
    // The play list of the library that the last export or import held
    // (its file); empty when none.
    std::string Current_Playlist;
};

// The report file beside the log box.
struct ReportState {
    int16_t Report_Open = 0;  // -1 while the report file is usable
    // The report's file number, held from the head of a block to its end.
    // An existing report is held for reading, so the writes of its block fail.
    enum class Number { Closed, Input, Output };
    struct Closer {
        void operator()(std::FILE* f) const { std::fclose(f); }
    };
    Number Mode = Number::Closed;
    std::unique_ptr<std::FILE, Closer> File;
    std::vector<Subscription> Menu_Links;  // MnuMoreReport, MnuMoreReportDelete
};

// The filter rows, one cached fixed-width text per Track.
// The catalogue: the cached fixed-width row of every Track, the choice of
// the nine boxes, and the two head rows of the result lists.
inline FilterRows One_Empty_Row() {
    FilterRows rows;
    rows.assign(1);
    return rows;
}

struct CatalogueState {
    FilterRows Filter_Text = One_Empty_Row();
    std::array<std::string, 9> Filter_Value;  // the text chosen in box k
    std::array<int32_t, 9> Filter_Active{};   // -1 when box k takes part
    int32_t Any_Filter = 0;                   // -1 when any box takes part
    bool Filtering = false;                   // a run of Filtered_Songs_List is under way
    std::string Filter_Head_Title;
    std::string Filter_Head_Rule;
};

// The timed events: what the settings do not keep of the snooze window.
struct TimedState {
    // The trigger has fired and the alarm file is to sound (-1).
    int16_t Alarm_Time_Reached = 0;
    int16_t Alarm_Countdown_Reached = 0;
    // The alarm's volume when the window's engine stands at 0.
    int32_t Alarm_Volume = 50;
    // Form5 has loaded once; its alarm list is never filled again.
    bool Form5_Loaded = false;
    // Form5's own engine, given by the window's host; the terminal has none.
    MediaEngine* Alarm_Engine = nullptr;
};

// What the last identification run found: rows read and the corrections it
// made to the mirror lists, so that a caller without a window can report them.
struct IdentifyState {
    int32_t Rows_Read = 0;
    int32_t Duration_Corrections = 0;
    int32_t Bitrate_Corrections = 0;
    int32_t Size_Corrections = 0;
    bool Canceled = false;
    bool Saved = false;  // the save that ends the run reached the disk whole
};

// The rating work: what a press of the rating button goes on from, and the
// class texts of the labels. The class totals themselves live in the table.
struct RatingsState {
    // What the rows looked like when the totals were last counted whole, so
    // that a missing file met while nothing else has changed can move its
    // one row instead of counting all of them again. Valid only after a
    // recount that ran to its end over rows whose letters were all classes.
    struct Counted {
        bool valid = false;
        uint64_t paths = 0;    // Revision of List2
        uint64_t letters = 0;  // Revision of List3_0(1), the class letters
        int32_t track_count = 0;
    };
    Counted Last_Count;
    bool Stats_Dirty = false;          // the class texts must be rebuilt at the next label refresh
    int16_t Rating_Code = 0;           // the pending code for Command8_Click (9..14: a class by the tray)
    int16_t Repeat_Rating = 0;         // the class the last plain press gave; Auto_Rating repeats it
    int32_t Class_Total_Count = 0;     // Tracks in the classes chosen for playing
    Currency Class_Total_Duration;     // their seconds
    int32_t Class_Played_Count = 0;    // played members of those classes
    // " [count] - [size unit] - [share%]" and " - [DDD:HH:MM:SS]" per class.
    std::array<std::string, kClassCount> Class_Stats_Text;
    std::array<std::string, kClassCount> Class_Duration_Text;
    std::string Total_Stats_Text;      // the same for the whole Collection, share " - [100%]"
};

// The search page and the adding and removing of files.
struct IntakeState {
    bool Search_Stale = true;         // the folder or the types changed since the last finished search
    bool Use_Subdirectories = false;  // Check2: add from the folders of List1, not from File1 alone
    int Last_Type_Button = -1;        // Command7: the index clicked last, and whether it fills or clears
    bool Type_Button_Fills = true;
    bool Intake_Failed = false;       // the last add met a full Collection or a name it could not store
    // The progress names of the running add or remove, Greek and English.
    std::string Source_Greek, Source_English;
};

// Copying, moving and deleting files in batches.
struct FileOpsState {
    // Where copies and moves go, ending in '/'; shown in Text2(5).
    std::string Destination_Directory;
    // Copies were written whose bytes have not been handed to the disk yet.
    bool Copies_Unsynced = false;
};

struct AppContext {
    explicit AppContext(Ports p) : ports(p) {}
    AppContext(const AppContext&) = delete;
    AppContext& operator=(const AppContext&) = delete;

    Ports ports;
    CoreState core;
    Settings settings;
    TrackTable table;
    CatalogueState catalogue;
    CollectionState collection;
    ReportState report;
    PlaybackState playback;
    RatingsState ratings;
    IdentifyState identify;
    IntakeState intake;
    FileOpsState fileops;
    TimedState timed;
    MetadataState metadata;

    Form1 form1;
    Form2 form2;
    Form3 form3;
    Form4 form4;
    Form5 form5;
    FrmSplash splash;

    // Held while this program may write the Collection, so that no other
    // program writes it at the same time.
    FileLock collection_lock;

    // Where the program's folder is, before start-up derives App_Path from it.
    std::string program_folder;

    // The controls' and engines' signals wired to their handlers; declared
    // last so that they are cut before anything they point into goes away.
    std::vector<Subscription> handlers;
};

}  // namespace velmora
