#pragma once
// The picture of a libmpv instance drawn into the program's own widgets
// through mpv's render API: by OpenGL for the video window, on a thread of its
// own, and in software into an image for the small preview panes, where twelve
// GL contexts would cost more than they give.

#include <QImage>
#include <QOpenGLWidget>
#include <QWidget>

#include <memory>

struct mpv_handle;
struct mpv_render_context;

namespace velmora {

class MpvRenderThread;

class GlPicture : public QOpenGLWidget {
public:
    explicit GlPicture(QWidget* parent = nullptr);
    ~GlPicture() override;
    // The instance to draw, created with vo "libmpv". It must be attached
    // before it loads a file and outlive this widget; null lets it go.
    void Attach(mpv_handle* mpv);
    bool Drawing() const;
    // Frames of the film shown since the widget was made.
    uint64_t Frames() const { return m_frames; }

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    void paintGL() override;

private:
    void Start();
    void Stop();
    QSize Pixels() const;

    mpv_handle* m_mpv = nullptr;
    // Draws the frames; made with the widget's context, at its first showing.
    std::unique_ptr<MpvRenderThread> m_thread;
    unsigned m_read_framebuffer = 0;
    uint64_t m_shown_serial = 0;
    uint64_t m_frames = 0;
};

class SoftPicture : public QWidget {
public:
    explicit SoftPicture(QWidget* parent = nullptr);
    ~SoftPicture() override;
    void Attach(mpv_handle* mpv);
    uint64_t Frames() const { return m_frames; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Free();
    void Render();
    static void OnUpdate(void* self);

    mpv_handle* m_mpv = nullptr;
    mpv_render_context* m_render = nullptr;
    QImage m_image;
    uint64_t m_frames = 0;
};

// Whether this display can give a widget an OpenGL context; without one
// the picture is drawn in software.
bool OpenGL_Available();

}  // namespace velmora
