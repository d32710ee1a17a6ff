#include "desktop/qt/video_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include "core/forms.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/mpv_picture.h"

namespace velmora {

VideoWindow::VideoWindow(Form2& form, QWidget* parent) : QWidget(parent, Qt::Window), m_form(form) {
    setObjectName(QStringLiteral("Form2"));
    setWindowTitle(QStringLiteral("VELMORA II"));
    setAutoFillBackground(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    if (OpenGL_Available())
        m_picture = m_gl = new GlPicture(this);
    else
        m_picture = m_soft = new SoftPicture(this);
    m_picture->setObjectName(QStringLiteral("Form2.WindowsMediaPlayer1"));
    for (Control* control : {static_cast<Control*>(&form), static_cast<Control*>(&form.Inner),
                             static_cast<Control*>(&form.WindowsMediaPlayer1)})
        m_subscriptions.push_back(control->Changed.connect([this](Change) { Apply(); }));
    Apply();
}

void VideoWindow::Attach(mpv_handle* mpv) {
    if (m_gl != nullptr) m_gl->Attach(mpv);
    else m_soft->Attach(mpv);
}

uint64_t VideoWindow::Frames() const { return m_gl != nullptr ? m_gl->Frames() : m_soft->Frames(); }

void VideoWindow::Apply() {
    QScopedValueRollback guard(m_applying, true);
    if (!m_form.Caption().empty()) setWindowTitle(Q(m_form.Caption()));
    const PictureArea& inner = m_form.Inner;
    if (!m_form.Full_Screen && inner.Width() > 0 && inner.Height() > 0 && size() != QSize(inner.Width(), inner.Height()))
        resize(inner.Width(), inner.Height());
    // A picture not laid out yet fills the window: drawing needs a surface
    // from the first showing on, before the engine opens the film.
    const PictureArea& area = m_form.WindowsMediaPlayer1;
    if (area.Width() > 0 && area.Height() > 0 && !m_form.Full_Screen)
        m_picture->setGeometry(0, 0, area.Width(), area.Height());
    else
        m_picture->setGeometry(rect());
    if (m_form.Visible() != isVisible()) {
        if (!m_form.Visible() && isFullScreen()) showNormal();
        setVisible(m_form.Visible());
    }
}

void VideoWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_applying) return;
    m_form.Inner.SetWidth(width());
    m_form.Inner.SetHeight(height());
    m_form.Resize.emit();
}

void VideoWindow::closeEvent(QCloseEvent* event) {
    // The logic decides: it plays on in the main window and hides this one.
    event->ignore();
    m_form.QueryUnload.emit();
}

void VideoWindow::SetFullScreen(bool on) {
    m_form.Full_Screen = on;
    if (on) showFullScreen();
    else showNormal();
}

void VideoWindow::mouseDoubleClickEvent(QMouseEvent*) { SetFullScreen(!isFullScreen()); }

void VideoWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && isFullScreen()) {
        SetFullScreen(false);
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace velmora
