#include "platform/quit_signals.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

namespace velmora {
namespace {

// Gives Qt's loop turns until `count` signals were told, for up to five seconds.
bool Told(const std::vector<int>& told, size_t count) {
    QElapsedTimer waited;
    waited.start();
    while (told.size() < count && waited.elapsed() < 5000) QCoreApplication::processEvents();
    return told.size() >= count;
}

TEST(QuitSignals, EverySignalIsToldOnTheLoopNeverInsideTheHandler) {
    std::vector<int> told;
    QuitSignals signals_([&](int signal) { told.push_back(signal); });
    std::raise(SIGTERM);
    EXPECT_TRUE(told.empty()) << "the handler only writes; the loop tells";
    ASSERT_TRUE(Told(told, 1));
    // The first one must not switch the later ones off.
    std::raise(SIGINT);
    std::raise(SIGHUP);
    ASSERT_TRUE(Told(told, 3));
    EXPECT_EQ(told, (std::vector<int>{SIGTERM, SIGINT, SIGHUP}));
    EXPECT_EQ(signals_.First(), SIGTERM);
}

TEST(QuitSignals, ASignalThatComesWhileHeldIsToldOnceTakenAndThreadsStartedMeanwhileNeverTakeOne) {
    std::vector<int> told;
    QuitSignalHold hold;
    std::raise(SIGTERM);
    bool thread_blocks = false;
    std::thread([&] {
        sigset_t mask;
        ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        thread_blocks = sigismember(&mask, SIGTERM) && sigismember(&mask, SIGINT) && sigismember(&mask, SIGHUP);
    }).join();
    EXPECT_TRUE(thread_blocks);

    QuitSignals signals_([&](int signal) { told.push_back(signal); });
    ASSERT_TRUE(Told(told, 1)) << "the held signal is not lost";
    EXPECT_EQ(told, std::vector<int>{SIGTERM});
}

TEST(QuitSignals, ASignalCutsShortABlockingReadThatNothingWouldEnd) {
    int pipe_ends[2];
    ASSERT_EQ(::pipe(pipe_ends), 0);
    std::atomic<bool> read_returned{false};
    QuitSignalHold hold;  // the helper thread must not take the signal
    std::thread helper([&] {
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
    QuitSignals signals_([&](int signal) { told.push_back(signal); });
    char byte;
    const ssize_t got = ::read(pipe_ends[0], &byte, 1);
    const int error = errno;
    read_returned = true;
    helper.join();
    EXPECT_EQ(got, -1);
    EXPECT_EQ(error, EINTR) << "a quit signal interrupts a blocking call rather than restart it";
    EXPECT_TRUE(Told(told, 1));
    ::close(pipe_ends[0]);
    ::close(pipe_ends[1]);
}

}  // namespace
}  // namespace velmora
