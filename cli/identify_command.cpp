#include "cli/identify_command.h"


#include <filesystem>
#include <iostream>
#include <string>

#include "cli/headless_program.h"
#include "cli/terminal_dialogs.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "intake/identification.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli identify FILE.qel [--continue]\n";
    return 2;
}

int Not_Saved(const AppContext& ctx, const std::string& file) {
    std::cerr << "velmora-cli: " << file << ": the Collection could not be saved: " << ctx.collection.Save_Fault << "\n";
    return 1;
}

}  // namespace

int Identify_Command(int argc, char** argv) {
    std::string file;
    int mode = kIdentifyNew;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--continue") mode = kIdentifyContinue;
        else if (file.empty() && !arg.starts_with("--")) file = arg;
        else return Usage();
    }
    if (file.empty()) return Usage();
    std::error_code ec;
    file = fs::absolute(file, ec).lexically_normal().string();
    if (ec) return Usage();
    const bool existed = fs::is_regular_file(file, ec);

    // Not interactive: every question takes its first button, Yes.
    TerminalDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    Set_Program_Folder(ctx, file);
    // Nothing is touched while another program writes this Collection, or
    // when one of its files is not a regular file.
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, std::cerr)) return 1;
    // The preferences say whether ratings are read from the files.
    Start_Without_Window(ctx);
    ctx.collection.Collection_Path = file;
    if (existed) {
        // The run ends by saving every row: a Collection read in part would
        // be saved over the whole.
        if (!Load_Collection(ctx)) {
            std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole";
            if (!ctx.collection.Load_Fault.empty()) std::cerr << " (" << ctx.collection.Load_Fault << ")";
            std::cerr << "; nothing was identified\n";
            return 1;
        }
    } else {
        fs::create_directories(fs::path(file).parent_path(), ec);
        if (!Save_Collection(ctx, false, true)) return Not_Saved(ctx, file);
        std::cerr << "velmora-cli: " << file << ": created an empty Collection\n";
    }
    if (!fs::is_regular_file(file, ec)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be opened\n";
        return 1;
    }

    // A run leaves its own lines alone in the log, as the window shows them;
    // they are told once its save has reached the disk.
    if (!Identify_Properties(ctx, mode)) {
        std::cout << "no Tracks to identify\n";
        return 0;
    }
    if (!ctx.identify.Saved) return Not_Saved(ctx, file);
    std::cout << ctx.form1.Text2[0].Text() << "\n";
    return 0;
}

}  // namespace velmora::cli
