#include "desktop/qt/app_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <array>

namespace velmora {

namespace {

// On a 256-unit square.
constexpr qreal kUnits = 256;
constexpr qreal kDiscRadius = 120;
constexpr qreal kRingRadius = 98;
constexpr qreal kRingWidth = 8;
const QColor kDisc(0x1f, 0x4e, 0x8c);
const QColor kRing(0x8f, 0xb8, 0xe8);
// The play mark, its point a little right of the middle so that it looks centred.
constexpr std::array<QPointF, 3> kMark{QPointF(100, 78), QPointF(100, 178), QPointF(186, 128)};

QString Hex(const QColor& color) { return color.name(QColor::HexRgb); }

}  // namespace

QString AppIconSvg() {
    QString points;
    for (const QPointF& p : kMark) points += QString::number(p.x()) + ',' + QString::number(p.y()) + ' ';
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" viewBox=\"0 0 256 256\">\n"
                          "  <circle cx=\"128\" cy=\"128\" r=\"%1\" fill=\"%2\"/>\n"
                          "  <circle cx=\"128\" cy=\"128\" r=\"%3\" fill=\"none\" stroke=\"%4\" stroke-width=\"%5\"/>\n"
                          "  <polygon points=\"%6\" fill=\"#ffffff\" stroke=\"#ffffff\" stroke-width=\"10\" "
                          "stroke-linejoin=\"round\"/>\n"
                          "</svg>\n")
        .arg(kDiscRadius)
        .arg(Hex(kDisc))
        .arg(kRingRadius)
        .arg(Hex(kRing))
        .arg(kRingWidth)
        .arg(points.trimmed());
}

QImage AppIconImage(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / kUnits, size / kUnits);
    const QPointF centre(kUnits / 2, kUnits / 2);
    p.setPen(Qt::NoPen);
    p.setBrush(kDisc);
    p.drawEllipse(centre, kDiscRadius, kDiscRadius);
    // At the smallest sizes the ring would blur into the disc.
    if (size >= 32) {
        p.setPen(QPen(kRing, kRingWidth));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(centre, kRingRadius, kRingRadius);
    }
    QPen mark_pen(Qt::white, 10);
    mark_pen.setJoinStyle(Qt::RoundJoin);
    p.setPen(mark_pen);
    p.setBrush(Qt::white);
    p.drawPolygon(QPolygonF({kMark[0], kMark[1], kMark[2]}));
    p.end();
    return image;
}

}  // namespace velmora
