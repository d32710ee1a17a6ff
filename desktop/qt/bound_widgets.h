#pragma once
// Widgets that each draw one control as the logic leaves it and raise its
// events as a user's hand would: a command button, a check box, a group of
// option buttons, a text box the user types into. The subscriptions to the
// controls go into keep, which must not outlive the widgets.

#include <span>
#include <vector>

#include "base/signal.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QWidget;

namespace velmora {

class CaptionControl;
class RangeControl;
class TextBox;
class ValueControl;

// A press raises Click.
QPushButton* Bind_Button(CaptionControl& button, QWidget* parent, std::vector<Subscription>& keep);

// A click sets Value to 1 or 0, then raises Click; the mark shows the Value
// the handler leaves.
QCheckBox* Bind_Check(ValueControl& check, QWidget* parent, std::vector<Subscription>& keep);

// Option buttons of one group, in order: choosing one sets its Value to -1
// and the others' to 0, then raises its Click.
std::vector<QRadioButton*> Bind_Options(std::span<ValueControl> group, QWidget* parent,
                                        std::vector<Subscription>& keep);

// A frame: the caption as its title (and, with caption_tip, its tip, for a
// caption too long for the title), shown and enabled as the control is.
QGroupBox* Bind_Frame(CaptionControl& frame, QWidget* parent, std::vector<Subscription>& keep,
                      bool caption_tip = false);

// What the user types becomes the box's text; a text the logic sets shows.
QLineEdit* Bind_Edit(TextBox& box, QWidget* parent, std::vector<Subscription>& keep);

// A line of text: the caption as plain text, shown and enabled as the
// control is.
QLabel* Bind_Label(CaptionControl& label, QWidget* parent, std::vector<Subscription>& keep);

// A horizontal slider: moving it sets Value and raises Scroll. With seeks,
// only the end of a drag does: a seek asks the engine to load and decode.
QSlider* Bind_Slider(RangeControl& range, bool seeks, QWidget* parent, std::vector<Subscription>& keep);

}  // namespace velmora
