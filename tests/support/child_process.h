#pragma once
// A program run as a process of its own, as a user's shell or session runs
// it: standard input from /dev/null, standard output and error into files,
// signals sent at chosen moments, its end waited for with a limit.

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/event_loop.h"

namespace velmora::testing {

class ChildProcess {
public:
    // argv[0] is the program's path. env holds "NAME=value" entries set on
    // top of this process's environment.
    ChildProcess(const std::vector<std::string>& argv, const std::filesystem::path& out,
                 const std::filesystem::path& err, const std::vector<std::string>& env = {});
    // A process still running is killed and reaped.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool Started() const { return m_pid > 0; }
    pid_t Pid() const { return m_pid; }
    void Signal(int signal) const;
    // Whether it has ended, waiting up to ms for it.
    bool Ended(int ms = 0);
    // Kills it for good when it is still running.
    void Kill();

    // Once ended: the exit code, or -1 when a signal ended it; the signal, or 0.
    int ExitCode() const;
    int EndSignal() const;
    // "exit 0", "signal 15", "still running".
    std::string Outcome() const;

private:
    pid_t m_pid = -1;
    bool m_ended = false;
    int m_status = 0;
};

// Waits up to ms for the condition, checking it every 10 ms.
bool Within(int ms, const std::function<bool()>& holds);
// The same on a loop's clock, giving way to the loop between checks.
bool Within(EventLoop& loop, int ms, const std::function<bool()>& holds);

// What a shell command prints on its standard output, whatever its exit.
std::string Output(const std::string& command);

}  // namespace velmora::testing
