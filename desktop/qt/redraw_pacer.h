#pragma once
// Paces the redraws of one widget: a change is drawn on the next turn of the
// loop, but no sooner than a twentieth of a second after the last drawing
// ended.
// Long loops change their texts and lists on every row and give way to the
// loop every few milliseconds; an eye follows a few redraws a second, and a
// redraw of a long text costs more than the row that caused it.

#include <QElapsedTimer>
#include <QPointer>

#include <functional>

class QObject;

namespace velmora {

class RedrawPacer {
public:
    static constexpr int kSpacingMs = 50;

    // The redraw runs in the context of owner, and never after owner is gone;
    // spacing_ms 0 only gathers the changes of one turn of the loop.
    RedrawPacer(QObject* owner, std::function<void()> redraw, int spacing_ms = kSpacingMs);

    // Asks for a redraw; requests before it runs are one.
    void Request();
    bool Pending() const { return m_pending; }

private:
    QPointer<QObject> m_owner;
    std::function<void()> m_redraw;
    int m_spacing_ms;
    QElapsedTimer m_since_last;
    bool m_pending = false;
};

}  // namespace velmora
