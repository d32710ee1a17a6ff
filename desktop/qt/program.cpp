// The desktop program: the Qt adapters, the context over them, the main
// window, then start-up and Qt's loop until the window closes.

#include <QApplication>
#include <QDir>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "desktop/qt/program.h"

#include "app/startup.h"
#include "core/app_context.h"
#include "core/program_folders.h"
#include "desktop/qt/main_window.h"
#include "intake/directory_search.h"
#include "intake/file_drop.h"
#include "platform/lazy_engine.h"
#include "platform/mpv_engine.h"
#include "platform/qt_dialogs.h"
#include "platform/qt_event_loop.h"
#include "platform/qt_shell.h"

namespace {

bool Set(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// Qt ends the process with a fatal error when it finds no display; a plain
// line and an exit code are kinder to whoever started it.
bool DisplayAvailable() { return Set("QT_QPA_PLATFORM") || Set("DISPLAY") || Set("WAYLAND_DISPLAY"); }

// A logout or a terminal's Ctrl+C ends the program the way closing the
// window does, so the Collection and the preferences are saved. The handler
// only writes to a socket; the loop reads it and quits.
int g_signal_socket[2] = {-1, -1};

void OnSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(g_signal_socket[0], &byte, 1);
}

void QuitOnSignals(QApplication& app) {
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signal_socket) != 0) return;
    auto* notifier = new QSocketNotifier(g_signal_socket[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [notifier] {
        notifier->setEnabled(false);
        char byte;
        [[maybe_unused]] const auto read = ::read(g_signal_socket[1], &byte, 1);
        QApplication::quit();
    });
    struct sigaction action {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

// The mount point that holds the folder: the longest of the drive box's
// entries that the folder begins with.
std::string DriveOf(const velmora::FileSystemBox& drives, const std::string& folder) {
    std::string best = "/";
    for (const std::string& point : drives.Items()) {
        const bool holds = folder == point || (folder.rfind(point, 0) == 0 && !point.empty() &&
                                               (point.back() == '/' || folder[point.size()] == '/'));
        if (holds && point.size() > best.size()) best = point;
    }
    return best;
}

std::string DataHome() {
    const QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (!xdg.isEmpty() && QDir::isAbsolutePath(xdg)) return xdg.toStdString();
    return (QDir::homePath() + "/.local/share").toStdString();
}

}  // namespace

namespace velmora {

int RunProgram(int argc, char** argv, const ProgramHooks& hooks) {
    if (!DisplayAvailable()) {
        std::fprintf(stderr, "velmora: no display found (set DISPLAY or WAYLAND_DISPLAY, or use velmora-cli)\n");
        return 2;
    }
    QApplication app(argc, argv);
    // The folder boxes start where the program was started, before the
    // start-up moves into the program's folder.
    const std::string start_folder = QDir::currentPath().toStdString();
    // libmpv reads numbers with the C library and refuses to start under a
    // locale whose decimal point is not '.'; QApplication has just set one.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("velmora"));
    QApplication::setApplicationDisplayName(QStringLiteral("Velmora II"));
    // The window hides into the tray; only closing it, or the logic, ends the program.
    QApplication::setQuitOnLastWindowClosed(false);

    QtEventLoop loop;
    QtDialogs dialogs;
    QtShell shell;
    // The player and the second player only sound; the reader only reads;
    // the video engine draws into its own window until the video window
    // gives it one.
    auto report = [](const MpvEngine& engine) {
        if (!engine.InitError().empty()) std::fprintf(stderr, "velmora: media engine: %s\n", engine.InitError().c_str());
    };
    MpvEngine player(loop, {.ao = {}, .vo = "null", .wid = 0});
    MpvEngine reader(loop, {.ao = "null", .vo = "null", .wid = 0});
    report(player);
    report(reader);
    // The video window's and the second player's engines start when first used.
    auto started = [&loop, report](MpvEngine::Options options) {
        return [&loop, report, options]() -> std::unique_ptr<MediaEngine> {
            auto engine = std::make_unique<MpvEngine>(loop, options);
            report(*engine);
            return engine;
        };
    };
    LazyEngine video(started({.ao = {}, .vo = {}, .wid = 0}));
    LazyEngine second(started({.ao = {}, .vo = "null", .wid = 0}));

    AppContext ctx(Ports{loop, dialogs, shell, player, reader, video, second});
    ctx.program_folder =
        Resolve_App_Path(QCoreApplication::applicationDirPath().toStdString(), DataHome());

    MainWindow window(ctx.form1, ctx.core.Esc_Key);
    window.AttachShell(shell);

    bool unloaded = false;
    auto unload = [&] {
        if (unloaded) return;
        unloaded = true;
        Form_QueryUnload(ctx);
    };
    window.SetCloseHandler([&] {
        unload();
        QApplication::quit();
    });
    window.SetDropHandler([&ctx](const std::vector<std::string>& names) { Accept_Dropped_Files(ctx, names); });
    Refresh_Drive_List(ctx.form1.Drive1);
    // The session may end the program without closing the window first.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, [&] { unload(); });
    QuitOnSignals(app);

    if (hooks.before_load) hooks.before_load(window);
    Form_Load(ctx);
    // A Collection names the folder the search page last showed; without
    // one, the page opens where the program was started.
    if (ctx.form1.Dir1.Path().empty()) {
        ctx.form1.Drive1.SetPath(DriveOf(ctx.form1.Drive1, start_folder));
        ctx.form1.Dir1.SetPath(start_folder);
    }
    if (hooks.after_load) hooks.after_load(ctx);
    const int code = QApplication::exec();
    unload();
    return code;
}

}  // namespace velmora
