#pragma once
// The star pictures of the rating display, drawn at run time. The logic names
// them "star_<scheme>_<number>": 600..619 are the small stars of the class
// row, 101..120 the big picture of the present class. The number alone says
// which class and colours a picture has; the scheme part only tells which
// set the logic picked it from, so it must be one of the four.

#include <QPixmap>

#include <optional>
#include <string>

namespace velmora {

enum class StarShade { Gold, Blue, BlackBlue, Mix };

struct StarKind {
    int slot = 1;  // 1 Unmarked, 2 X, 3 C, 4 B, 5 A, 6 S
    StarShade shade = StarShade::Gold;
    bool big = false;  // 101..120
};

// What the key names, or nothing for a key that is not a star.
std::optional<StarKind> StarFromKey(const std::string& key);
// The picture of key, size pixels square; a null pixmap for a key that is not a star.
QPixmap StarPixmap(const std::string& key, int size);

}  // namespace velmora
