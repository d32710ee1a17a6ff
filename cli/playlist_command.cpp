#include "cli/playlist_command.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "cli/headless_program.h"
#include "cli/log_echo.h"
#include "cli/read_only_collection.h"
#include "cli/terminal_dialogs.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "collection/playlist_export.h"
#include "collection/playlist_library.h"
#include "core/app_context.h"
#include "intake/playlist_import.h"
#include "ratings/rating_calculation.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

int Export_Usage() {
    std::cerr << "usage: velmora-cli export FILE.qel OUT.m3u8|OUT.wpl\n"
                 "  writes the Tracks as a play list: UTF-8 extended M3U, or SMIL for .wpl\n";
    return 2;
}

int Import_Usage() {
    std::cerr << "usage: velmora-cli import FILE.qel PLAYLIST [--merge]\n"
                 "  makes the Collection from a play list (.m3u, .m3u8, .wpl, .wvx); with --merge adds it\n";
    return 2;
}

bool Ends_With(const std::string& s, const std::string& end) {
    return s.size() >= end.size() && s.compare(s.size() - end.size(), end.size(), end) == 0;
}

// Counts the boxes that tell of a failure: a save or a load that failed.
class CountingDialogs : public TerminalDialogs {
public:
    using TerminalDialogs::TerminalDialogs;
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon, const std::string& title) override {
        if (icon == MsgIcon::Critical || icon == MsgIcon::Exclamation) ++m_failures;
        return TerminalDialogs::MsgBox(text, buttons, icon, title);
    }
    int Failures() const { return m_failures; }

private:
    int m_failures = 0;
};

}  // namespace

int Export_Command(int argc, char** argv) {
    if (argc != 2) return Export_Usage();
    const std::string file = argv[0], out = argv[1];
    if (!Ends_With(out, ".m3u8") && !Ends_With(out, ".m3u") && !Ends_With(out, ".wpl")) return Export_Usage();
    ReadOnlyCollection collection(file);
    StoredHeader header;
    if (!collection.Read_Header(header, std::cerr) || !collection.Check_Header(header, std::cerr)) return 1;
    std::vector<PlaylistEntry> entries;
    if (header.Track_Count > 0) {
        if (!collection.Open_Tracks(std::cerr)) return 1;
        entries.reserve(static_cast<size_t>(header.Track_Count));
        StoredTrack track;
        for (int32_t i = 0; i < header.Track_Count; ++i) {
            if (!collection.Read_Track(i, track, std::cerr) || !collection.Check_Track(i, track, std::cerr)) return 1;
            if (!Is_Pathless(track.Track_Path)) entries.push_back(Playlist_Entry(track));
        }
    }
    if (!Write_Playlist_File(out, fs::path(file).stem().string(), entries)) {
        std::cerr << "velmora-cli: " << out << ": the play list could not be written\n";
        return 1;
    }
    std::cout << out << ": " << entries.size() << " entries\n";
    return 0;
}

int Import_Command(int argc, char** argv) {
    std::string file, list;
    bool merge = false;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--merge") merge = true;
        else if (arg.starts_with("--")) return Import_Usage();
        else if (file.empty()) file = arg;
        else if (list.empty()) list = arg;
        else return Import_Usage();
    }
    if (file.empty() || list.empty()) return Import_Usage();
    std::error_code ec;
    file = fs::absolute(file, ec).lexically_normal().string();
    list = fs::absolute(list, ec).lexically_normal().string();
    if (!fs::is_regular_file(list, ec)) {
        std::cerr << "velmora-cli: " << list << ": no such play list\n";
        return 1;
    }
    const bool existed = fs::exists(file, ec);
    if (existed && !merge) {
        std::cerr << "velmora-cli: " << file << ": the Collection exists; --merge adds the list to it\n";
        return 1;
    }
    if (!existed) fs::create_directories(fs::path(file).parent_path(), ec);

    CountingDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    Form1& f = ctx.form1;
    Set_Program_Folder(ctx, file);
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, std::cerr)) return 1;
    const Subscription echo = Echo_Log(f, std::cout);
    Start_Without_Window(ctx);
    ctx.collection.Collection_Path = file;
    if (existed && (!Load_Collection(ctx) || dialogs.Failures() > 0)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole; nothing was added\n";
        return 1;
    }
    // Nothing to save before the list comes in: the Collection is the one on the disk.
    ctx.table.Collection_Saved = -1;
    const PlaylistImport run = Import_Playlist(ctx, merge ? -1 : 0, 0, file, list);
    if (!run.read) {
        std::cerr << "velmora-cli: " << list << ": nothing was imported\n";
        return 1;
    }
    ctx.table.Track_Count = f.List2.ListCount();
    Calculate_Ratings(ctx);
    if (!Save_Collection(ctx, false, true)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be saved: " << ctx.collection.Save_Fault
                  << "\n";
        return 1;
    }
    std::cout << file << ": " << ctx.table.Track_Count << " Tracks, " << run.added << " new, " << run.doubles
              << " doubles\n";
    return 0;
}

}  // namespace velmora::cli
