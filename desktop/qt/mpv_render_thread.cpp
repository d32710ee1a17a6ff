#include "desktop/qt/mpv_render_thread.h"

#include <mpv/render.h>
#include <mpv/render_gl.h>

#include <QCoreApplication>
#include <QOpenGLExtraFunctions>

#include <utility>

namespace velmora {

namespace {

void* GetProcAddress(void*, const char* name) {
    QOpenGLContext* context = QOpenGLContext::currentContext();
    return context != nullptr ? reinterpret_cast<void*>(context->getProcAddress(name)) : nullptr;
}

}  // namespace

MpvRenderThread::MpvRenderThread(mpv_handle* mpv, QOpenGLContext& share, std::function<void()> on_frame)
    : m_mpv(mpv), m_on_frame(std::move(on_frame)) {
    // The surface must be made on the GUI thread; the context moves to this
    // thread before it is ever made current.
    m_surface = std::make_unique<QOffscreenSurface>();
    m_surface->setFormat(share.format());
    m_surface->create();
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setFormat(share.format());
    m_context->setShareContext(&share);
    if (m_context->create()) {
        m_context->moveToThread(this);
        start();
    }
}

MpvRenderThread::~MpvRenderThread() {
    {
        std::lock_guard lock(m_wake_lock);
        m_stop = true;
    }
    m_woken.notify_one();
    wait();
    m_context.reset();
}

void MpvRenderThread::SetSize(QSize pixels) {
    {
        std::lock_guard lock(m_wake_lock);
        if (pixels == m_size || pixels.isEmpty()) return;
        m_size = pixels;
        m_pending = true;
    }
    m_woken.notify_one();
}

bool MpvRenderThread::Drawing() const {
    std::lock_guard lock(m_wake_lock);
    return m_drawing;
}

void MpvRenderThread::Show(const std::function<void(const Frame&)>& show) {
    std::lock_guard lock(m_frame_lock);
    if (m_frame.serial != 0) show(m_frame);
}

void MpvRenderThread::OnUpdate(void* self) {
    // mpv's thread: no mpv call here, only the wake.
    static_cast<MpvRenderThread*>(self)->Wake();
}

void MpvRenderThread::Wake() {
    {
        std::lock_guard lock(m_wake_lock);
        m_pending = true;
    }
    m_woken.notify_one();
}

void MpvRenderThread::run() {
    if (!m_context->makeCurrent(m_surface.get())) {
        m_context->moveToThread(QCoreApplication::instance()->thread());
        return;
    }
    QOpenGLExtraFunctions& gl = *m_context->extraFunctions();
    mpv_opengl_init_params init{&GetProcAddress, nullptr};
    mpv_render_param create[] = {{MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_OPENGL)},
                                 {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &init},
                                 {MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context* render = nullptr;
    if (mpv_render_context_create(&render, m_mpv, create) >= 0) {
        {
            std::lock_guard lock(m_wake_lock);
            m_drawing = true;
        }
        mpv_render_context_set_update_callback(render, &MpvRenderThread::OnUpdate, this);
    }

    QSize drawn;  // the size the last frame was drawn at
    while (render != nullptr) {
        QSize size;
        {
            std::unique_lock lock(m_wake_lock);
            m_woken.wait(lock, [this] { return m_pending || m_stop; });
            if (m_stop) break;
            m_pending = false;
            size = m_size;
        }
        const bool fresh = (mpv_render_context_update(render) & MPV_RENDER_UPDATE_FRAME) != 0;
        if (!fresh && (size == drawn || m_frame.serial == 0)) continue;

        Target& back = m_targets[1 - m_front];
        if (back.size != size) {
            if (back.texture == 0) {
                gl.glGenTextures(1, &back.texture);
                gl.glGenFramebuffers(1, &back.framebuffer);
            }
            gl.glBindTexture(GL_TEXTURE_2D, back.texture);
            gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size.width(), size.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                            nullptr);
            gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
            gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
            gl.glBindTexture(GL_TEXTURE_2D, 0);
            gl.glBindFramebuffer(GL_FRAMEBUFFER, back.framebuffer);
            gl.glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, back.texture, 0);
            gl.glBindFramebuffer(GL_FRAMEBUFFER, 0);
            back.size = size;
        }
        mpv_opengl_fbo fbo{static_cast<int>(back.framebuffer), size.width(), size.height(), 0};
        // Drawn upside down, as into a window's own framebuffer: the copy to
        // the screen keeps the rows as they are.
        int flip = 1;
        mpv_render_param params[] = {{MPV_RENDER_PARAM_OPENGL_FBO, &fbo},
                                     {MPV_RENDER_PARAM_FLIP_Y, &flip},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        if (mpv_render_context_render(render, params) < 0) continue;
        // Finished before the other context reads it.
        gl.glFinish();
        drawn = size;
        {
            std::lock_guard lock(m_frame_lock);
            m_front = 1 - m_front;
            m_frame = {back.texture, size, m_frame.serial + 1};
        }
        mpv_render_context_report_swap(render);
        m_on_frame();
    }

    if (render != nullptr) {
        mpv_render_context_set_update_callback(render, nullptr, nullptr);
        mpv_render_context_free(render);
    }
    {
        std::lock_guard lock(m_frame_lock);
        m_frame = {};
        for (Target& target : m_targets) {
            if (target.texture != 0) gl.glDeleteTextures(1, &target.texture);
            if (target.framebuffer != 0) gl.glDeleteFramebuffers(1, &target.framebuffer);
            target = {};
        }
    }
    m_context->doneCurrent();
    m_context->moveToThread(QCoreApplication::instance()->thread());
}

}  // namespace velmora
