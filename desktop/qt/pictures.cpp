#include "desktop/qt/pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

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
