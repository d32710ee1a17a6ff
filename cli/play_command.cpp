#include "cli/play_command.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include "app/startup.h"
#include "base/file_kind.h"
#include "cli/headless_program.h"
#include "cli/terminal_dialogs.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "platform/quit_signals.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"
#include "timed/sleep_timer.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

constexpr const char* kCycleEnd = "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced";

// The terminal in raw mode while the player runs: keys arrive one by one and
// are not echoed. Ctrl-C still raises its signal. The old mode comes back
// when the object goes, and for a typed answer to a question.
class RawTerminal {
public:
    RawTerminal() {
        if (::tcgetattr(STDIN_FILENO, &m_saved) != 0) return;
        m_held = true;
        Raw(true);
    }
    ~RawTerminal() { Raw(false); }
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

    void Raw(bool on) {
        if (!m_held) return;
        termios mode = m_saved;
        if (on) {
            mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
            mode.c_cc[VMIN] = 1;
            mode.c_cc[VTIME] = 0;
        }
        ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    }

private:
    termios m_saved{};
    bool m_held = false;
};

std::string NameOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// One status line: Track number, file name, position and time left, mode.
std::string StatusLine(const AppContext& ctx) {
    const Form1& f = ctx.form1;
    const int row = ctx.table.Current_Track;
    std::string name;
    if (row >= 0 && row < f.List2.ListCount()) name = NameOf(std::string(f.List2.List(row)));
    // The boxes are empty until the clock's first tick.
    auto clock = [](const std::string& text) { return text.empty() ? std::string("00:00:00") : text; };
    std::string line = "[" + std::to_string(row + 1) + "/" + std::to_string(f.List2.ListCount()) + "] " + name +
                       "  " + clock(f.Text5[1].Text()) + " / -" + clock(f.Text5[2].Text());
    // The class as the list shows it: S, A, B, C, X or "-" for Unmarked.
    if (row >= 0 && row < f.List3_0[1].ListCount()) line.append("  [").append(f.List3_0[1].List(row)).append("]");
    if (!f.Label6.Caption().empty()) line += "  " + f.Label6.Caption();
    if (ctx.ports.player.playState() == PS_Paused) line += "  (paused)";
    return line;
}

int Usage() {
    std::cerr << "usage: velmora-cli play FILE.qel [--ao NAME] [--sleep DURATION]\n"
                 "  DURATION: such as 30m, 1h15m or 45s; the volume comes down over the last minute,\n"
                 "  then playing pauses and the program saves and ends\n"
                 "  keys: space pause, n next, p previous, f/b forward/back by the step count, r rate, q quit\n";
    return 2;
}

