// Handlers change the list they are called from: they emit again, subscribe,
// unsubscribe themselves or others. None of that may cost a live handler its
// call or call a dead one.
#include "base/signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

TEST(Signal, ARepeatedEmitFromAHandlerStillReachesEveryLiveHandler) {
    Signal<int> signal;
    std::vector<std::string> calls;
    auto gone = signal.connect([&](int) { calls.push_back("gone"); });
    auto again = signal.connect([&](int depth) {
        calls.push_back("again" + std::to_string(depth));
        if (depth == 0) signal.emit(1);
    });
    auto last = signal.connect([&](int depth) { calls.push_back("last" + std::to_string(depth)); });
    gone.reset();  // a dead slot ahead of the handler that emits again

    signal.emit(0);
    EXPECT_EQ(calls, (std::vector<std::string>{"again0", "again1", "last1", "last0"}));
    calls.clear();
    signal.emit(5);
    EXPECT_EQ(calls, (std::vector<std::string>{"again5", "last5"}));
}

TEST(Signal, HandlersThatSubscribeOrEndSubscriptionsDuringAnEmit) {
    Signal<> signal;
    std::vector<std::string> calls;
    std::optional<Subscription> self, later, dropped;
    std::vector<Subscription> grown;
    Subscription first = signal.connect([&] {
        calls.push_back("first");
        later->reset();    // unsubscribed before its turn: not called
        dropped.reset();   // its handle destroyed before its turn: not called
    });
    self = signal.connect([&] {
        calls.push_back("self");
        self->reset();     // ends its own subscription while it runs
        calls.push_back("self-after");
    });
    later = signal.connect([&] { calls.push_back("later"); });
    dropped = signal.connect([&] { calls.push_back("dropped"); });
    Subscription tail = signal.connect([&] {
        calls.push_back("tail");
        Subscription added = signal.connect([&] { calls.push_back("added"); });
        added.reset();     // subscribed and destroyed inside one emit: never called
        // Enough new slots to make the list reallocate under the running
        // emit; the next emit is the first to call them.
        if (grown.empty())
            for (int i = 0; i < 16; ++i) grown.push_back(signal.connect([&] { calls.push_back("new"); }));
    });

    signal.emit();
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "self", "self-after", "tail"}));
    calls.clear();
    signal.emit();
    std::vector<std::string> second{"first", "tail"};
    second.resize(18, "new");
    EXPECT_EQ(calls, second);

    first.reset();
    tail.reset();
    grown.clear();
    EXPECT_TRUE(signal.empty());
}

}  // namespace
}  // namespace velmora
