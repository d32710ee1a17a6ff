#include "cli/file_command.h"

#include <filesystem>
#include <iostream>
#include <string>

#include "cli/headless_program.h"
#include "cli/log_echo.h"
#include "cli/terminal_dialogs.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "fileops/file_batch.h"
#include "platform/qt_shell.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli copy FILE.qel DEST (--class C | --all) [--point]\n"
                 "       velmora-cli move FILE.qel DEST (--class C | --all) [--point]\n"
                 "       velmora-cli delete FILE.qel (--class C | --all) [--trash]\n"
                 "  C is one of S A B C X -; --point makes the Tracks name the new files;\n"
                 "  delete removes the files from the disk (--trash: to the desktop's trash)\n";
    return 2;
}

// The command's class code of a class letter, or -2.
int Class_Code(const std::string& letter) {
    static const std::string kLetters[] = {"C", "B", "A", "X", "-", "S"};
    for (int k = 0; k < 6; ++k)
        if (letter == kLetters[k]) return k + 1;
    return -2;
}

// The terminal's shell, with the user's real trash.
class TrashingShell : public TerminalShell {
public:
    using TerminalShell::TerminalShell;
    Status MoveToTrash(const std::string& path) override { return Move_To_Trash(path); }
};

}  // namespace

int File_Command(int mode, int argc, char** argv) {
    std::string file, dest;
    int code = -2;
    bool point = false, trash = false;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--all") code = kBatchAll;
        else if (arg == "--class" && i + 1 < argc) code = Class_Code(argv[++i]);
        else if (arg == "--point" && mode != 2) point = true;
        else if (arg == "--trash" && mode == 2) trash = true;
        else if (arg.starts_with("--")) return Usage();
        else if (file.empty()) file = arg;
        else if (dest.empty() && mode != 2) dest = arg;
        else return Usage();
    }
    if (file.empty() || code == -2 || (mode != 2 && dest.empty())) return Usage();
    std::error_code ec;
    file = fs::absolute(file, ec).lexically_normal().string();
    if (!fs::is_regular_file(file, ec)) {
        std::cerr << "velmora-cli: " << file << ": no such Collection\n";
        return 1;
    }
    if (mode != 2) {
        // Unlike the window, the terminal refuses a folder that is not there:
        // a move into it would delete every file it could not copy.
        dest = fs::absolute(dest, ec).lexically_normal().string();
        if (!fs::is_directory(dest, ec)) {
            std::cerr << "velmora-cli: " << dest << (fs::exists(dest, ec) ? ": not a folder\n" : ": no such folder\n");
            return 1;
        }
        if (dest.back() != '/') dest += '/';
    }

    TerminalDialogs dialogs(std::cin, std::cerr, false);
    TrashingShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    Set_Program_Folder(ctx, file);
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, std::cerr)) return 1;
    const Subscription echo = Echo_Log(ctx.form1, std::cout);
    Start_Without_Window(ctx);
    ctx.collection.Collection_Path = file;
    if (!Load_Collection(ctx)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole ("
                  << ctx.collection.Load_Fault << "); nothing was done\n";
        return 1;
    }

    Settings& s = ctx.settings;
    s.Copy_Points_To_New_Path = mode == 0 && point ? -1 : 0;
    s.Move_Points_To_New_Path = mode == 1 && point ? -1 : 0;
    s.Delete_From_Disk = -1;
    s.Recycle_Deleted = trash ? -1 : 0;
    s.Delete_On_Disk_Error = 0;
    s.Report_On = 0;
    ctx.fileops.Destination_Directory = dest;
    const BatchOutcome done = mode == 2 ? Pro_File_Del(ctx, code) : MoveSelected(ctx, mode == 1 ? -1 : 0, code);
    // Whole: a copy that points the Tracks anew leaves their rows marked as
    // saved, and only a whole save writes them. A plain copy changes no row,
    // and rewriting every one of them would cost as much as a few copies.
    const bool plain_copy = mode == 0 && !point;
    if (!Save_Collection(ctx, false, !plain_copy)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be saved: " << ctx.collection.Save_Fault
                  << "\n";
        return 1;
    }
    std::cout << file << ": " << done.tries << " tried, " << done.successes << " done, " << done.failures
              << " failed\n";
    return done.failures > 0 || done.refused ? 1 : 0;
}

}  // namespace velmora::cli
