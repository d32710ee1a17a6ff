#include "collection/collection_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <optional>
#include <vector>

#include "base/codepage1253.h"
#include "base/file_kind.h"
#include "base/record_file.h"
#include "base/text_format.h"
#include "catalogue/track_list_totals.h"
#include "collection/collection_claim.h"
#include "collection/collection_paths.h"
#include "collection/pointer_file.h"
#include "collection/stored_collection.h"
#include "collection/unreadable_files.h"
#include "core/app_context.h"
#include "core/program_folders.h"
#include "core/running_report.h"
#include "core/track_list_visibility.h"

namespace velmora {

static_assert(kClassCount == main_record::kClasses, "the main file keeps one record per class");

namespace {

const char* const kSaveQuestion = "Θα σώσετε την παρούσα συλλογή; \nDo you want to save the present collection?";
const char* const kSavedText = "Επιτυχημένο Σώσιμο Συλλογής - Collection Saved Correctly";
const char* const kSaveErrorText =
    "Λάθος κατά το σώσιμο Συλλογής. Παρακαλώ επαναλάβατε - Error while saving Collection. Please retry.";
const char* const kVersionWarning =
    "Συλλογή δημιουργημένη με διαφορετική έκδοση - Collection Created with different version";
const char* const kReadingFiles = "-> Ανάγνωση αρχείων από Συλλογή... - Reading files from Collection...";
const char* const kFilesError = "-> Λάθη στην ανάγνωση αρχείων συλλογής... - Error Reading Collection Files...";
const char* const kReadingFilters = "-> Ανάγνωση Φίλτρων Συλλογής... - Reading Collection Filters...";
const char* const kEndLoading = " -> Τέλος φορτώματος - End loading";
// Lines of the program's own: what went wrong, for the cases the lines above
// leave open. The details behind the colon are the file's or the system's.
const char* const kFaultCause = " ---> Αιτία - Cause: ";
const char* const kPointerNotRead = "-> Το αρχείο δείκτη δε διαβάστηκε - The pointer file was not read: ";
const char* const kPointerNotWritten = "-> Το αρχείο δείκτη δε γράφτηκε - The pointer file was not written: ";

// Saves between two sets of backup copies.
constexpr int kSavesPerBackup = 5;

std::string Load_Error_Text(const std::string& path) {
    return " --->Λάθος κατά τη φόρτωση της συλλογής \"" + path + "\" -> Error while loading Collection";
}

std::array<int32_t*, 7> Statistics(CollectionState& c) {
    return {&c.Stat_Files, &c.Stat_Years, &c.Stat_Months, &c.Stat_Days, &c.Stat_Hours, &c.Stat_Minutes,
            &c.Stat_Seconds};
}

// The menu entry of mnuvideoshow that a Video_Mode value checks.
int Video_Menu_Index(int16_t video_mode) {
    if (video_mode == -1) return 0;
    if (video_mode == 0) return 1;
    return 2;
}

// The header behind the version into the table and the window. A field
// that cannot be read leaves its value as it was and the reading goes on;
// fault is called once for each such field, with the file's message about
// the first.
template <class Fault>
void Take_Header(AppContext& ctx, RecordFile& main, Fault&& fault) {
    namespace r = main_record;
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    StoredHeader h;
    h.Current_Track = t.Current_Track, h.Current_Position = t.Current_Position, h.Track_Count = t.Track_Count;
    h.Video_Mode = t.Video_Mode, h.Alarm_File = ctx.collection.Alarm_File, h.Class_Play = t.Class_Play;
    h.Played_Count = t.Played_Count, h.Played_High = t.Played_High;
    const ReadFaults faults = Read_Header(main, h);
    for (int i = 0; i < faults.count; ++i) fault(faults.first);

    const bool suppressed = ctx.core.Suppress_Events;
    ctx.core.Suppress_Events = true;
    if (!faults.Has(r::kDrive)) f.Drive1.SetPath(h.Drive);
    if (!faults.Has(r::kDir)) f.Dir1.SetPath(h.Dir);
    ctx.core.Suppress_Events = suppressed;

    t.Current_Track = h.Current_Track, t.Current_Position = h.Current_Position, t.Track_Count = h.Track_Count;
    t.Video_Mode = h.Video_Mode;
    const int checked = Video_Menu_Index(t.Video_Mode);
    for (int i = 0; i < 3; ++i) f.Menus("mnuvideoshow", i).SetChecked(i == checked);

    ctx.collection.Alarm_File = std::move(h.Alarm_File);
    t.Class_Play = h.Class_Play;
    for (int k = 0; k < kClassCount; ++k)
        if (t.Class_Play[k] != 0) t.Any_Class_Play = -1;
    t.Played_Count = h.Played_Count;
    t.Played_High = std::max(h.Played_High, h.Played_Count);

    // A damaged header must not hand on a count or a row number below zero:
    // every loop and index of the program rests on them.
    if (t.Track_Count < 0) t.Track_Count = 0;
    if (t.Current_Track < 0) t.Current_Track = 0;
}

// The main file's length as the writer leaves it: every record whole.
constexpr int64_t kMainFileBytes = main_record::kLast * kMainRecordLength;

// An incremental save rewrites the main file in place when it has the
// writer's length: then every record lands where it stood, and no field
// crosses a 512-byte sector, so a save cut short leaves each field old or new.
bool Main_Fits_In_Place(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec) && std::filesystem::file_size(path, ec) == kMainFileBytes &&
           !ec;
}

// Both on one disk, so that one cache flush makes both durable.
bool Same_Disk(const std::string& a, const std::string& b) {
    struct stat sa {}, sb {};
    return ::stat(a.c_str(), &sa) == 0 && ::stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev;
}

// The folders of the search page are where it opens next time, and no more:
// one the code page cannot carry is stored as none, so that the page opens
// at its default rather than every save of the Collection failing over it.
std::string Folder_To_Store(const std::string& folder) {
    const std::optional<std::string> bytes = Utf8ToCp1253(folder);
    return bytes && bytes->size() <= static_cast<size_t>(kMainRecordLength - 2) ? folder : std::string();
}

// Why a call of the C library failed, in its words.
std::string System_Error() { return std::strerror(errno); }

// Every record of the main file, those behind Played_High never read back.
// Built new unless in_place, which overwrites the records of the file there
// and syncs its data only.
void Write_Main(AppContext& ctx, const std::string& path, bool& error, bool& disk_failed, bool in_place = false) {
    namespace r = main_record;
    const Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    const PlaybackState& p = ctx.playback;
    if (!in_place) ::unlink(path.c_str());
    RecordFile main;
    if (!main.Open(path, kMainRecordLength)) {
        error = disk_failed = true;
        Note_Save_Fault(ctx, path, main.LastError());
        return;
    }
    bool ok = main.PutString(r::kVersion, kCollectionVersion);
    ok &= main.PutString(r::kDrive, Folder_To_Store(f.Drive1.Path()));
    ok &= main.PutString(r::kDir, Folder_To_Store(f.Dir1.Path()));
    ok &= main.PutLong(r::kCurrentTrack, t.Current_Track);
    ok &= main.PutLong(r::kCurrentPosition, t.Current_Position);
    ok &= main.PutLong(r::kTrackCount, t.Track_Count);
    ok &= main.PutInteger(r::kVideoMode, t.Video_Mode);
    ok &= main.PutCurrency(r::kTotalDuration, t.Total_Duration);
    Settle_Played_Duration(ctx);
    ok &= main.PutCurrency(r::kPlayedDuration, p.Played_Duration);
    ok &= main.PutCurrency(r::kPlayedNow, p.Played_Now);
    ok &= main.PutString(r::kAlarmFile, ctx.collection.Alarm_File);
    for (int k = 0; k < kClassCount; ++k) ok &= main.PutInteger(r::kClassPlay + k, t.Class_Play[k]);
    ok &= main.PutLong(r::kPlayedCount, t.Played_Count);
    ok &= main.PutLong(r::kPlayedHigh, t.Played_High);
    ok &= main.PutCurrency(r::kPlayedClassDuration, p.Played_Class_Duration);
    ok &= main.PutCurrency(r::kPlayedClassNow, p.Played_Class_Now);
    ok &= main.PutCurrency(r::kClassTimeLeft, p.Class_Time_Left);
    // The counter goes to its record and the first class duration lands on
    // the same record at once: the file ends with the Currency there.
    ok &= main.PutLong(r::kSaveCounter, ctx.collection.Saves_This_Run);
    for (int k = 0; k < kClassCount; ++k) ok &= main.PutCurrency(r::kClassDuration + k, t.Class_Duration[k]);
    if (!ok) {
        error = true;
        Note_Save_Fault(ctx, path, main.LastError());
    }
    if (main.WriteFailed() || !(in_place ? main.SyncData() : main.Sync()) || !main.Close()) {
        error = disk_failed = true;
        Note_Save_Fault(ctx, path, main.LastError());
    }
}

// A side file as it stands, under whichever spelling it has.
std::string Existing(const std::string& writer, const std::string& other) {
    return File_Exists(writer) || !File_Exists(other) ? writer : other;
}

// Puts the three new files of a full save in place. Once the marker exists,
// the new Collection counts as written: a load that finds the marker reads
// whatever has not been renamed yet under its temporary name, and the next
// save finishes the renames.
bool Commit_Full_Save(const CollectionPaths& paths) {
    const std::string marker = Commit_Marker_Path(paths);
    if (!Write_File_Safely(marker, "")) return false;
    bool ok = std::rename(Temp_Path(paths.files).c_str(), paths.files.c_str()) == 0;
    ok = std::rename(Temp_Path(paths.filters).c_str(), paths.filters.c_str()) == 0 && ok;
    ok = std::rename(Temp_Path(paths.main).c_str(), paths.main.c_str()) == 0 && ok;
    ok = Sync_Folders_Of(paths) && ok;
    if (!ok) return false;
    Drop_Other_Spelling(paths.files, paths.files_other);
    Drop_Other_Spelling(paths.filters, paths.filters_other);
    return ::unlink(marker.c_str()) == 0;
}

const char* const kMovedAside =
    "-> Τα αρχεία της συλλογής που δε διαβάστηκαν ολόκληρα φυλάχτηκαν ως - The Collection's files that could not be "
    "read whole were kept as: ";
const char* const kNotMovedAside =
    "-> Τα αρχεία της συλλογής που δε διαβάστηκαν ολόκληρα δε μετακινήθηκαν· η συλλογή δε σώθηκε - The Collection's "
    "files that could not be read whole could not be moved aside; the Collection was not saved";

// The files of a Collection read in part renamed out of the save's way, and
// the log told where.
bool Move_Aside(AppContext& ctx, const CollectionPaths& paths) {
    const std::optional<std::vector<std::string>> moved = Move_Aside_Unreadable(paths, ctx.ports.loop.Now());
    if (!moved) {
        Log_Line(ctx, kNotMovedAside);
        return false;
    }
    ctx.collection.Read_In_Part = false;
    if (moved->empty()) return true;
    std::string names;
    for (const std::string& name : *moved) names += (names.empty() ? "\"" : ", \"") + name + "\"";
    Log_Line(ctx, kMovedAside + names);
    return true;
}

void Make_Backups(const CollectionPaths& paths) {
    const std::string files[3] = {paths.main, Existing(paths.files, paths.files_other),
                                  Existing(paths.filters, paths.filters_other)};
    for (const std::string& file : files)
        if (File_Exists(file)) Copy_File_Safely(file, Backup_Path(file));
}

}  // namespace

