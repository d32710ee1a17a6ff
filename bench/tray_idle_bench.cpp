// The program hidden in the tray while it plays: starts the window with the
// file given, hides it as a left click on the tray icon does, and stays so
// for the seconds asked, printing its process id for pidstat, then the CPU
// time it took meanwhile and the clock's period.
//   tray_idle_bench FILE [SECONDS]      (60 by default)
#include <QApplication>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "core/app_context.h"
#include "desktop/qt/program.h"
#include "desktop/tray.h"

namespace {

double CpuSeconds() {
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return static_cast<double>(use.ru_utime.tv_sec + use.ru_stime.tv_sec) +
           static_cast<double>(use.ru_utime.tv_usec + use.ru_stime.tv_usec) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: tray_idle_bench FILE [SECONDS]\n");
        return 2;
    }
    const int seconds = argc > 2 ? std::atoi(argv[2]) : 60;
    int program_argc = 2;
    char* program_argv[] = {argv[0], argv[1], nullptr};
    velmora::ProgramHooks hooks;
    hooks.after_load = [seconds](velmora::AppContext& ctx) {
        // A moment for the given file to start, then into the tray.
        QTimer::singleShot(3000, [&ctx, seconds] {
            velmora::Form_MouseMove(ctx, velmora::kTrayLeftDown);
            std::printf("pid %d hidden: clock %d ms, state %d\n", static_cast<int>(getpid()),
                        ctx.form1.Timer1.Interval(), ctx.ports.player.playState());
            std::fflush(stdout);
            const double start = CpuSeconds();
            QTimer::singleShot(seconds * 1000, [&ctx, start, seconds] {
                const double used = CpuSeconds() - start;
                std::printf("%d s hidden while playing (state %d): %.3f s CPU, %.2f%% of one core\n", seconds,
                            ctx.ports.player.playState(), used, 100.0 * used / seconds);
                std::fflush(stdout);
                QApplication::quit();
            });
        });
    };
    return velmora::RunProgram(program_argc, program_argv, hooks);
}
