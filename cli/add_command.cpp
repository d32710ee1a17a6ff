#include "cli/add_command.h"


#include <filesystem>
#include <iostream>
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_kind.h"
#include "cli/headless_program.h"
#include "cli/log_echo.h"
#include "cli/read_only_collection.h"
#include "cli/terminal_dialogs.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "intake/add_remove.h"
#include "intake/directory_search.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli add FILE.qel DIR... [--subdirs]\n"
                 "  adds the media files of each DIR (with --subdirs, of every folder below it too)\n";
    return 2;
}

// A folder as the folder box holds it: absolute and without a closing slash,
// so that the progress text names it as the window would.
std::string Folder_Argument(const std::string& arg, std::error_code& ec) {
    std::string folder = fs::absolute(arg, ec).lexically_normal().string();
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
}

// The terminal's boxes, counting those that tell of a failure: a full
// Collection, a save that did not reach the disk, a table too large to load.
class CountingDialogs : public TerminalDialogs {
public:
    using TerminalDialogs::TerminalDialogs;

    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon, const std::string& title) override {
        if (icon == MsgIcon::Critical) ++m_failures;
        return TerminalDialogs::MsgBox(text, buttons, icon, title);
    }
    int Failures() const { return m_failures; }

private:
    int m_failures = 0;
};

std::string Without_Final_Newlines(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

}  // namespace

int Add_Command(int argc, char** argv) {
    std::string file;
    std::vector<std::string> folders;
    bool subdirs = false;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--subdirs") subdirs = true;
        else if (arg.starts_with("--")) return Usage();
        else if (file.empty()) file = arg;
        else folders.push_back(arg);
    }
    if (file.empty() || folders.empty()) return Usage();

    // Every argument is checked before the Collection is touched, and made
    // absolute before start-up moves the working folder.
    std::error_code ec;
    file = fs::absolute(file, ec).lexically_normal().string();
    if (ec) return Usage();
    bool missing = false;
    for (std::string& folder : folders) {
        const std::string given = folder;
        folder = Folder_Argument(given, ec);
        if (ec || !fs::is_directory(folder, ec)) {
            // Files are taken in by their folder; a file named here is the
            // commonest slip, so it gets its own words.
            const bool is_file = fs::exists(given, ec) && !fs::is_directory(given, ec);
            std::cerr << "velmora-cli: " << given
                      << (is_file ? ": not a folder (add takes the folders that hold the media files)\n"
                                  : ": no such folder\n");
            missing = true;
        }
    }
    if (missing) return 1;
    const bool existed = fs::exists(file, ec);
    if (existed) {
        StoredHeader header;
        if (!fs::is_regular_file(file, ec)) {
            std::cerr << "velmora-cli: " << file << ": " << Kind_Text(Resolve_File(file).kind)
                      << ", not a regular file; nothing was changed\n";
            return 1;
        }
        if (!ReadOnlyCollection(file).Read_Header(header, std::cerr)) return 1;
    } else {
        fs::create_directories(fs::path(file).parent_path(), ec);
        if (ec) {
            std::cerr << "velmora-cli: " << fs::path(file).parent_path().string() << ": " << ec.message() << "\n";
            return 1;
        }
    }

    // Not interactive: every question takes its first button.
    CountingDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    Form1& f = ctx.form1;
    Set_Program_Folder(ctx, file);
    // Nothing is touched while another program writes this Collection, or
    // when one of its files is not a regular file.
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, std::cerr)) return 1;

    // Every entry the program puts at the head of its log is printed as it
    // comes: names that cannot be stored, folders that cannot be read.
    const Subscription echo = Echo_Log(f, std::cout);

    Start_Without_Window(ctx);
    ctx.collection.Collection_Path = file;
    // A Collection read in part must not be saved over the whole.
    const bool whole = !existed || Load_Collection(ctx);
    if (!whole || dialogs.Failures() > 0) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole";
        if (!ctx.collection.Load_Fault.empty()) std::cerr << " (" << ctx.collection.Load_Fault << ")";
        std::cerr << "; nothing was added\n";
        return 1;
    }
    const int before = f.List2.ListCount();

    // Every media type, every folder the search finds, every file of a folder.
    Command7_Click(ctx, 0);
    f.Option1_0.SetValue(1);
    f.Option1_1.SetValue(0);
    f.Option4[0].SetValue(1);
    f.Option4[1].SetValue(0);
    for (const std::string& folder : folders) {
        // Off first, so that turning it on searches below the new folder.
        Set_Check2(ctx, 0);
        f.Dir1.SetPath(folder);
        Dir1_change(ctx);
        if (subdirs) {
            Set_Check2(ctx, 1);
            // The search's count of folders and files heads the progress box.
            const std::string& progress = f.Text2[1].Text();
            std::cout << progress.substr(0, progress.find('\n')) << "\n";
        }
        Add_Files_Under_Path(ctx);
        std::cout << Without_Final_Newlines(f.Text2[1].Text()) << "\n" << std::flush;
        if (dialogs.Failures() > 0) break;  // the Collection is full
    }

    // Nothing is told as added before it is on the disk.
    if (!Save_Collection(ctx, false, true)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be saved: " << ctx.collection.Save_Fault
                  << "\n";
        return 1;
    }
    std::cout << file << ": " << f.List2.ListCount() << " Tracks, " << f.List2.ListCount() - before << " new\n";
    if (dialogs.Failures() > 0) {
        std::cerr << "velmora-cli: " << file << ": not every file could be added and saved\n";
        return 1;
    }
    return 0;
}

}  // namespace velmora::cli
