#include "desktop/qt/preview_panes_view.h"

#include <QGridLayout>
#include <QTimer>

#include "core/forms.h"
#include "desktop/qt/mpv_picture.h"

namespace velmora {

namespace {
constexpr int kPanesPerRow = 6;
}

PreviewPanesView::PreviewPanesView(Form1& form, QWidget* parent) : QWidget(parent), m_form(form) {
    setObjectName(QStringLiteral("PreviewPanes"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int i = 0; i < kPaneCount; ++i) {
        auto* pane = new SoftPicture(this);
        pane->setObjectName(QString::fromStdString(form.WindowsMediaPlayer3[static_cast<size_t>(i)].Name()));
        pane->setFixedSize(kPaneWidth, kPaneHeight);
        QSizePolicy policy = pane->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        pane->setSizePolicy(policy);
        grid->addWidget(pane, i / kPanesPerRow, i % kPanesPerRow);
        m_panes[static_cast<size_t>(i)] = pane;
        m_subscriptions.push_back(
            form.WindowsMediaPlayer3[static_cast<size_t>(i)].Changed.connect([this](Change) { Apply(); }));
    }
    Apply();
}

void PreviewPanesView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_shown_before) return;
    m_shown_before = true;
    NextStep(0);
}

void PreviewPanesView::NextStep(size_t index) {
    if (index >= m_first_show_work.size()) return;
    // Each step on a turn of its own, after what the loop has waiting.
    QTimer::singleShot(0, this, [this, index] {
        m_first_show_work[index]();
        NextStep(index + 1);
    });
}

void PreviewPanesView::Apply() {
    // The strip keeps its place whether panes show or not: a pane coming up
    // then repaints itself alone, not the whole page around it.
    for (int i = 0; i < kPaneCount; ++i)
        m_panes[static_cast<size_t>(i)]->setVisible(m_form.WindowsMediaPlayer3[static_cast<size_t>(i)].Visible());
}

}  // namespace velmora
