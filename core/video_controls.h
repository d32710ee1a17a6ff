#pragma once
// The controls of the video window and the second player that the other
// windows do not have: an area of the screen where an engine draws its
// picture, in pixels.

#include <array>
#include <string>

#include "core/controls.h"

namespace velmora {

// Where an engine's picture goes: its size, shown or not. A size of 0 is a
// control that has not been laid out yet.
class PictureArea : public Control {
public:
    using Control::Control;
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    void SetWidth(int w) { Set(m_width, w, Change::Contents); }
    void SetHeight(int h) { Set(m_height, h, Change::Contents); }

private:
    int m_width = 0;
    int m_height = 0;
};

// The preview panes of the catalogue page.
constexpr int kPaneCount = 12;

// The strip below the picture that the video window keeps for its own
// status line, in pixels.
constexpr int kVideoStripHeight = 36;

// The picture's size when the film does not give one.
constexpr int kDefaultPictureWidth = 320;
constexpr int kDefaultPictureHeight = 240;

}  // namespace velmora
