#include "desktop/qt/mpv_picture.h"

#include <mpv/render.h>
#include <mpv/render_gl.h>

#include <QMetaObject>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QPainter>

#include <algorithm>

#include "desktop/qt/mpv_render_thread.h"

namespace velmora {

GlPicture::GlPicture(QWidget* parent) : QOpenGLWidget(parent) {}

GlPicture::~GlPicture() {
    Stop();
    if (m_read_framebuffer != 0 && context() != nullptr) {
        makeCurrent();
        context()->extraFunctions()->glDeleteFramebuffers(1, &m_read_framebuffer);
        doneCurrent();
    }
}

void GlPicture::Attach(mpv_handle* mpv) {
    Stop();
    m_mpv = mpv;
    // Without a context yet, initializeGL starts the drawing when the window first shows.
    if (m_mpv != nullptr && context() != nullptr) Start();
}

bool GlPicture::Drawing() const { return m_thread != nullptr && m_thread->Drawing(); }

QSize GlPicture::Pixels() const {
    const qreal ratio = devicePixelRatioF();
    return {static_cast<int>(width() * ratio), static_cast<int>(height() * ratio)};
}

void GlPicture::Start() {
    // The frames arrive from the drawing thread; the repaint waits for the loop.
    m_thread = std::make_unique<MpvRenderThread>(
        m_mpv, *context(), [this] { QMetaObject::invokeMethod(this, "update", Qt::QueuedConnection); });
    m_thread->SetSize(Pixels());
}

void GlPicture::Stop() {
    m_thread.reset();
    m_shown_serial = 0;
}

void GlPicture::initializeGL() {
    // A context made anew (the widget moved to another window) lets the
    // drawing thread's shared one go with the old.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { Stop(); });
    m_read_framebuffer = 0;
    if (m_mpv != nullptr && m_thread == nullptr) Start();
}

void GlPicture::resizeGL(int, int) {
    if (m_thread != nullptr) m_thread->SetSize(Pixels());
}

void GlPicture::paintGL() {
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    gl.glClearColor(0, 0, 0, 1);
    gl.glClear(GL_COLOR_BUFFER_BIT);
    if (m_thread == nullptr) return;
    const QSize target = Pixels();
    m_thread->Show([&](const MpvRenderThread::Frame& frame) {
        if (m_read_framebuffer == 0) gl.glGenFramebuffers(1, &m_read_framebuffer);
        gl.glBindFramebuffer(GL_READ_FRAMEBUFFER, m_read_framebuffer);
        gl.glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, frame.texture, 0);
        gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, defaultFramebufferObject());
        gl.glBlitFramebuffer(0, 0, frame.size.width(), frame.size.height(), 0, 0, target.width(), target.height(),
                             GL_COLOR_BUFFER_BIT, GL_LINEAR);
        // Read to the end before the thread may draw into the texture again.
        gl.glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);
        gl.glFinish();
        gl.glBindFramebuffer(GL_FRAMEBUFFER, defaultFramebufferObject());
        // Frames counts the pictures of the film shown, not the repaints of the widget.
        if (frame.serial != m_shown_serial) {
            m_shown_serial = frame.serial;
            ++m_frames;
        }
    });
}

SoftPicture::SoftPicture(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

SoftPicture::~SoftPicture() { Free(); }

void SoftPicture::Attach(mpv_handle* mpv) {
    Free();
    m_mpv = mpv;
    if (m_mpv == nullptr) return;
    mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_SW)},
                                 {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (mpv_render_context_create(&m_render, m_mpv, params) < 0) {
        m_render = nullptr;
        return;
    }
    mpv_render_context_set_update_callback(m_render, &SoftPicture::OnUpdate, this);
}

void SoftPicture::Free() {
    if (m_render == nullptr) return;
    mpv_render_context_set_update_callback(m_render, nullptr, nullptr);
    mpv_render_context_free(m_render);
    m_render = nullptr;
}

void SoftPicture::OnUpdate(void* self) {
    auto* picture = static_cast<SoftPicture*>(self);
    QMetaObject::invokeMethod(picture, [picture] { picture->Render(); }, Qt::QueuedConnection);
}

void SoftPicture::Render() {
    if (m_render == nullptr) return;
    if ((mpv_render_context_update(m_render) & MPV_RENDER_UPDATE_FRAME) == 0) return;
    // Rows of a whole number of 64-byte blocks keep mpv on its fast path.
    const int w = std::max(16, width() / 16 * 16), h = std::max(1, height());
    if (m_image.size() != QSize(w, h)) m_image = QImage(w, h, QImage::Format_RGB32);
    int size[2] = {w, h};
    size_t stride = static_cast<size_t>(m_image.bytesPerLine());
    // Drawn at once: waiting for each frame's display time, as mpv does by
    // default, would hold the window's thread up to a twentieth of a second
    // per frame, twelve panes over. A silent pane has no sound to keep time with.
    int block = 0;
    // QImage's RGB32 lies in memory as blue, green, red, pad on this machine's byte order.
    mpv_render_param params[] = {{MPV_RENDER_PARAM_SW_SIZE, size},
                                 {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
                                 {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                 {MPV_RENDER_PARAM_SW_POINTER, m_image.bits()},
                                 {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block},
                                 {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (mpv_render_context_render(m_render, params) >= 0) {
        ++m_frames;
        update();
    }
}

bool OpenGL_Available() {
    static const bool available = [] {
        QOpenGLContext probe;
        return probe.create();
    }();
    return available;
}

void SoftPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!m_image.isNull()) painter.drawImage(QPoint((width() - m_image.width()) / 2, 0), m_image);
}

}  // namespace velmora
