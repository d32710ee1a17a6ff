#include "cli/catalogue_command.h"

#include <QCoreApplication>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "app/startup.h"
#include "base/codepage1253.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_fields.h"
#include "catalogue/filter_query.h"
#include "cli/headless_program.h"
#include "cli/terminal_dialogs.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "platform/lazy_engine.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "ratings/reset_views.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

// The model over a Collection, with engines that never start: nothing here
// plays, and a libmpv instance costs time at every start.
class CatalogueProgram {
public:
    CatalogueProgram()
        : m_dialogs(std::cin, std::cerr, false),
          m_shell(std::cerr),
          m_ctx(Ports{m_loop, m_dialogs, m_shell, m_player, m_reader, m_video, m_second}) {}

    AppContext& Context() { return m_ctx; }

    // The Collection's Tracks with their cached rows and List5; false, told
    // on standard error, when the file cannot be read whole.
    bool Load(const std::string& file) {
        Set_Program_Folder(m_ctx, file);
        Initialise(m_ctx);
        Reset_Views(m_ctx, 0);
        m_ctx.collection.Collection_Path = file;
        // The rows are made from the Tracks, not taken from the side file,
        // which may lag behind them.
        m_ctx.settings.Filters_Load = 0;
        const bool whole = Load_Collection(m_ctx);
        if (!whole) {
            std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole";
            if (!m_ctx.collection.Load_Fault.empty()) std::cerr << " (" << m_ctx.collection.Load_Fault << ")";
            std::cerr << "; what was read follows\n";
        }
        Filtered_Songs_List(m_ctx, -1);
        return whole;
    }

private:
    TerminalApplication m_app;
    QtEventLoop m_loop;
    TerminalDialogs m_dialogs;
    TerminalShell m_shell;
    LazyEngine m_player{[this] { return Null_Engine(); }}, m_reader{[this] { return Null_Engine(); }},
        m_video{[this] { return Null_Engine(); }}, m_second{[this] { return Null_Engine(); }};
    AppContext m_ctx;

    // An engine is made only if something asks one to play, which nothing
    // here does; it would play nothing aloud.
    std::unique_ptr<MediaEngine> Null_Engine() {
        return std::make_unique<MpvEngine>(m_loop, MpvEngine::Options{.ao = "null", .vo = "null", .wid = 0});
    }
};

// The file named on the command line, made absolute; empty when it is no
// regular file, which is then told.
std::string Existing_Collection(const std::string& arg) {
    std::error_code ec;
    const std::string file = fs::absolute(arg, ec).lexically_normal().string();
    if (ec || !fs::is_regular_file(file, ec)) {
        std::cerr << "velmora-cli: " << arg << ": no such Collection file\n";
        return {};
    }
    return file;
}

int Filter_Usage() {
    std::cerr << "usage: velmora-cli filter FILE.qel [--class S|A|B|C|X|-] [--genre T] [--album T] [--artist T]\n"
                 "                          [--year T] [--title T] [--duration T] [--size T] [--bitrate T]\n";
    return 2;
}

// The box of each option, and the class letters by Rating_Class.
const std::map<std::string, int> kBoxOfOption{{"--class", 0},  {"--duration", 1}, {"--size", 2},
                                              {"--bitrate", 3}, {"--genre", 4},   {"--album", 5},
                                              {"--artist", 6}, {"--year", 7},     {"--title", 8}};
const char* const kClassLetters[] = {"-", "X", "C", "B", "A", "S"};

}  // namespace

int Filter_Command(int argc, char** argv) {
    std::string arg_file;
    std::array<std::string, kFilterBoxes> chosen;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        const auto box = kBoxOfOption.find(arg);
        if (box != kBoxOfOption.end()) {
            if (i + 1 >= argc || std::string(argv[i + 1]).empty()) return Filter_Usage();
            chosen[box->second] = argv[++i];
        } else if (arg_file.empty() && !arg.starts_with("--")) {
            arg_file = arg;
        } else {
            return Filter_Usage();
        }
    }
    if (arg_file.empty()) return Filter_Usage();
    if (!chosen[0].empty()) {
        int rating = -1;
        for (int r = 0; r < 6; ++r)
            if (chosen[0] == kClassLetters[r]) rating = r;
        if (rating < 0) return Filter_Usage();
        chosen[0] = Class_Captions()[rating];
    }
    const std::string file = Existing_Collection(arg_file);
    if (file.empty()) return 1;

    CatalogueProgram program;
    AppContext& ctx = program.Context();
    const bool whole = program.Load(file);
    // The choice goes in as typed text, one box at a time, and is then
    // taken as the window takes it.
    for (int k = 0; k < kFilterBoxes; ++k) ctx.form1.Combo4_0[k].SetText(chosen[k]);
    Apply_Filters(ctx);
    const ListBox& list = ctx.catalogue.Any_Filter == -1 ? ctx.form1.List4 : ctx.form1.List5;
    std::string out;
    for (std::string_view row : list.Items()) (out += row) += '\n';
    std::fwrite(out.data(), 1, out.size(), stdout);
    return whole ? 0 : 1;
}

int Search_Command(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: velmora-cli search FILE.qel TEXT\n";
        return 2;
    }
    const std::string file = Existing_Collection(argv[0]);
    if (file.empty()) return 1;
    CatalogueProgram program;
    AppContext& ctx = program.Context();
    const bool whole = program.Load(file);
    // As the search of the list in view finds rows: the text trimmed, without
    // regard to case, anywhere in the row; the head rows are never found.
    const CaseBlindFinder finder(Trim(argv[1]));
    const ListBox& rows = ctx.form1.List5;
    std::string out;
    for (int r = 2; r < rows.ListCount(); ++r) {
        if (!finder.In(rows.List(r))) continue;
        const int track = Row_Track_Number(rows.List(r));
        ((out += Format(int64_t{track}, "000000") + "\t") += ctx.form1.List2.List(track - 1)) += "\n";
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
    return whole ? 0 : 1;
}

}  // namespace velmora::cli
