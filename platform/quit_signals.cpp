#include "platform/quit_signals.h"

#include <QSocketNotifier>

#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace velmora {

namespace {

constexpr std::array<int, 3> kQuitSignals = {SIGTERM, SIGINT, SIGHUP};

// The handler's end and the loop's end of the socket.
int g_socket[2] = {-1, -1};
std::array<struct sigaction, kQuitSignals.size()> g_previous{};

void OnQuitSignal(int signal) {
    const int saved = errno;
    const char byte = static_cast<char>(signal);
    // Non-blocking: a flood of signals that fills the socket drops the
    // surplus, and the loop has been told already.
    [[maybe_unused]] const auto written = ::write(g_socket[0], &byte, 1);
    errno = saved;
}

sigset_t QuitSet() {
    sigset_t set;
    sigemptyset(&set);
    for (int signal : kQuitSignals) sigaddset(&set, signal);
    return set;
}

}  // namespace

struct QuitSignalHold::Mask {
    sigset_t old;
};

QuitSignalHold::QuitSignalHold() : m_saved(std::make_unique<Mask>()) {
    const sigset_t set = QuitSet();
    ::pthread_sigmask(SIG_BLOCK, &set, &m_saved->old);
}

QuitSignalHold::~QuitSignalHold() { ::pthread_sigmask(SIG_SETMASK, &m_saved->old, nullptr); }

QuitSignals::QuitSignals(std::function<void(int)> on_signal) : m_on_signal(std::move(on_signal)) {
    if (g_socket[0] >= 0) return;  // one at a time: the handler has one socket
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, g_socket) != 0) {
        g_socket[0] = g_socket[1] = -1;
        std::perror("velmora: the quit signals cannot be taken");
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(g_socket[1], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { Read(); });
    struct sigaction action {};
    action.sa_handler = OnQuitSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;  // no SA_RESTART: a blocking call returns EINTR
    for (size_t i = 0; i < kQuitSignals.size(); ++i) ::sigaction(kQuitSignals[i], &action, &g_previous[i]);
    const sigset_t set = QuitSet();
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

QuitSignals::~QuitSignals() {
    if (!m_notifier) return;
    for (size_t i = 0; i < kQuitSignals.size(); ++i) ::sigaction(kQuitSignals[i], &g_previous[i], nullptr);
    m_notifier.reset();
    ::close(g_socket[0]);
    ::close(g_socket[1]);
    g_socket[0] = g_socket[1] = -1;
}

void QuitSignals::Read() {
    // All that came, before any is told: the call back may give way to the
    // loop, which must not find the same bytes again.
    std::vector<int> told;
    char bytes[64];
    for (;;) {
        const ssize_t n = ::read(g_socket[1], bytes, sizeof bytes);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        for (ssize_t i = 0; i < n; ++i) told.push_back(static_cast<unsigned char>(bytes[i]));
    }
    for (int signal : told) {
        if (m_first == 0) m_first = signal;
        m_on_signal(signal);
    }
}

void End_By_Signal(int signal) {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    std::signal(signal, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    std::raise(signal);
    // A signal whose default is not to end the process: the shell's number.
    std::_Exit(128 + signal);
}

}  // namespace velmora
