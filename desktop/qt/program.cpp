// The desktop program: the Qt adapters, the context over them, the main
// window, then start-up and Qt's loop until the window closes.

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QTimer>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/qt/program.h"

#include "app/startup.h"
#include "core/app_context.h"
#include "core/program_folders.h"
#include "desktop/about.h"
#include "desktop/qt/catalogue_view.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/media_player_bus.h"
#include "desktop/qt/snooze_window.h"
#include "desktop/qt/mpv_picture.h"
#include "desktop/qt/picture_engines.h"
#include "desktop/qt/preview_panes_view.h"
#include "desktop/qt/second_player_window.h"
#include "desktop/qt/slide_show_window.h"
#include "desktop/qt/splash_window.h"
#include "desktop/qt/video_window.h"
#include "intake/directory_search.h"
#include "desktop/given_files.h"
#include "desktop/tray.h"
#include "intake/file_drop.h"
#include "platform/heap_release.h"
#include "platform/lazy_engine.h"
#include "platform/media_reader.h"
#include "platform/mpv_engine.h"
#include "platform/mpv_pane_engine.h"
#include "platform/qt_dialogs.h"
#include "platform/qt_event_loop.h"
#include "platform/qt_playlist_reader.h"
#include "platform/qt_shell.h"
#include "platform/quit_signals.h"
#include "timed/snooze_window.h"

