#pragma once
// Single-threaded publish/subscribe. A subscription ends when its handle is
// destroyed, so a view that goes away can never be called back.

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmora {

class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<bool> alive) : m_alive(std::move(alive)) {}
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&& other) noexcept {
        reset();
        m_alive = std::move(other.m_alive);
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }
    void reset() {
        if (m_alive) *m_alive = false;
        m_alive.reset();
    }

private:
    std::shared_ptr<bool> m_alive;
};

template <class... Args>
class Signal {
public:
    [[nodiscard]] Subscription connect(std::function<void(Args...)> fn) {
        auto alive = std::make_shared<bool>(true);
        m_slots.push_back({alive, std::move(fn)});
        return Subscription(alive);
    }

    // Handlers may subscribe, unsubscribe or emit again while being called; a
    // handler added during emission is first called on the next emission.
    // Dead slots are erased only once no emission is running, because a
    // running one walks the list by index and an erase under it would shift
    // a live handler past its index.
    void emit(Args... args) {
        const size_t n = m_slots.size();
        {
            Depth running(m_depth);
            for (size_t i = 0; i < n; ++i) {
                auto alive = m_slots[i].alive;  // keep the flag while the slot runs
                if (*alive) {
                    auto fn = m_slots[i].fn;
                    fn(args...);
                } else {
                    m_dead = true;
                }
            }
        }
        if (m_dead && m_depth == 0) {
            std::erase_if(m_slots, [](const Slot& s) { return !*s.alive; });
            m_dead = false;
        }
    }

    bool empty() const {
        for (const auto& s : m_slots)
            if (*s.alive) return false;
        return true;
    }

private:
    struct Slot {
        std::shared_ptr<bool> alive;
        std::function<void(Args...)> fn;
    };
    // Counts the emissions under way, and undoes its count however the
    // handlers leave.
    struct Depth {
        explicit Depth(int& depth) : m_depth(depth) { ++m_depth; }
        ~Depth() { --m_depth; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
        int& m_depth;
    };

    std::vector<Slot> m_slots;
    int m_depth = 0;
    bool m_dead = false;
};

}  // namespace velmora