// The player from start to end; `signal` is the signal that asked it to
// quit, or 0.
int Play(int argc, char** argv, int& signal) {
    std::string file, ao;
    std::optional<int64_t> sleep_seconds;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--ao" && i + 1 < argc) ao = argv[++i];
        else if (arg.rfind("--ao=", 0) == 0) ao = arg.substr(5);
        else if (arg == "--sleep" && i + 1 < argc && !sleep_seconds) {
            sleep_seconds = Parse_Sleep_Duration(argv[++i]);
            if (!sleep_seconds) {
                std::cerr << "velmora-cli: " << argv[i] << ": not a duration\n";
                return Usage();
            }
        }
        else if (file.empty() && !arg.starts_with("--")) file = arg;
        else return Usage();
    }
    if (file.empty()) return Usage();
    std::error_code ec;
    const fs::path absolute = fs::absolute(file, ec);
    if (ec || !fs::is_regular_file(absolute, ec)) {
        const FileKind kind = Resolve_File(absolute.string()).kind;
        std::cerr << "velmora-cli: " << file << ": "
                  << (kind == FileKind::Missing ? std::string("no such Collection file")
                                                : std::string(Kind_Text(kind)) + ", not a regular file")
                  << "\n";
        return 2;
    }
    file = absolute.lexically_normal().string();

    const bool keys = ::isatty(STDIN_FILENO) != 0;
    const bool status_tty = ::isatty(STDERR_FILENO) != 0;

    TerminalDialogs dialogs(std::cin, std::cerr, keys);
    TerminalShell shell(std::cerr);
    // The engines start threads; the quit signals are left to this one, and
    // one that comes before the loop can read it waits.
    QuitSignalHold hold;
    HeadlessProgram program(dialogs, shell, ao);
    QCoreApplication& app = program.App();
    if (!program.Player().InitError().empty()) {
        std::cerr << "velmora-cli: media engine: " << program.Player().InitError() << "\n";
        return 1;
    }

    AppContext& ctx = program.Context();
    Set_Program_Folder(ctx, file);
    // Nothing is touched while another program writes this Collection, or
    // when one of its files is not a regular file.
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, std::cerr)) return 1;

    // Start-up opens the Collection the pointer file names: point it at this
    // one first, keeping the statistics the pointer carries. The window will
    // open it next time too, as if it had been opened there.
    Load_Pointer(ctx);
    ctx.collection.Collection_Path = file;
    // Without it start-up would open another Collection; nothing has been
    // touched yet.
    if (std::string fault; !Save_Pointer(ctx, &fault)) {
        std::cerr << "velmora-cli: " << file << ": not played: " << fault << "\n";
        return 1;
    }

    std::optional<RawTerminal> raw;
    if (keys) raw.emplace();
    dialogs.SetTerminalHandover([&](bool asking) {
        if (raw) raw->Raw(!asking);
    });

    auto clear_status = [&] {
        if (status_tty) std::cerr << "\r\x1b[K";
    };
    bool quitting = false;
    auto quit = [&] {
        if (quitting) return;
        quitting = true;
        clear_status();
        std::cerr << "velmora-cli: saving\n" << std::flush;
        // Saves as closing the window does, then ends the loop.
        Form_QueryUnload(ctx);
        QCoreApplication::quit();
    };

    // A kill, a closed terminal or Ctrl-C quits as 'q' does. A question
    // being typed is cut short (the signal interrupts the read) and takes
    // its first answer; the loop ends once the handler it runs returns, and
    // a long loop stops as Esc stops it. During the start-up the load runs
    // to its end first: a save in its middle would write a half-read
    // Collection.
    bool loading = true;
    QuitSignals quit_signals([&](int) {
        QCoreApplication::exit(0);
        if (!loading) ctx.core.Esc_Key = 27;
    });

    std::vector<Subscription> links;
    bool cycle_over = false;
    // The cycle's end is noticed within a few hundredths of a second, not at
    // the clock's next tick a second later.
    QTimer end_watch;
    end_watch.setInterval(20);
    std::string last_logged;
    links.push_back(ctx.form1.Text2[0].Changed.connect([&](Change kind) {
        if (kind != Change::Contents) return;
        // The newest line is the first.
        const std::string newest(ctx.form1.Text2[0].First_Line());
        if (newest.empty() || newest == last_logged) return;
        last_logged = newest;
        clear_status();
        // One write per line: the error stream is unbuffered.
        std::cerr << (newest + "\n") << std::flush;
        if (newest.find(kCycleEnd) != std::string::npos) {
            cycle_over = true;
            end_watch.start();
        }
    }));

    Form_Load(ctx);
    loading = false;
    if (ctx.collection.Collection_Path != file) {
        // The pointer file was written but reads back another path: its
        // reader ends a path at a comma.
        std::cerr << "velmora-cli: " << file << ": not played: the pointer file cannot carry a path with a comma\n";
        return 1;
    }
    if (ctx.form1.List2.ListCount() == 0) {
        std::cerr << "velmora-cli: " << file << ": the Collection holds no Tracks\n";
        Form_QueryUnload(ctx);
        return 1;
    }

    // On a terminal the line is rewritten in place; in a file, one line per Track.
    int shown_track = -2;
    auto show_status = [&] {
        if (status_tty) {
            std::cerr << "\r\x1b[K" << StatusLine(ctx) << std::flush;
        } else if (ctx.table.Current_Track != shown_track) {
            shown_track = ctx.table.Current_Track;
            std::cerr << StatusLine(ctx) << "\n" << std::flush;
        }
    };
    // With no one at the window, a walk that stands still ends the run: the
    // only Track's file is missing, so nothing is loaded and nothing comes
    // next. The pause between files is waited out first.
    const int64_t idle_limit_ms = 10'000 + (ctx.settings.Pause_Active != 0 ? 1000 * ctx.settings.Pause_Seconds : 0);
    int64_t idle_since = -1;
    auto idle = [&] { return ctx.ports.player.URL().empty() && ctx.ports.player.playState() != PS_Playing; };
    // The cycle is over when its line was written and the engine has let go.
    QObject::connect(&end_watch, &QTimer::timeout, &app, [&] {
        if (!quitting && cycle_over && idle()) quit();
    });
    links.push_back(ctx.form1.Timer1.Tick.connect([&] {
        if (quitting) return;
        if (cycle_over && idle()) {
            quit();
            return;
        }
        const int64_t now = ctx.ports.loop.TickCount();
        if (!idle()) idle_since = -1;
        else if (idle_since < 0) idle_since = now;
        else if (now - idle_since >= idle_limit_ms) {
            clear_status();
            std::cerr << "velmora-cli: nothing is left that can be played\n";
            quit();
            return;
        }
        show_status();
    }));

    if (keys) {
        auto* notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &app, [&, notifier] {
            char key = 0;
            if (::read(STDIN_FILENO, &key, 1) != 1) {
                notifier->setEnabled(false);  // the terminal went away; play on
                return;
            }
            switch (key) {
                case ' ': Command11_Click(ctx); break;
                case 'n': Command3_Click(ctx, 0); break;
                case 'p': Command3_Click(ctx, 1); break;
                case 'f': Command15_Click(ctx, 0); break;
                case 'b': Command15_Click(ctx, 1); break;
                case 'r': Command8_Click(ctx); break;
                case 'q':
                case 'Q': quit(); break;
                default: break;
            }
        });
    }

    // Counted from the start of playing; the pause leaves the position for the save.
    std::optional<SleepTimer> sleep;
    if (sleep_seconds) sleep.emplace(ctx, *sleep_seconds, [&] {
        clear_status();
        std::cerr << "velmora-cli: the sleep time is over\n";
        quit();
    });

    // Start-up plays by itself when the preferences say so; otherwise this
    // is the one press.
    if (ctx.settings.Auto_Start != -1 && quit_signals.First() == 0) Command3_Click(ctx, 0);
    // The loop forgets an exit asked before it runs: a signal that came
    // during the start-up is honoured here instead.
    if (!quitting && quit_signals.First() == 0) {
        show_status();
        QCoreApplication::exec();
    }
    signal = quit_signals.First();
    quit();
    clear_status();
    raw.reset();
    // Leaving saved; the log has told why a save failed, and the exit code says so.
    if (!ctx.collection.Save_Fault.empty()) {
        std::cerr << "velmora-cli: " << file << ": the Collection could not be saved: " << ctx.collection.Save_Fault
                  << "\n";
        return 1;
    }
    if (!ctx.core.Settings_Fault.empty()) {
        std::cerr << "velmora-cli: the preferences could not be saved: " << ctx.core.Settings_Fault << "\n";
        return 1;
    }
    return 0;
}

}  // namespace

int Play_Command(int argc, char** argv) {
    int signal = 0;
    const int code = Play(argc, argv, signal);
    // Saved and closed down: the process ends by the signal, as a shell expects.
    if (signal != 0) End_By_Signal(signal);
    return code;
}

}  // namespace velmora::cli