namespace {

bool Set(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// Qt ends the process with a fatal error when it finds no display; a plain
// line and an exit code are kinder to whoever started it.
bool DisplayAvailable() { return Set("QT_QPA_PLATFORM") || Set("DISPLAY") || Set("WAYLAND_DISPLAY"); }

// The mount point that holds the folder: the longest of the drive box's
// entries that the folder begins with.
std::string DriveOf(const velmora::FileSystemBox& drives, const std::string& folder) {
    std::string best = "/";
    for (std::string_view point : drives.Items()) {
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

namespace {

// The window from start to end; `signal` is the signal that asked it to
// quit, or 0.
int RunWindow(int argc, char** argv, const ProgramHooks& hooks, int& signal) {
    // The toolkit and the engines start threads; the quit signals are left
    // to this one, and one that comes before the loop can read it waits.
    QuitSignalHold hold;
    QApplication app(argc, argv);
    // The folder boxes start where the program was started, before the
    // start-up moves into the program's folder.
    const std::string start_folder = QDir::currentPath().toStdString();
    // Files given by "Open with": a player already running takes them, so
    // that one Collection is not opened twice.
    // Qt has taken its own options out of argv.
    QStringList given;
    for (int i = 1; i < argc; ++i) given.push_back(QString::fromLocal8Bit(argv[i]));
    if (MediaPlayerBus::HandOver(given)) return 0;
    // libmpv reads numbers with the C library and refuses to start under a
    // locale whose decimal point is not '.'; QApplication has just set one.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("velmora"));
    QApplication::setApplicationDisplayName(QStringLiteral("Velmora II"));
    // The desktop matches the window to its installed entry and icon by this name.
    QApplication::setDesktopFileName(QStringLiteral("velmora"));
    // The window hides into the tray; only closing it, or the logic, ends the program.
    QApplication::setQuitOnLastWindowClosed(false);

    QtEventLoop loop;
    QtDialogs dialogs;
    QtShell shell;
    // The player and the second player only sound; the reader only reads;
    // the video engine and the preview panes draw through the render API
    // into the windows' own widgets, which take each engine as it starts.
    auto report = [](const MpvEngine& engine) {
        if (!engine.InitError().empty()) std::fprintf(stderr, "velmora: media engine: %s\n", engine.InitError().c_str());
    };
    // Each engine starts when first used: a window that plays nothing, or
    // reads no file, holds no player for it.
    auto started = [&loop, report](MpvEngine::Options options) {
        return [&loop, report, options]() -> std::unique_ptr<MediaEngine> {
            auto engine = std::make_unique<MpvEngine>(loop, options);
            report(*engine);
            return engine;
        };
    };
    // Reading a file needs no player: libmpv's engine reads through the media reader.
    LazyEngine player(started({.ao = {}, .vo = "null", .wid = 0}), ReadMediaItem);
    LazyEngine reader(started({.ao = "null", .vo = "null", .wid = 0}), ReadMediaItem);
    VideoWindow* video_window = nullptr;
    MainWindow* main_window = nullptr;
    LazyEngine video(
        [&loop, report, &video_window]() -> std::unique_ptr<MediaEngine> {
            auto engine = std::make_unique<MpvEngine>(loop, Video_Options());
            report(*engine);
            if (video_window != nullptr) video_window->Attach(engine->Handle());
            return engine;
        },
        ReadMediaItem);
    LazyEngine second(started({.ao = {}, .vo = "null", .wid = 0}), ReadMediaItem);
    std::vector<std::unique_ptr<LazyEngine>> panes;
    for (int i = 0; i < kPaneCount; ++i)
        panes.push_back(std::make_unique<LazyEngine>(
            [&loop, report, &main_window, i]() -> std::unique_ptr<MediaEngine> {
                auto engine = std::make_unique<MpvPaneEngine>(loop, Pane_Options());
                if (!engine->InitError().empty())
                    std::fprintf(stderr, "velmora: preview pane: %s\n", engine->InitError().c_str());
                if (main_window != nullptr) main_window->Catalogue().Panes().Pane(i).Attach(engine->Handle());
                return engine;
            },
            ReadMediaItem));

    // The snooze window sounds its alarm through an engine of its own.
    LazyEngine alarm(started({.ao = {}, .vo = "null", .wid = 0}), ReadMediaItem);

    QtPlaylistReader playlists;
    AppContext ctx(Ports{loop, dialogs, shell, player, reader, video, second, &playlists});
    for (int i = 0; i < kPaneCount; ++i) ctx.ports.panes[static_cast<size_t>(i)] = panes[static_cast<size_t>(i)].get();
    ctx.program_folder =
        Resolve_App_Path(QCoreApplication::applicationDirPath().toStdString(), DataHome());
    ctx.timed.Alarm_Engine = &alarm;

    // The windows go before the engines whose pictures they draw.
    MainWindow window(ctx.form1, ctx.core.Esc_Key);
    window.AttachShell(shell);
    main_window = &window;
    // With previews on, the panes' engines are made when their strip first
    // shows rather than inside the click that starts all twelve.
    std::vector<std::function<void()>> make_panes;
    for (auto& pane : panes)
        make_panes.push_back([&ctx, engine = pane.get()] {
            if (ctx.settings.Multi_Preview == -1) engine->Start();
        });
    window.Catalogue().Panes().SetFirstShowWork(std::move(make_panes));
    VideoWindow picture_window(ctx.form2);
    video_window = &picture_window;
    SecondPlayerWindow second_window(ctx.form4);
    SnoozeWindow snooze(ctx.form5, &window);
    // The video and second player windows stay above the others when asked,
    // as the main window does.
    auto keep_on_top = [](QWidget& widget) {
        return [&widget](bool on) {
            const bool shown = widget.isVisible();
            widget.setWindowFlag(Qt::WindowStaysOnTopHint, on);
            // Changing the flags takes the window off the screen.
            if (shown) widget.show();
        };
    };
    shell.RegisterOnTop(ctx.form2.Name(), keep_on_top(picture_window));
    shell.RegisterOnTop(ctx.form4.Name(), keep_on_top(second_window));
    SplashWindow splash(ctx.splash);
    SlideShowWindow slides(
        ctx.form3, [&ctx] { return ctx.core.App_Path; },
        [&shell] { (void)shell.OpenUrl(kWebPage); }, &window);
    // The window's layout, which the preferences file has no room for.
    QSettings layout(QStringLiteral("velmora"), QStringLiteral("window"));
    window.RestoreLayout(layout);
    snooze.SetCloseHandler([&ctx] { form5::Form_QueryUnload(ctx); });

    // A logout, a kill or a terminal's Ctrl+C ends the program the way
    // closing the window does, so the Collection and the preferences are
    // saved, whatever it is doing. Ending every running loop answers a box
    // that is open as closing it would, and every later box at once; the
    // main loop ends as soon as the handler it runs returns. A long loop
    // stops as Esc stops it. During the start-up the load runs to its end
    // and the main loop then never starts.
    bool loading = true;
    QuitSignals quit_signals([&](int) {
        QCoreApplication::exit(0);
        if (!loading) ctx.core.Esc_Key = 27;
    });

    bool unloaded = false;
    auto unload = [&] {
        if (unloaded) return;
        unloaded = true;
        // Asked by a signal, nobody may be there to answer a box of the save.
        if (quit_signals.First() != 0) QCoreApplication::exit(0);
        window.SaveLayout(layout);
        Form_QueryUnload(ctx);
    };
    window.SetCloseHandler([&] {
        unload();
        QApplication::quit();
    });
    window.SetTrayClickHandler([&ctx] { Form_MouseMove(ctx, kTrayLeftDown); });
    window.SetDropHandler([&ctx](const std::vector<std::string>& names) { Accept_Dropped_Files(ctx, names); });
    Refresh_Drive_List(ctx.form1.Drive1);
    // The session may end the program without closing the window first.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, [&] { unload(); });

    if (hooks.before_load) hooks.before_load(window);
    Form_Load(ctx);
    loading = false;
    // A Collection names the folder the search page last showed; without
    // one, the page opens where the program was started.
    if (ctx.form1.Dir1.Path().empty()) {
        ctx.form1.Drive1.SetPath(DriveOf(ctx.form1.Drive1, start_folder));
        ctx.form1.Dir1.SetPath(start_folder);
    }
    if (hooks.after_load) hooks.after_load(ctx);
    MediaPlayerBus media_bus(ctx);
    if (!media_bus.Register())
        std::fprintf(stderr, "velmora: media keys unavailable: %s\n", media_bus.Error().toUtf8().constData());
    std::vector<std::string> given_files;
    for (const QString& file : given) given_files.push_back(file.toStdString());
    // Given files go to the Collection and the first plays at once.
    Open_Given_Files(ctx, given_files, start_folder);
    // What the load built and dropped goes back to the system as soon as
    // the loop runs.
    QTimer::singleShot(0, Release_Free_Heap);
    // The loop forgets an exit asked before it runs: a signal that came
    // during the start-up is honoured here instead.
    const int code = quit_signals.First() != 0 ? 0 : QApplication::exec();
    unload();
    signal = quit_signals.First();
    return code;
}

}  // namespace

int RunProgram(int argc, char** argv, const ProgramHooks& hooks) {
    if (!DisplayAvailable()) {
        std::fprintf(stderr, "velmora: no display found (set DISPLAY or WAYLAND_DISPLAY, or use velmora-cli)\n");
        return 2;
    }
    int signal = 0;
    const int code = RunWindow(argc, argv, hooks, signal);
    // Saved and closed down: the process ends by the signal, as a shell expects.
    if (signal != 0) End_By_Signal(signal);
    return code;
}

}  // namespace velmora
