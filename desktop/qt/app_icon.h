#pragma once
// The program's icon for the desktop's menus and launchers: a play mark on
// a blue disc with a ring. One geometry gives both the scalable picture and
// the drawn sizes, so the two never differ.

#include <QImage>
#include <QString>

namespace velmora {

QString AppIconSvg();
// The icon drawn at `size` pixels square, on a transparent ground.
QImage AppIconImage(int size);

}  // namespace velmora
