#pragma once
// The twelve preview panes of the results frame, two rows of six, each
// shown as its control says and drawn in software at its own small size.

#include <QWidget>

#include <array>
#include <functional>
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
    // Work done once, when the strip first shows, a step a turn of the loop:
    // making a pane's engine takes up to tens of milliseconds, too long to
    // do twelve times over inside the click that starts them.
    void SetFirstShowWork(std::vector<std::function<void()>> steps) { m_first_show_work = std::move(steps); }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Apply();
    void NextStep(size_t index);

    Form1& m_form;
    std::array<SoftPicture*, kPaneCount> m_panes{};
    std::vector<Subscription> m_subscriptions;
    std::vector<std::function<void()>> m_first_show_work;
    bool m_shown_before = false;
};

}  // namespace velmora
