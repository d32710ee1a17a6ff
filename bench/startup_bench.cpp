// How long the window takes to show from process start, and how much memory
// the idle program holds. Run offscreen (QT_QPA_PLATFORM=offscreen) or on a
// display; prints one line and ends by itself.
//   startup_bench [--detail]
// --detail also lists the mappings that hold the most resident memory at idle
// and ends there with exit(): the window and the Collection are never torn
// down, so a heap profiler run over it (heaptrack) reports what the idle
// program holds as not freed.
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTableView>
#include <QTimer>

#include <malloc.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

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

// Resident kB by mapping, from /proc/self/smaps, and of it the private
// anonymous pages: the heap, the anonymous mappings (thread stacks, other
// arenas, the toolkit's buffers) and each file, whose written pages
// (relocations, data) count as anonymous.
void PrintLargestMappings() {
    std::ifstream smaps("/proc/self/smaps");
    std::map<std::string, std::pair<long, long>> by_name;
    std::string line, name;
    while (std::getline(smaps, line)) {
        const size_t colon = line.find(':'), space = line.find(' ');
        if (colon != std::string::npos && space != std::string::npos && colon > space) {
            std::istringstream fields(line);
            std::string range, perms, offset, dev, inode;
            fields >> range >> perms >> offset >> dev >> inode;
            name.clear();
            std::getline(fields >> std::ws, name);
            if (name.empty()) name = "[anonymous]";
        } else if (line.rfind("Rss:", 0) == 0) {
            by_name[name].first += std::atol(line.c_str() + 4);
        } else if (line.rfind("Anonymous:", 0) == 0) {
            by_name[name].second += std::atol(line.c_str() + 10);
        }
    }
    std::vector<std::pair<std::pair<long, long>, std::string>> rows;
    for (const auto& [n, kb] : by_name) rows.emplace_back(kb, n);
    std::sort(rows.rbegin(), rows.rend());
    std::printf("resident MB  of it anonymous  mapping\n");
    for (size_t i = 0; i < rows.size() && i < 30; ++i)
        std::printf("%8.1f %12.1f      %s\n", static_cast<double>(rows[i].first.first) / 1024.0,
                    static_cast<double>(rows[i].first.second) / 1024.0, rows[i].second.c_str());
}

bool g_detail = false;

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
                if (g_detail) {
                    const struct mallinfo2 heap = mallinfo2();
                    std::printf("malloc: %.1f MB in use, %.1f MB free inside the arenas, %.1f MB mapped alone\n",
                                static_cast<double>(heap.uordblks) / 1048576.0,
                                static_cast<double>(heap.fordblks) / 1048576.0,
                                static_cast<double>(heap.hblkhd) / 1048576.0);
                    PrintLargestMappings();
                    std::fflush(stdout);
                    std::exit(0);
                }
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
    if (argc > 1 && std::strcmp(argv[argc - 1], "--detail") == 0) {
        g_detail = true;
        --argc;
    }
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
