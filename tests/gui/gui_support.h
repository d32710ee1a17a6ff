#pragma once
// What the window tests share: waiting on a condition while Qt's loop runs,
// finding a widget by the name of its control, keys and mouse gestures as a
// hand gives them, and saving a drawing beside the test binary for people to
// look at.

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QThread>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>

namespace velmora::testing {

// Gives Qt's loop turns until the condition holds; false if it still does not
// after the limit, which is generous: views pace their redraws, and a loaded
// machine may take long over one.
inline bool Eventually(const std::function<bool()>& holds, int limit_ms = 5000) {
    QElapsedTimer waited;
    waited.start();
    while (!holds()) {
        if (waited.elapsed() > limit_ms) return false;
        QApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

template <class W>
W& Child(const QWidget& root, const char* name) {
    W* widget = root.findChild<W*>(QString::fromUtf8(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *widget;
}

// A key pressed while the widget has the keyboard.
inline void Key(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &event);
}

// Left-button events at a point of the widget; the button is held but on release.
inline void Mouse(QWidget& widget, const QPoint& at, std::initializer_list<QEvent::Type> events) {
    for (QEvent::Type type : events) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

inline void Save_Drawing(QWidget& widget, const char* name) {
    QApplication::processEvents();  // the layout of what was just shown
    const QString dir = QCoreApplication::applicationDirPath() + "/test-output";
    ASSERT_TRUE(QDir().mkpath(dir) && widget.grab().save(dir + "/" + name));
    std::printf("drawn to %s/%s\n", qPrintable(dir), name);
}

}  // namespace velmora::testing
