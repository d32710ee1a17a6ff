#include "support/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <csignal>
#include <thread>

extern char** environ;

namespace velmora::testing {

ChildProcess::ChildProcess(const std::vector<std::string>& argv, const std::filesystem::path& out,
                           const std::filesystem::path& err, const std::vector<std::string>& env) {
    std::vector<char*> args;
    for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
    args.push_back(nullptr);
    std::vector<std::string> names;
    for (const std::string& entry : env) names.push_back(entry.substr(0, entry.find('=') + 1));
    std::vector<char*> environment;
    for (char** e = environ; *e != nullptr; ++e) {
        bool replaced = false;
        for (const std::string& name : names) replaced = replaced || std::string(*e).rfind(name, 0) == 0;
        if (!replaced) environment.push_back(*e);
    }
    for (const std::string& entry : env) environment.push_back(const_cast<char*>(entry.c_str()));
    environment.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    // Its own process group, so that a terminal's Ctrl-C meant for the
    // tests does not reach it, and with the default signal mask.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    if (posix_spawn(&m_pid, args[0], &files, &attributes, args.data(), environment.data()) != 0) m_pid = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
}

ChildProcess::~ChildProcess() { Kill(); }

void ChildProcess::Signal(int signal) const {
    if (Started() && !m_ended) ::kill(m_pid, signal);
}

bool ChildProcess::Ended(int ms) {
    if (!Started() || m_ended) return true;
    return Within(ms, [this] {
        m_ended = ::waitpid(m_pid, &m_status, WNOHANG) == m_pid;
        return m_ended;
    });
}

void ChildProcess::Kill() {
    if (!Started() || m_ended) return;
    ::kill(m_pid, SIGKILL);
    m_ended = ::waitpid(m_pid, &m_status, 0) == m_pid;
}

int ChildProcess::ExitCode() const { return m_ended && WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }

int ChildProcess::EndSignal() const { return m_ended && WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0; }

std::string ChildProcess::Outcome() const {
    if (!m_ended) return "still running";
    if (EndSignal() != 0) return "signal " + std::to_string(EndSignal());
    return "exit " + std::to_string(ExitCode());
}

bool Within(int ms, const std::function<bool()>& holds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (;;) {
        if (holds()) return true;
        if (std::chrono::steady_clock::now() >= until) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

bool Within(EventLoop& loop, int ms, const std::function<bool()>& holds) {
    for (const int64_t start = loop.TickCount(); !holds(); loop.WaitForEvents(10))
        if (loop.TickCount() - start > ms) return false;
    return true;
}

std::string Output(const std::string& command) {
    std::string out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
        pclose(pipe);
    }
    return out;
}

}  // namespace velmora::testing
