#include "desktop/qt/redraw_pacer.h"

#include <QTimer>

#include <algorithm>

namespace velmora {

RedrawPacer::RedrawPacer(QObject* owner, std::function<void()> redraw, int spacing_ms)
    : m_owner(owner), m_redraw(std::move(redraw)), m_spacing_ms(spacing_ms) {}

void RedrawPacer::Request() {
    if (m_pending || !m_owner) return;
    m_pending = true;
    const int wait =
        m_since_last.isValid() ? std::max<int>(0, m_spacing_ms - static_cast<int>(m_since_last.elapsed())) : 0;
    QTimer::singleShot(wait, m_owner, [this] {
        m_pending = false;
        m_redraw();
        // Counted from the end of the drawing: however long a drawing takes
        // on a busy machine, the loop gets the whole spacing to itself.
        m_since_last.restart();
    });
}

}  // namespace velmora
