#pragma once
// The video window (Form2): the film's picture drawn by mpv's render API,
// at the place and size the logic gives the picture. A double click fills
// the screen, Esc or another double click brings the window back.

#include <QWidget>

#include <vector>

#include "base/signal.h"

struct mpv_handle;

namespace velmora {

struct Form2;
class GlPicture;
class SoftPicture;

class VideoWindow : public QWidget {
public:
    explicit VideoWindow(Form2& form, QWidget* parent = nullptr);
    // The engine whose picture it shows, made with vo "libmpv".
    void Attach(mpv_handle* mpv);
    // Frames of the film drawn so far.
    uint64_t Frames() const;
    // The picture: by OpenGL where the display has it, else in software.
    QWidget& Picture() const { return *m_picture; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Apply();
    void SetFullScreen(bool on);

    Form2& m_form;
    GlPicture* m_gl = nullptr;
    SoftPicture* m_soft = nullptr;
    QWidget* m_picture = nullptr;
    bool m_applying = false;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
