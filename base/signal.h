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

    // Handlers may subscribe or unsubscribe while being called; a handler
    // added during emission is first called on the next emission.
    void emit(Args... args) {
        const size_t n = m_slots.size();
        bool dead = false;
        for (size_t i = 0; i < n && i < m_slots.size(); ++i) {
            auto alive = m_slots[i].alive;  // keep the flag while the slot runs
            if (*alive) {
                auto fn = m_slots[i].fn;
                fn(args...);
            } else {
                dead = true;
            }
        }
        if (dead) {
            std::erase_if(m_slots, [](const Slot& s) { return !*s.alive; });
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
    std::vector<Slot> m_slots;
};

}  // namespace velmora
