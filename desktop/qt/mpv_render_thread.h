#pragma once
// Draws the frames of an mpv instance into textures on a thread of its own,
// with an OpenGL context shared with the widget that shows them.
//
// mpv's core waits until its frames are drawn: the first one after a file
// opens and after every seek, and its video output when it is set up or let
// go. Drawn on the window's thread, each call the program makes to the engine
// in the meantime waits for the core while the core waits for that very
// thread, until mpv gives up after a fifth of a second; opening a film cost
// several of those. Here the drawing never waits for the window's thread, and
// the window only copies the newest finished frame to the screen.

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QSize>
#include <QThread>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

struct mpv_handle;
struct mpv_render_context;

namespace velmora {

class MpvRenderThread : public QThread {
public:
    // A frame drawn and ready for the screen: the texture and its size.
    struct Frame {
        unsigned texture = 0;
        QSize size;
        uint64_t serial = 0;  // counts the frames drawn, from 1
    };

    // `share` is the showing widget's context, current on the calling (GUI)
    // thread's side only; `on_frame` is called from this thread after each frame.
    MpvRenderThread(mpv_handle* mpv, QOpenGLContext& share, std::function<void()> on_frame);
    // Stops the thread, which lets mpv's render context go first.
    ~MpvRenderThread() override;

    // The size in pixels to draw at; the last frame is drawn again at it.
    void SetSize(QSize pixels);
    // Hands the newest frame to `show` (on the widget's context), which must
    // be done reading it when it returns: the thread may draw into it next.
    void Show(const std::function<void(const Frame&)>& show);
    // mpv took the context: false when the display's OpenGL did not suit it.
    bool Drawing() const;

protected:
    void run() override;

private:
    struct Target {
        unsigned texture = 0;
        unsigned framebuffer = 0;
        QSize size;
    };

    static void OnUpdate(void* self);
    void Wake();

    mpv_handle* m_mpv;
    std::function<void()> m_on_frame;
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOffscreenSurface> m_surface;

    // What the thread is woken for.
    mutable std::mutex m_wake_lock;
    std::condition_variable m_woken;
    bool m_pending = false;
    bool m_stop = false;
    bool m_drawing = false;
    QSize m_size{1, 1};

    // The two textures: one shown, one drawn into.
    std::mutex m_frame_lock;
    Target m_targets[2];
    int m_front = 0;
    Frame m_frame;
};

}  // namespace velmora
