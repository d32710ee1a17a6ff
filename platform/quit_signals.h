#pragma once
// SIGTERM, SIGINT and SIGHUP as a request to quit, delivered on the main
// thread's loop. A logout, a `kill` or a terminal's Ctrl-C then ends the
// program the way its own quit does, which saves.
//
// The handler only writes the signal's number to a socket, and the loop
// reads it and calls back, in whatever state the program is: loading, in a
// box's own loop, inside a long loop that gives way. Every signal is told,
// not only the first. The handler is installed without SA_RESTART, so a
// blocking read of a terminal or a FIFO that nobody writes is cut short and
// the program gets back to its loop to quit.

#include <functional>
#include <memory>

class QSocketNotifier;

namespace velmora {

// Keeps the quit signals pending in the calling thread, and away from every
// thread it starts while this lives: made before the engines and the
// toolkit start their threads, it leaves the signals to the main thread,
// whose blocking calls they are to cut short. A signal that comes in the
// meantime is held, not lost. The old mask comes back with the object.
class QuitSignalHold {
public:
    QuitSignalHold();
    ~QuitSignalHold();
    QuitSignalHold(const QuitSignalHold&) = delete;
    QuitSignalHold& operator=(const QuitSignalHold&) = delete;

private:
    struct Mask;
    std::unique_ptr<Mask> m_saved;
};

// Needs a QCoreApplication for as long as it lives. Takes the signals over
// from a hold, so those held meanwhile are told at the loop's first turn.
class QuitSignals {
public:
    explicit QuitSignals(std::function<void(int signal)> on_signal);
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

    // The first signal told, or 0.
    int First() const { return m_first; }

private:
    void Read();

    std::function<void(int)> m_on_signal;
    std::unique_ptr<QSocketNotifier> m_notifier;
    int m_first = 0;
};

// Ends the process by the signal, with its default action, after the quit
// has done its work: a shell then sees the program stopped by the signal it
// sent (status 128 + the number) and stops a loop it runs, as with any
// other program. Does not return.
[[noreturn]] void End_By_Signal(int signal);

}  // namespace velmora
