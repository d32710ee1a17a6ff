#pragma once
// Keeps the controls' own handlers out while the program moves the controls
// itself: Suppress_Events is set for as long as the guard lives, and the value
// it found is put back on every way out of the scope, early returns included.

#include "core/app_context.h"

namespace velmora {

class SuppressEvents {
public:
    explicit SuppressEvents(CoreState& core) : m_core(&core), m_before(core.Suppress_Events) {
        core.Suppress_Events = true;
    }
    ~SuppressEvents() { Restore(); }
    SuppressEvents(const SuppressEvents&) = delete;
    SuppressEvents& operator=(const SuppressEvents&) = delete;

    // Puts the value back before the scope ends, where the handlers must be
    // let in again before the rest of the procedure runs.
    void Restore() {
        if (m_core == nullptr) return;
        m_core->Suppress_Events = m_before;
        m_core = nullptr;
    }

private:
    CoreState* m_core;
    bool m_before;
};

}  // namespace velmora