void Load_Pointer(AppContext& ctx) {
    Make_Folder(ctx, 1);
    Make_Folder(ctx, 3);
    CollectionState& c = ctx.collection;
    c.Collection_Path = Default_Collection_Path(ctx);
    std::string path;
    const std::string pointer = Pointer_File_Path(ctx);
    if (Read_Pointer_File(pointer, path, Statistics(c)) && !path.empty()) c.Collection_Path = path;
    const FileKind kind = Resolve_File(pointer).kind;
    if (kind != FileKind::Missing && kind != FileKind::Regular)
        Log_Line(ctx, kPointerNotRead + pointer + ": " + Kind_Text(kind) + ", not a regular file");
}

bool Save_Pointer(AppContext& ctx, std::string* fault) {
    CollectionState& c = ctx.collection;
    if (c.Collection_Path.empty()) c.Collection_Path = Default_Collection_Path(ctx);
    // The numbers as the text writer prints them: a place for the sign in
    // front, a blank behind.
    std::string text = c.Collection_Path + "\n";
    for (int32_t* stat : Statistics(c)) text += Str(int64_t{*stat}) + " ";
    text += "\n";

    const std::string path = Pointer_File_Path(ctx);
    const std::optional<std::string> bytes = Utf8ToCp1253(text);
    std::string why;
    if (!bytes) {
        why = path + ": the path of the Collection cannot be written in code page 1253";
    } else {
        // Written where a link leads; anything else in its place is left alone.
        const FileKind kind = Resolve_File(path).kind;
        if (kind != FileKind::Missing && kind != FileKind::Regular)
            why = path + ": " + Kind_Text(kind) + ", not a regular file: the file cannot be written";
        else if (!Write_File_Safely(path, *bytes))
            why = path + ": the file cannot be written (" + System_Error() + ")";
    }
    if (why.empty()) return true;
    Log_Line(ctx, kPointerNotWritten + why);
    if (fault) *fault = why;
    return false;
}

