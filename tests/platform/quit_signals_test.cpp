#include "platform/quit_signals.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include "platform/qt_event_loop.h"
#include "support/child_process.h"

namespace velmora {
namespace {

// The program's start in small: the signals held while its threads start,
// then taken over, with the main thread blocked in a read nothing would end.
TEST(QuitSignals, HeldSignalsAreToldOnceTakenEachLaterOneFromTheLoopAndABlockingReadIsCutShort) {
    int pipe_ends[2];
    ASSERT_EQ(::pipe(pipe_ends), 0);
    std::atomic<bool> read_returned{false};
    bool helper_blocks = false;
    QuitSignalHold hold;
    QtEventLoop loop;
    std::raise(SIGHUP);
    std::thread helper([&] {
        sigset_t mask;
        ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        helper_blocks = sigismember(&mask, SIGTERM) && sigismember(&mask, SIGINT) && sigismember(&mask, SIGHUP);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        ::kill(::getpid(), SIGTERM);
        // A read the signal did not end is ended here, so that the test fails
        // instead of hanging.
        for (int i = 0; i < 300 && !read_returned; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (!read_returned) {
            [[maybe_unused]] const auto n = ::write(pipe_ends[1], "x", 1);
        }
    });
    std::vector<int> told;
    auto told_by_loop = [&](size_t count) { return testing::Within(loop, 5000, [&] { return told.size() >= count; }); };
    QuitSignals signals_([&](int signal) { told.push_back(signal); });
    EXPECT_TRUE(told.empty()) << "the handler only writes; the loop tells";
    char byte;
    const ssize_t got = ::read(pipe_ends[0], &byte, 1);
    const int error = errno;
    read_returned = true;
    helper.join();
    EXPECT_TRUE(helper_blocks) << "a thread started while held never takes a quit signal";
    EXPECT_EQ(got, -1);
    EXPECT_EQ(error, EINTR) << "a quit signal interrupts a blocking call rather than restart it";
    ASSERT_TRUE(told_by_loop(2));
    std::raise(SIGINT);
    ASSERT_TRUE(told_by_loop(3));
    EXPECT_EQ(told, (std::vector<int>{SIGHUP, SIGTERM, SIGINT})) << "the held one is not lost, nor later ones";
    EXPECT_EQ(signals_.First(), SIGHUP);
    ::close(pipe_ends[0]);
    ::close(pipe_ends[1]);
}

}  // namespace
}  // namespace velmora
