#include "desktop/qt/splash_window.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "core/forms.h"

namespace velmora {

SplashWindow::SplashWindow(FrmSplash& form, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_form(form),
      m_logo(QStringLiteral(":/pictures/splash.png")) {
    setObjectName(QStringLiteral("frmSplash"));
    setFixedSize(m_logo.isNull() ? QSize(480, 270) : m_logo.size());
    if (QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    m_subscriptions.push_back(form.Changed.connect([this](Change) { Apply(); }));
    Apply();
}

void SplashWindow::Apply() {
    if (m_form.Visible() == isVisible()) return;
    if (!m_form.Visible()) {
        hide();
        return;
    }
    show();
    raise();
    // The load that follows holds the loop for a while: the screen must be
    // drawn now, not when the loop next turns.
    repaint();
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(rect(), m_logo);
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPointSize(28);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(rect().adjusted(0, 0, 0, -40), Qt::AlignCenter, QStringLiteral("Velmora II"));
    font.setPointSize(10);
    font.setBold(false);
    painter.setFont(font);
    painter.drawText(rect().adjusted(0, 60, 0, 0), Qt::AlignCenter,
                     QStringLiteral("Ένα πάτημα αρκεί - One press is enough"));
}

void SplashWindow::keyPressEvent(QKeyEvent*) { m_form.Hide(); }

void SplashWindow::mousePressEvent(QMouseEvent*) { m_form.Hide(); }

}  // namespace velmora
