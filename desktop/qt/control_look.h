#pragma once
// What every view does with a control's look: enabled, shown, its tip.

#include <QString>

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace velmora {

class Control;

inline QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// Follows the control's Enabled and Visible. A control with a tip shows it;
// one without shows tip_when_none, or leaves the widget's own tip alone when
// that is not given.
void ApplyLook(QWidget& widget, const Control& control, const std::optional<QString>& tip_when_none = std::nullopt);

}  // namespace velmora
