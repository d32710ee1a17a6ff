#include "fileops/file_engine.h"

#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "collection/collection_paths.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "fileops/file_copy.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

bool Is_Collection_File(std::string_view path) { return path.size() >= 4 && path.substr(path.size() - 4) == ".qel"; }

// Plain removal, as a failed removal of a file that is there counts. A side
// file that never was (backups come every fifth save) is no failure.
void Remove(const std::string& path, int& error, bool must_exist) {
    if (::unlink(path.c_str()) == 0) return;
    if (!must_exist && errno == ENOENT) return;
    error = -1;
}

std::vector<std::string> Side_Files_Of(const AppContext& ctx, const std::string& main_path) {
    const CollectionPaths p = Collection_Paths_Of(ctx, main_path);
    std::vector<std::string> files;
    for (const std::string* side : {&p.files, &p.filters, &p.files_other, &p.filters_other}) {
        if (side->empty()) continue;
        files.push_back(*side);
        files.push_back(Backup_Path(*side));
    }
    return files;
}

}  // namespace

void Recycle_File(AppContext& ctx, const std::string& path) { (void)ctx.ports.shell.MoveToTrash(path); }

void Delete_File_And_Side_Files(AppContext& ctx, const std::string& path, int& error) {
    error = 0;
    const bool recycle = ctx.settings.Recycle_Deleted != 0;
    if (path == ctx.playback.Current_File) {
        Replace_Playing_File(ctx, path, "", kGoneForGood, {});
        if (recycle) Recycle_File(ctx, path);
        else Remove(path, error, true);
        return;
    }
    if (recycle) Recycle_File(ctx, path);
    else Remove(path, error, true);
    if (!Is_Collection_File(path)) return;
    for (const std::string& side : Side_Files_Of(ctx, path)) {
        if (!recycle) Remove(side, error, false);
        else if (File_Exists(side)) Recycle_File(ctx, side);
    }
}

void Copy_Move_Delete_File(AppContext& ctx, const std::string& source, const std::string& destination, int mode,
                           int& error) {
    if (mode < kFileDelete && source == destination) {
        Log_Line(ctx, "->" + source + "Το αρχείο προορισμού είναι το ίδιο με το αρχείο προέλευσης <-> " +
                          destination + " . Source file is the same with destination file.");
        error = -1;
        return;
    }
    // Within one file system a move is a rename: the file is whole at one
    // place or the other whatever happens. A Collection's file moves the
    // long way, so that its side files go with the deletion.
    if (mode == kFileMove && !Is_Collection_File(source) && source != ctx.playback.Current_File &&
        Rename_File(source, destination)) {
        error = 0;
        Log_Line(ctx, "-> " + source + " ---> " + destination);
        Log_Line(ctx, "-> διαγραφή - deleting ---> " + source + " = XXX ");
        return;
    }
    if (mode < kFileDelete) {
        std::string why;
        // A plain copy leaves its source, so its bytes may reach the disk
        // with the rest of the batch's; a move's must before the source goes.
        const bool sync = mode != kFileCopy;
        if (!Copy_File_Whole(source, destination, why, sync)) error = -1;
        else if (!sync) ctx.fileops.Copies_Unsynced = true;
        if (error != 0)
            Log_Line(ctx, "-> " + source + " XXX αδυναμία αντιγραφής σε - failed to copy to ---> " + destination);
        else
            Log_Line(ctx, "-> " + source + " ---> " + destination);
    }
    if (mode > kFileCopy) {
        error = 0;
        Delete_File_And_Side_Files(ctx, source, error);
        if (error != 0) Log_Line(ctx, "-> XXX αδυναμία διαγραφής - failed to delete ---> " + source);
        else Log_Line(ctx, "-> διαγραφή - deleting ---> " + source + " = XXX ");
    }
}

}  // namespace velmora
