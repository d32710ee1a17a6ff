// One press in the window on the Collection it starts with, timed until the
// cycle ends: with every file of the Collection gone, the walk past a drive
// that is gone. Run by gone_drive_bench.sh, which makes that Collection.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <string>

#include "core/app_context.h"
#include "desktop/qt/program.h"
#include "playback/transport.h"

int main(int argc, char** argv) {
    QElapsedTimer clock;
    QTimer poll;
    velmora::ProgramHooks hooks;
    hooks.after_load = [&](velmora::AppContext& ctx) {
        const std::string end = "Every file has been reproduced";
        std::printf("window: %d Tracks loaded\n", ctx.form1.List2.ListCount());
        clock.start();
        velmora::Command3_Click(ctx, 0);
        QObject::connect(&poll, &QTimer::timeout, [&ctx, &clock, end] {
            if (ctx.form1.Text2[0].Text().find(end) == std::string::npos) return;
            std::printf("window: cycle ended %.2f s after the press\n", static_cast<double>(clock.elapsed()) / 1000.0);
            std::fflush(stdout);
            QApplication::quit();
        });
        poll.start(20);
    };
    return velmora::RunProgram(argc, argv, hooks);
}
