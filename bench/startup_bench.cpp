// How long the window takes to show from process start, and how much memory
// the idle program holds. Run offscreen (QT_QPA_PLATFORM=offscreen) or on a
// display; prints one line and ends by itself.
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTableView>
#include <QTimer>

#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "desktop/qt/program.h"

namespace {

// Seconds since boot at which this process started, from /proc.
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

long ResidentKb(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string key;
    long value = 0;
    while (status >> key) {
        if (key == field) {
            status >> value;
            return value;
        }
        status.ignore(1 << 16, '\n');
    }
    return 0;
}

class FirstPaint : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (!m_seen && event->type() == QEvent::Paint) {
            m_seen = true;
            const double ms = (NowSinceBoot() - ProcessStartSeconds()) * 1000.0;
            std::printf("window shown %.0f ms after process start\n", ms);
            // Idle a few seconds past the start screen, then read the memory.
            QTimer::singleShot(4000, [] {
                std::printf("idle resident memory %.1f MB (heap and other private %.1f MB, libraries and files %.1f MB)\n",
                            static_cast<double>(ResidentKb("VmRSS:")) / 1024.0,
                            static_cast<double>(ResidentKb("RssAnon:")) / 1024.0,
                            static_cast<double>(ResidentKb("RssFile:") + ResidentKb("RssShmem:")) / 1024.0);
                QApplication::quit();
            });
        }
        return false;
    }

private:
    bool m_seen = false;
};

// The first time the track list paints with rows in it: the Collection is in view.
class FirstRows : public QObject {
public:
    explicit FirstRows(QTableView*& view) : m_view(view) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (!m_seen && event->type() == QEvent::Paint && m_view && m_view->model() &&
            m_view->model()->rowCount() > 0) {
            m_seen = true;
            const double ms = (NowSinceBoot() - ProcessStartSeconds()) * 1000.0;
            std::printf("%d rows shown %.0f ms after process start\n", m_view->model()->rowCount(), ms);
        }
        return false;
    }

private:
    QTableView*& m_view;
    bool m_seen = false;
};

}  // namespace

int main(int argc, char** argv) {
    FirstPaint filter;
    QTableView* list = nullptr;
    FirstRows rows(list);
    velmora::ProgramHooks hooks;
    hooks.before_load = [&](QMainWindow& window) {
        window.installEventFilter(&filter);
        list = window.findChild<QTableView*>();
        if (list) list->viewport()->installEventFilter(&rows);
    };
    return velmora::RunProgram(argc, argv, hooks);
}
