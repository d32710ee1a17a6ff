#include "cli/identify_command.h"

#include <QCoreApplication>
#include <QDir>

#include <clocale>
#include <filesystem>
#include <iostream>
#include <string>

#include "cli/play_command.h"
#include "cli/terminal_dialogs.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "core/settings_store.h"
#include "core/startup.h"
#include "intake/identification.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "ratings/reset_views.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli identify FILE.qel [--continue]\n";
    return 2;
}

std::string DataHome() {
    const QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (!xdg.isEmpty() && QDir::isAbsolutePath(xdg)) return xdg.toStdString();
    return (QDir::homePath() + "/.local/share").toStdString();
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

    int qt_argc = 1;
    char qt_name[] = "velmora-cli";
    char* qt_argv[] = {qt_name, nullptr};
    QCoreApplication app(qt_argc, qt_argv);
    std::setlocale(LC_NUMERIC, "C");

    QtEventLoop loop;
    // Not interactive: every question takes its first button, Yes.
    TerminalDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    MpvEngine player(loop, {.ao = "null", .vo = "null", .wid = 0});
    MpvEngine reader(loop, {.ao = "null", .vo = "null", .wid = 0});
    MpvEngine video(loop, {.ao = "null", .vo = "null", .wid = 0});
    MpvEngine second(loop, {.ao = "null", .vo = "null", .wid = 0});

    AppContext ctx(Ports{loop, dialogs, shell, player, reader, video, second});
    ctx.program_folder = Program_Folder_Of(file);
    if (ctx.program_folder.empty())
        ctx.program_folder = Resolve_App_Path(QCoreApplication::applicationDirPath().toStdString(), DataHome());
    ctx.core.App_Path = ctx.program_folder.back() == '/' ? ctx.program_folder : ctx.program_folder + "/";

    // The start of the window without the window: folders, tables and the
    // preferences, which say whether ratings are read from the files.
    for (int i = 0; i < 4; ++i) Make_Folder(ctx, i);
    Initialise(ctx);
    Reset_Views(ctx, 0);
    bool settings_error = false;
    Load_Settings(ctx, settings_error);
    ctx.collection.Collection_Path = file;
    if (existed) {
        // The run ends by saving every row: a Collection read in part would
        // be saved over the whole.
        if (!Load_Collection(ctx)) {
            std::cerr << "velmora-cli: " << file << ": the Collection could not be read whole; nothing was identified\n";
            return 1;
        }
    } else {
        fs::create_directories(fs::path(file).parent_path(), ec);
        Save_Collection(ctx, false, true);
        std::cerr << "velmora-cli: " << file << ": created an empty Collection\n";
    }
    if (!fs::is_regular_file(file, ec)) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be opened\n";
        return 1;
    }

    // A run leaves its own lines alone in the log, as the window shows them.
    if (Identify_Properties(ctx, mode)) std::cout << ctx.form1.Text2[0].Text() << "\n";
    else std::cout << "no Tracks to identify\n";
    return 0;
}

}  // namespace velmora::cli
