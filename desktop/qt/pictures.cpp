#include "desktop/qt/pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>

namespace velmora {

namespace {

// Draws the glyph of key into the square box, in the given colour. False for
// a key without a glyph.
bool DrawGlyph(QPainter& p, const std::string& key, const QRectF& box, const QColor& colour) {
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    const qreal w = box.width(), h = box.height();
    if (key == "play") {
        QPainterPath path;
        path.moveTo(box.left() + w * 0.22, box.top() + h * 0.12);
        path.lineTo(box.left() + w * 0.88, box.top() + h * 0.50);
        path.lineTo(box.left() + w * 0.22, box.top() + h * 0.88);
        path.closeSubpath();
        p.drawPath(path);
        return true;
    }
    if (key == "pause") {
        p.drawRect(QRectF(box.left() + w * 0.18, box.top() + h * 0.14, w * 0.22, h * 0.72));
        p.drawRect(QRectF(box.left() + w * 0.60, box.top() + h * 0.14, w * 0.22, h * 0.72));
        return true;
    }
    if (key == "stop") {
        p.drawRect(QRectF(box.left() + w * 0.18, box.top() + h * 0.18, w * 0.64, h * 0.64));
        return true;
    }
    // A triangle pointing right (dir 1) or left (-1) between x0 and x1.
    auto arrow = [&](qreal x0, qreal x1, int dir, qreal top = 0.18, qreal bottom = 0.82) {
        QPainterPath path;
        const qreal tip = dir > 0 ? x1 : x0, back = dir > 0 ? x0 : x1;
        path.moveTo(box.left() + w * back, box.top() + h * top);
        path.lineTo(box.left() + w * tip, box.top() + h * (top + bottom) / 2);
        path.lineTo(box.left() + w * back, box.top() + h * bottom);
        path.closeSubpath();
        p.drawPath(path);
    };
    if (key == "next" || key == "previous") {
        const bool next = key == "next";
        arrow(next ? 0.16 : 0.30, next ? 0.70 : 0.84, next ? 1 : -1);
        p.drawRect(QRectF(box.left() + w * (next ? 0.70 : 0.16), box.top() + h * 0.18, w * 0.14, h * 0.64));
        return true;
    }
    if (key == "forward" || key == "back") {
        const int dir = key == "forward" ? 1 : -1;
        arrow(0.08, 0.50, dir, 0.22, 0.78);
        arrow(0.50, 0.92, dir, 0.22, 0.78);
        return true;
    }
    if (key == "top") {
        p.drawRect(QRectF(box.left() + w * 0.18, box.top() + h * 0.14, w * 0.64, h * 0.12));
        QPainterPath path;
        path.moveTo(box.left() + w * 0.50, box.top() + h * 0.32);
        path.lineTo(box.left() + w * 0.84, box.top() + h * 0.86);
        path.lineTo(box.left() + w * 0.16, box.top() + h * 0.86);
        path.closeSubpath();
        p.drawPath(path);
        return true;
    }
    if (key == "window") {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(colour, std::max<qreal>(1.0, w * 0.08)));
        p.drawRect(QRectF(box.left() + w * 0.10, box.top() + h * 0.30, w * 0.56, h * 0.52));
        p.setBrush(colour);
        p.drawRect(QRectF(box.left() + w * 0.44, box.top() + h * 0.14, w * 0.46, h * 0.40));
        return true;
    }
    if (key == "volume") {
        QPainterPath path;
        path.moveTo(box.left() + w * 0.10, box.top() + h * 0.36);
        path.lineTo(box.left() + w * 0.30, box.top() + h * 0.36);
        path.lineTo(box.left() + w * 0.56, box.top() + h * 0.12);
        path.lineTo(box.left() + w * 0.56, box.top() + h * 0.88);
        path.lineTo(box.left() + w * 0.30, box.top() + h * 0.64);
        path.lineTo(box.left() + w * 0.10, box.top() + h * 0.64);
        path.closeSubpath();
        p.drawPath(path);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(colour, std::max<qreal>(1.0, w * 0.07)));
        p.drawArc(QRectF(box.left() + w * 0.40, box.top() + h * 0.28, w * 0.34, h * 0.44), -50 * 16, 100 * 16);
        p.drawArc(QRectF(box.left() + w * 0.36, box.top() + h * 0.12, w * 0.54, h * 0.76), -50 * 16, 100 * 16);
        return true;
    }
    return false;
}

template <class Paint>
QIcon Render(Paint paint) {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.setRenderHint(QPainter::Antialiasing);
        if (!paint(p, QRectF(0, 0, size, size))) return {};
        p.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

QIcon ButtonPicture(const std::string& key) {
    return Render([&key](QPainter& p, const QRectF& box) {
        return DrawGlyph(p, key, box.adjusted(1, 1, -1, -1), QColor(0x30, 0x30, 0x30));
    });
}

QIcon WindowPicture(const std::string& key) {
    return Render([&key](QPainter& p, const QRectF& box) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x1f, 0x4e, 0x8c));
        p.drawEllipse(box.adjusted(0.5, 0.5, -0.5, -0.5));
        const qreal inset = box.width() * 0.27;
        // Any key still gets the badge, so the window always has an icon.
        DrawGlyph(p, key, box.adjusted(inset, inset, -inset, -inset), Qt::white);
        return true;
    });
}

}  // namespace velmora