bool Load_Collection(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    CollectionState& c = ctx.collection;
    if (c.Collection_Path.empty()) c.Collection_Path = Default_Collection_Path(ctx);
    // Read through links where the files really are, as a save writes them.
    const ResolvedCollection resolved = Resolve_Collection(Collection_Paths_Of(ctx, c.Collection_Path));
    const FilesToRead to_read = Files_To_Read(resolved.paths);
    c.Read_In_Part = c.Backups_Held = false;
    if (!resolved.refused.empty()) {
        // What stands in a file's place is not ours to replace: the
        // Collection is read as far as it can be, and never written.
        c.Write_Refused = Not_A_File_Text(resolved.refused, resolved.refused_kind);
        Log_Line(ctx, "-> " + c.Write_Refused);
        ctx.ports.dialogs.MsgBox(c.Write_Refused, MsgButtons::OK, MsgIcon::Exclamation, "");
    }
    c.Load_Fault.clear();

    Make_Invisible(f);
    f.SetMousePointer(FormState::kHourglass);
    // Every field of the main file that cannot be read gets its own line,
    // and the load goes on with the next: the log then shows how much of
    // the header was lost, a truncated file one line per field behind the cut.
    bool faulted = false;
    RecordFile main;
    auto fault = [&](const std::string& why) {
        if (c.Load_Fault.empty()) c.Load_Fault = why;
        faulted = true;
        Log_Line(ctx, Load_Error_Text(c.Collection_Path));
    };

    // A Collection that has never been saved begins as an empty main file.
    // An existing one is opened for reading only: a load never writes, nor
    // does it make a file for a Collection it may not write.
    if (c.Write_Refused.empty() && Resolve_File(to_read.main).kind == FileKind::Missing &&
        !main.Open(to_read.main, kMainRecordLength))
        fault(main.LastError());
    main.Close();
    if (!main.Open(to_read.main, kMainRecordLength, RecordFile::Mode::ReadOnly)) fault(main.LastError());

    StoredHeader stored;
    if (main.IsOpen() && !Read_Version(main, stored)) fault(to_read.main + ": " + main.LastError());
    const std::string& version = stored.Version_String;

    bool whole = true;
    if (!version.empty() && version != kCollectionVersion) {
        ctx.ports.dialogs.MsgBox(kVersionWarning, MsgButtons::OK, MsgIcon::Exclamation, "");
        whole = false;
        c.Load_Fault = to_read.main + ": a Collection of another version (" + version + ")";
    } else if (!version.empty()) {
        Take_Header(ctx, main, [&](const std::string& why) { fault(to_read.main + ": " + why); });
        main.Close();
        if (t.Track_Count > kMaxTracks) {
            ctx.ports.dialogs.MsgBox(CapacityExceededText(), MsgButtons::OK, MsgIcon::Critical, "");
            whole = false;
            c.Load_Fault = to_read.main + ": " + std::to_string(t.Track_Count) +
                           " Tracks are more than a Collection can hold";
            // Nothing of it is loaded: the walk keeps no row of it either.
            t.Track_Count = 0;
            t.Current_Track = 0;
            t.Current_Position = 0;
            t.Played_Count = 0;
            t.Played_High = 0;
        } else {
            t.Dimension(t.Track_Count);
            if (t.Track_Count >= 1) {
                Log_Line(ctx, kReadingFiles);
                bool error = false;
                Load_Files(ctx, to_read.files, error);
                if (error) {
                    Log_Line(ctx, kFilesError);
                    Log_Line(ctx, kFaultCause + c.Load_Fault);
                    whole = false;
                } else if (ctx.settings.Filters_Load != 0) {
                    Log_Line(ctx, kReadingFilters);
                    Load_Filters(ctx, to_read.filters, error);
                    // The filters can be built again, but a damaged file of
                    // them is kept as the rest would be.
                    if (error && File_Exists(to_read.filters)) c.Read_In_Part = true;
                }
                if (!error) Log_Line(ctx, kEndLoading);
            }
            t.Collection_Saved = -1;
        }
    }
    main.Close();

    Make_Visible(f);
    if (t.Track_Count > 0) t.Resume_Pending = -1;
    f.SetMousePointer(FormState::kDefaultPointer);
    if (!whole || faulted) c.Read_In_Part = true;
    // What was read is what the next save writes whole: the walk must stand
    // on one of its rows, or that Collection would be refused in its turn.
    const int32_t rows = f.List2.ListCount();
    if (c.Read_In_Part && (t.Current_Track < 0 || t.Current_Track >= std::max(rows, 1)))
        t.Current_Track = std::max(rows - 1, 0);
    c.Backups_Held = c.Read_In_Part;
    return whole && !faulted;
}

