#pragma once
// The twelve preview panes of the results frame, two rows of six, each
// shown as its control says and drawn in software at its own small size.

#include <QWidget>

#include <array>
#include <vector>

#include "base/signal.h"
#include "core/video_controls.h"

namespace velmora {

struct Form1;
class SoftPicture;

// The size each pane decodes and draws at, in pixels.
constexpr int kPaneWidth = 160;
constexpr int kPaneHeight = 90;

class PreviewPanesView : public QWidget {
public:
    explicit PreviewPanesView(Form1& form, QWidget* parent = nullptr);
    SoftPicture& Pane(int index) const { return *m_panes[static_cast<size_t>(index)]; }

private:
    void Apply();

    Form1& m_form;
    std::array<SoftPicture*, kPaneCount> m_panes{};
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
