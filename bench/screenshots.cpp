// Draws the window into OUTDIR, over the Collection the program's folder
// holds: each page of the page group, the second player, the start screen,
// the slide show, the about texts and the statistics. It also prints how
// long after the process began the start screen was first drawn. Run
// offscreen (QT_QPA_PLATFORM=offscreen); bench/screenshots.sh makes a small
// Collection of generated media first.
//   screenshots OUTDIR
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QMainWindow>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "core/app_context.h"
#include "desktop/about.h"
#include "desktop/qt/program.h"
#include "playback/second_player.h"

namespace {

double ProcessStartSeconds() {
    std::ifstream stat("/proc/self/stat");
    std::string line;
    std::getline(stat, line);
    std::istringstream rest(line.substr(line.rfind(')') + 2));
    std::string field;
    for (int i = 3; i <= 22; ++i) rest >> field;  // field 22 is starttime
    return std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double NowSinceBoot() {
    timespec ts{};
    clock_gettime(CLOCK_BOOTTIME, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) / 1e9;
}

// The views pace their redraws: give the loop time to catch up.
void Settle(int ms = 400) {
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < ms) {
        QApplication::processEvents();
        QThread::msleep(5);
    }
}

QString g_out;

void Draw(QWidget* widget, const char* name) {
    if (widget == nullptr) {
        std::fprintf(stderr, "screenshots: nothing to draw for %s\n", name);
        return;
    }
    Settle();
    const QString file = g_out + "/" + name;
    if (!widget->grab().save(file)) std::fprintf(stderr, "screenshots: cannot write %s\n", qPrintable(file));
    std::printf("%s\n", qPrintable(file));
}

QWidget* Window(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == QLatin1String(name)) return widget;
    return nullptr;
}

// A box the logic is waiting on: drawn, then answered as its close button would.
void DrawBoxSoon(const char* name) {
    QTimer::singleShot(600, [name] {
        QWidget* box = QApplication::activeModalWidget();
        Draw(box, name);
        if (box) box->close();
    });
}

// The first drawing of the start screen, in milliseconds from the process start.
class SplashWatch : public QObject {
public:
    double first_ms = -1;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (first_ms < 0 && event->type() == QEvent::Paint && watched->objectName() == QLatin1String("frmSplash"))
            first_ms = (NowSinceBoot() - ProcessStartSeconds()) * 1000.0;
        return false;
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: screenshots OUTDIR\n");
        return 2;
    }
    g_out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    QDir().mkpath(g_out);
    SplashWatch watch;
    velmora::ProgramHooks hooks;
    hooks.before_load = [&](QMainWindow&) { qApp->installEventFilter(&watch); };
    hooks.after_load = [&](velmora::AppContext& ctx) {
        QTimer::singleShot(0, [&ctx, &watch] {
            std::printf("start screen first drawn %.0f ms after the process began\n", watch.first_ms);
            QWidget* main = Window("Form1");
            for (int page = 0; page < 5; ++page) {
                ctx.form1.MultiPage1.SetValue(page);
                Draw(main, ("page_" + std::to_string(page) + ".png").c_str());
            }
            ctx.form1.MultiPage1.SetValue(0);
            velmora::Passage(ctx, -1);
            Draw(Window("Form4"), "second_player.png");
            velmora::Passage(ctx, 0);
            ctx.splash.Show();
            Draw(Window("frmSplash"), "start_screen.png");
            ctx.splash.Hide();
            ctx.form3.Show();
            Draw(Window("Form3"), "slide_show.png");
            ctx.form3.Hide();
            DrawBoxSoon("about_greek.png");
            velmora::mnuinfogr_Click(ctx, 0);
            DrawBoxSoon("about_english.png");
            velmora::mnuinfogr_Click(ctx, 1);
            DrawBoxSoon("statistics.png");
            velmora::mnustats_Click(ctx);
            Draw(main, "window.png");
            QApplication::quit();
        });
    };
    return velmora::RunProgram(argc, argv, hooks);
}