void Note_Save_Fault(AppContext& ctx, const std::string& path, const std::string& why) {
    std::string& fault = ctx.collection.Save_Fault;
    if (fault.empty()) fault = path + ": " + why;
}

bool Save_Collection(AppContext& ctx, bool question, bool full) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    CollectionState& c = ctx.collection;
    Dialogs& dialogs = ctx.ports.dialogs;

    if (question && dialogs.MsgBox(kSaveQuestion, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
        return true;
    if (c.Collection_Path.empty()) c.Collection_Path = Default_Collection_Path(ctx);
    c.Save_Fault.clear();
    // Another program's, or not a regular file: told when it was found, and
    // again only to a user who asks for the save.
    if (!c.Write_Refused.empty()) {
        c.Save_Fault = c.Write_Refused;
        if (question) dialogs.MsgBox(c.Write_Refused, MsgButtons::OK, MsgIcon::Critical, "");
        return false;
    }
    // Written where the links lead; a file that has turned into something
    // else since the load is left alone.
    const ResolvedCollection resolved = Resolve_Collection(Collection_Paths_Of(ctx, c.Collection_Path));
    if (!resolved.refused.empty()) {
        c.Write_Refused = Not_A_File_Text(resolved.refused, resolved.refused_kind);
        c.Save_Fault = c.Write_Refused;
        Log_Line(ctx, "-> " + c.Write_Refused);
        dialogs.MsgBox(kSaveErrorText, MsgButtons::OK, MsgIcon::Critical, "");
        return false;
    }
    const CollectionPaths& paths = resolved.paths;

    // Where playing stands, from the engine that plays.
    MediaEngine& engine = t.Video_Mode != 0           ? ctx.ports.video
                          : ctx.settings.Second_Player ? ctx.ports.second
                                                       : ctx.ports.player;
    if (const Result<double> position = engine.currentPosition(); position.ok())
        CLng(position.value(), t.Current_Position);
    // This is how the point of stopping survives a clean exit.
    if (t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
        const Currency stop(t.Current_Position);
        if (t.Stop_Position[t.Current_Track] != stop) {
            t.Stop_Position[t.Current_Track] = stop;
            t.Saved[t.Current_Track] = false;
        }
    }
    t.Track_Count = f.List2.ListCount();
    if (t.Bound() < t.Track_Count) t.Grow_Columns();

    bool error = false;
    // A file that could not be written or synced, as against a field that
    // could not be stored: it never replaces what stands on the disk.
    bool disk_failed = !Settle_Interrupted_Save(paths);
    // A failed rename or sync, in the C library's words.
    auto system_fault = [&](const std::string& path) {
        disk_failed = true;
        Note_Save_Fault(ctx, path, System_Error());
    };
    if (disk_failed) Note_Save_Fault(ctx, paths.main, "an earlier save cannot be finished: " + System_Error());
    // What a load could not read stays on the disk under another name, and
    // the Collection as read is written whole beside it.
    if (!disk_failed && c.Read_In_Part) {
        if (Move_Aside(ctx, paths)) full = true;
        else disk_failed = true;
    }
    std::error_code ec;
    std::filesystem::create_directory(std::filesystem::path(paths.filters).parent_path(), ec);

    // The main file is built first and takes its place last, once the side
    // files it describes are on the disk. After playing, an incremental save
    // changes a few rows and the header: those are rewritten in place, the
    // side files only handed to the disk, and the sync of the main file at
    // the end flushes the disk's cache once for all three. A cache flush
    // costs milliseconds, and this save runs after every Track.
    const std::string main_temp = Temp_Path(paths.main);
    const bool main_in_place = !full && Main_Fits_In_Place(paths.main);
    const Flush side_flush = main_in_place && Same_Disk(paths.main, Existing(paths.files, paths.files_other)) &&
                                     Same_Disk(paths.main, Existing(paths.filters, paths.filters_other))
                                 ? Flush::Later
                                 : Flush::Now;
    if (!disk_failed && !main_in_place) Write_Main(ctx, main_temp, error, disk_failed);

    bool unsaved_row = false;
    if (full) {
        std::fill(t.Saved.begin(), t.Saved.end(), false);
        error = false;
        if (!disk_failed) c.Save_Fault.clear();
    } else {
        for (int32_t i = 0; i < t.Track_Count && !unsaved_row; ++i) unsaved_row = !t.Saved[i];
    }

    if (!disk_failed && (full || t.Filters_Changed != 0 || unsaved_row)) {
        // An incremental save rewrites the records that changed, in place;
        // a whole new file is built aside and renamed into place.
        const bool in_place = !full && Adopt_Writer_Spelling(paths.filters, paths.filters_other) &&
                              Update_Filters_In_Place(ctx, paths.filters, error, &disk_failed, side_flush);
        if (!in_place && !disk_failed) {
            const std::string temp = Temp_Path(paths.filters);
            Write_Filters(ctx, temp, error, &disk_failed);
            if (!full && !disk_failed) {
                if (Replace_File(temp, paths.filters))
                    Drop_Other_Spelling(paths.filters, paths.filters_other);
                else
                    system_fault(paths.filters);
            }
        }
    }

    if (!disk_failed) {
        if (full) {
            Write_Files(ctx, Temp_Path(paths.files), error, &disk_failed);
        } else if (Adopt_Writer_Spelling(paths.files, paths.files_other)) {
            Write_Files(ctx, paths.files, error, &disk_failed, side_flush);
        } else {
            system_fault(paths.files);
        }
    }
    t.Filters_Changed = 0;

    if (!disk_failed) {
        if (full) {
            if (!Commit_Full_Save(paths)) system_fault(paths.main);
        } else if (main_in_place) {
            Write_Main(ctx, paths.main, error, disk_failed, true);
        } else if (!Replace_File(main_temp, paths.main)) {
            system_fault(paths.main);
        }
    }
    if (disk_failed) {
        // What stands on the disk is the last Collection saved whole; the
        // next save is to write every row again.
        Settle_Interrupted_Save(paths);
        std::fill(t.Saved.begin(), t.Saved.end(), false);
        c.Stored_Filters_Known = false;
        error = true;
    }

    if (error) {
        // The box asks to retry; the log says what stood in the way.
        if (c.Save_Fault.empty()) c.Save_Fault = paths.main + ": the save failed";
        Log_Line(ctx, "-> Λάθος κατά το σώσιμο - Saving failed: " + c.Save_Fault);
    }
    if (question && !error) dialogs.MsgBox(kSavedText, MsgButtons::OK, MsgIcon::Information, "");
    if (error) dialogs.MsgBox(kSaveErrorText, MsgButtons::OK, MsgIcon::Critical, "");

    ++c.Saves_This_Run;
    if (!error && c.Saves_This_Run >= kSavesPerBackup) {
        c.Saves_This_Run = 0;
        if (!c.Backups_Held) Make_Backups(paths);
    }
    t.Collection_Saved = -1;
    return !error;
}

}  // namespace velmora
