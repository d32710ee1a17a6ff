#include "desktop/qt/mpv_picture.h"

#include <mpv/render.h>
#include <mpv/render_gl.h>

#include <QMetaObject>
#include <QOpenGLContext>
#include <QPainter>

#include <algorithm>

namespace velmora {

namespace {

void* GetProcAddress(void*, const char* name) {
    QOpenGLContext* context = QOpenGLContext::currentContext();
    return context != nullptr ? reinterpret_cast<void*>(context->getProcAddress(name)) : nullptr;
}

}  // namespace

GlPicture::GlPicture(QWidget* parent) : QOpenGLWidget(parent) {}

GlPicture::~GlPicture() {
    if (m_render == nullptr) return;
    makeCurrent();
    Free();
    doneCurrent();
}

void GlPicture::Attach(mpv_handle* mpv) {
    if (m_render != nullptr) {
        makeCurrent();
        Free();
        doneCurrent();
    }
    m_mpv = mpv;
    // Without a context yet, initializeGL creates it when the window first shows.
    if (m_mpv != nullptr && context() != nullptr) {
        makeCurrent();
        Create();
        doneCurrent();
    }
}

void GlPicture::initializeGL() {
    if (m_mpv != nullptr && m_render == nullptr) Create();
}

void GlPicture::Create() {
    mpv_opengl_init_params gl{&GetProcAddress, nullptr};
    mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_OPENGL)},
                                 {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &gl},
                                 {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (mpv_render_context_create(&m_render, m_mpv, params) < 0) {
        m_render = nullptr;
        return;
    }
    mpv_render_context_set_update_callback(m_render, &GlPicture::OnUpdate, this);
}

void GlPicture::Free() {
    if (m_render == nullptr) return;
    mpv_render_context_set_update_callback(m_render, nullptr, nullptr);
    mpv_render_context_free(m_render);
    m_render = nullptr;
}

void GlPicture::OnUpdate(void* self) {
    // mpv's thread: the drawing itself waits for the loop.
    QMetaObject::invokeMethod(static_cast<GlPicture*>(self), "update", Qt::QueuedConnection);
}

void GlPicture::paintGL() {
    if (m_render == nullptr) return;
    const qreal ratio = devicePixelRatioF();
    mpv_opengl_fbo fbo{static_cast<int>(defaultFramebufferObject()), static_cast<int>(width() * ratio),
                       static_cast<int>(height() * ratio), 0};
    // Frames counts the pictures of the film drawn, not the repaints of the widget.
    const bool fresh = (mpv_render_context_update(m_render) & MPV_RENDER_UPDATE_FRAME) != 0;
    int flip = 1;
    mpv_render_param params[] = {{MPV_RENDER_PARAM_OPENGL_FBO, &fbo},
                                 {MPV_RENDER_PARAM_FLIP_Y, &flip},
                                 {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (mpv_render_context_render(m_render, params) >= 0 && fresh) ++m_frames;
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
    // QImage's RGB32 lies in memory as blue, green, red, pad on this machine's byte order.
    mpv_render_param params[] = {{MPV_RENDER_PARAM_SW_SIZE, size},
                                 {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
                                 {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                 {MPV_RENDER_PARAM_SW_POINTER, m_image.bits()},
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
