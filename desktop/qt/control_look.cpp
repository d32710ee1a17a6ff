#include "desktop/qt/control_look.h"

#include <QWidget>

#include "core/controls.h"

namespace velmora {

void ApplyLook(QWidget& widget, const Control& control, const std::optional<QString>& tip_when_none) {
    widget.setEnabled(control.Enabled());
    widget.setVisible(control.Visible());
    if (!control.ToolTip().empty())
        widget.setToolTip(Q(control.ToolTip()));
    else if (tip_when_none)
        widget.setToolTip(*tip_when_none);
}

}  // namespace velmora
