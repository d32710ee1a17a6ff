#include "desktop/qt/star_pictures.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <charconv>
#include <map>
#include <utility>
#include <cmath>
#include <numbers>
#include <string_view>

namespace velmora {

namespace {

constexpr StarShade kShades[] = {StarShade::Gold, StarShade::Blue, StarShade::BlackBlue, StarShade::Mix};

// The big pictures: 101 and 102 the Unmarked class, then four to a class
// from X to A with the shades running backwards (mix, black blue, blue,
// gold), and 119, 120 class S.
std::optional<StarKind> BigStar(int number) {
    if (number == 101) return StarKind{1, StarShade::BlackBlue, true};
    if (number == 102) return StarKind{1, StarShade::Gold, true};
    if (number == 119) return StarKind{6, StarShade::Blue, true};
    if (number == 120) return StarKind{6, StarShade::Gold, true};
    if (number < 103 || number > 118) return std::nullopt;
    const int rating = (number - 103) / 4 + 1;
    return StarKind{rating + 1, kShades[102 + 4 * rating - number], true};
}

// The star row: 600, 601 the Unmarked slot; three to a slot from X to A
// (gold, blue, black blue); 614..617 the lit star of the mixed set for
// those slots; 618, 619 slot S.
std::optional<StarKind> RowStar(int number) {
    if (number == 600) return StarKind{1, StarShade::Gold, false};
    if (number == 601) return StarKind{1, StarShade::BlackBlue, false};
    if (number == 618) return StarKind{6, StarShade::Gold, false};
    if (number == 619) return StarKind{6, StarShade::Blue, false};
    if (number >= 614 && number <= 617) return StarKind{number - 612, StarShade::Mix, false};
    if (number < 602 || number > 613) return std::nullopt;
    return StarKind{(number - 602) / 3 + 2, kShades[(number - 602) % 3], false};
}

struct Colours {
    QColor light, dark, rim;
};

Colours ColoursOf(StarShade shade) {
    switch (shade) {
        case StarShade::Blue: return {QColor(0xcf, 0xe8, 0xff), QColor(0x2a, 0x74, 0xd0), QColor(0x12, 0x3d, 0x78)};
        case StarShade::BlackBlue:
            return {QColor(0x6a, 0x80, 0xb8), QColor(0x0c, 0x17, 0x33), QColor(0x02, 0x05, 0x0d)};
        case StarShade::Mix: return {QColor(0xff, 0xf3, 0xb0), QColor(0x2a, 0x74, 0xd0), QColor(0x12, 0x3d, 0x78)};
        case StarShade::Gold: break;
    }
    return {QColor(0xff, 0xf3, 0xb0), QColor(0xe8, 0xa8, 0x00), QColor(0x8a, 0x5a, 0x00)};
}

QPainterPath StarPath(const QPointF& centre, qreal outer, qreal inner, int points = 5) {
    QPainterPath path;
    for (int i = 0; i < 2 * points; ++i) {
        const qreal angle = -std::numbers::pi / 2 + i * std::numbers::pi / points;
        const qreal r = i % 2 == 0 ? outer : inner;
        const QPointF at(centre.x() + r * std::cos(angle), centre.y() + r * std::sin(angle));
        if (i == 0) path.moveTo(at);
        else path.lineTo(at);
    }
    path.closeSubpath();
    return path;
}

QBrush Fill(StarShade shade, const QRectF& bounds) {
    const Colours c = ColoursOf(shade);
    QLinearGradient gradient(bounds.topLeft(), bounds.bottomRight());
    if (shade == StarShade::Mix) {
        // Gold meeting blue across the star.
        gradient.setColorAt(0.0, c.light);
        gradient.setColorAt(0.46, QColor(0xf0, 0xb4, 0x00));
        gradient.setColorAt(0.54, c.dark);
        gradient.setColorAt(1.0, c.rim);
    } else {
        gradient.setColorAt(0.0, c.light);
        gradient.setColorAt(0.6, c.dark);
        gradient.setColorAt(1.0, c.dark.darker(130));
    }
    return gradient;
}

void PaintStar(QPainter& p, qreal size, const StarKind& star) {
    const Colours c = ColoursOf(star.shade);
    // The row grows from the Unmarked slot to S, so the classes read as a scale.
    const qreal scale = star.big ? 1.0 : 0.64 + 0.072 * (star.slot - 1);
    const qreal outer = size / 2 * 0.96 * scale;
    // A star's weight sits below its box's centre; lift the box to balance it.
    const QPointF centre(size / 2, size / 2 + outer * 0.08);
    const QPainterPath path = StarPath(centre, outer, outer * 0.46);
    const qreal rim = std::max<qreal>(1.0, size / 20);

    if (star.slot == 1) {
        // No class yet: the outline only, faintly filled.
        QColor faint = c.dark;
        faint.setAlpha(60);
        p.setBrush(faint);
        p.setPen(QPen(c.rim, rim, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    } else {
        p.setBrush(Fill(star.shade, path.boundingRect()));
        p.setPen(QPen(c.rim, rim, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    p.drawPath(path);

    if (star.slot == 6) {
        // The top class sparkles.
        p.setBrush(c.light);
        p.setPen(QPen(c.rim, std::max<qreal>(0.8, rim * 0.6)));
        const qreal spark = size * 0.11;
        p.drawPath(StarPath(QPointF(size * 0.86, size * 0.14), spark, spark * 0.3, 4));
        p.drawPath(StarPath(QPointF(size * 0.13, size * 0.80), spark * 0.7, spark * 0.21, 4));
    }

    if (star.big) {
        static const char* const kLetters[] = {"\u2013", "X", "C", "B", "A", "S"};
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setBold(true);
        font.setPixelSize(std::max(6, static_cast<int>(outer * 0.74)));
        QPainterPath letter;
        const QString text = QString::fromUtf8(kLetters[star.slot - 1]);
        const QFontMetricsF metrics(font);
        const QRectF box = metrics.tightBoundingRect(text);
        letter.addText(centre.x() - box.center().x(), centre.y() - box.center().y(), font, text);
        if (star.slot == 1 || star.shade == StarShade::Gold) {
            // Dark on the light fills: white would wash out on gold.
            p.setPen(Qt::NoPen);
            p.setBrush(c.rim);
        } else {
            p.setPen(QPen(c.rim, std::max<qreal>(1.0, size / 32)));
            p.setBrush(Qt::white);
        }
        p.drawPath(letter);
    }
}

}  // namespace

std::optional<StarKind> StarFromKey(const std::string& key) {
    constexpr std::string_view kPrefix = "star_";
    const std::string_view text(key);
    // "star_", one digit for the scheme, "_", the number.
    if (!text.starts_with(kPrefix) || text.size() < kPrefix.size() + 3) return std::nullopt;
    const char scheme = text[kPrefix.size()];
    if (scheme < '0' || scheme > '3' || text[kPrefix.size() + 1] != '_') return std::nullopt;
    const std::string_view digits = text.substr(kPrefix.size() + 2);
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    if (number >= 600) return RowStar(number);
    return BigStar(number);
}

QPixmap StarPixmap(const std::string& key, int size) {
    const std::optional<StarKind> star = StarFromKey(key);
    if (!star || size <= 0) return {};
    // The labels ask for their picture again on every rating shown, and a
    // handful of pictures serve them all: each is drawn once.
    static std::map<std::pair<std::string, int>, QPixmap> drawn;
    auto [it, fresh] = drawn.try_emplace({key, size});
    if (!fresh) return it->second;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    {
        QPainter p(&pixmap);
        p.setRenderHint(QPainter::Antialiasing);
        PaintStar(p, size, *star);
    }
    it->second = pixmap;
    return pixmap;
}

}  // namespace velmora
