#pragma once
// The picture of a libmpv instance drawn into the program's own widgets
// through mpv's render API: by OpenGL for the video window, in software into
// an image for the small preview panes, where twelve GL contexts would cost
// more than they give.

#include <QImage>
#include <QOpenGLWidget>
#include <QWidget>

struct mpv_handle;
struct mpv_render_context;

namespace velmora {

class GlPicture : public QOpenGLWidget {
public:
    explicit GlPicture(QWidget* parent = nullptr);
    ~GlPicture() override;
    // The instance to draw, created with vo "libmpv". It must be attached
    // before it loads a file and outlive this widget; null lets it go.
    void Attach(mpv_handle* mpv);
    bool Drawing() const { return m_render != nullptr; }
    // Frames of the film drawn since the widget was made.
    uint64_t Frames() const { return m_frames; }

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void Create();
    void Free();
    static void OnUpdate(void* self);

    mpv_handle* m_mpv = nullptr;
    mpv_render_context* m_render = nullptr;
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
