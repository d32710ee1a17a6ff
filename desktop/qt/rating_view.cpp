#include "desktop/qt/rating_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

#include "core/forms.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"
#include "desktop/qt/star_pictures.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

// The heads of the class rows, by slot.
const char* const kHeads[] = {"-", "X", "C", "B", "A", "S"};

// Style 1 marks the present class with the selection colours; the plain look
// keeps the row's own background.
void ApplyMark(QLabel& label, bool marked, QPalette::ColorRole plain) {
    QPalette palette = label.parentWidget() ? label.parentWidget()->palette() : label.palette();
    palette.setColor(QPalette::Window, palette.color(marked ? QPalette::Highlight : plain));
    palette.setColor(QPalette::WindowText, palette.color(marked ? QPalette::HighlightedText : QPalette::WindowText));
    label.setPalette(palette);
    QFont font = label.font();
    font.setBold(marked);
    label.setFont(font);
}

}  // namespace

RatingView::RatingView(Form1& form, QWidget* parent) : QWidget(parent), m_form(form) {
    setObjectName(QStringLiteral("Rating"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    // The button and the big star of the present class.
    auto* top = new QHBoxLayout;
    top->setSpacing(6);
    m_big_star = new QLabel(this);
    m_big_star->setObjectName(Q(form.Picture2.Name()));
    m_big_star->setFixedSize(kBigStarSize, kBigStarSize);
    m_big_star->setAlignment(Qt::AlignCenter);
    auto apply_big = [this] {
        const PictureBox& picture = m_form.Picture2;
        m_big_star->setPixmap(StarPixmap(picture.Picture(), kBigStarSize));
        ApplyLook(*m_big_star, picture);
    };
    Follow(form.Picture2, apply_big);
    top->addWidget(m_big_star);

    m_rate = new QPushButton(this);
    m_rate->setObjectName(Q(form.Command8.Name()));
    // Checkable for the pressed look only; Style decides it, not the click.
    m_rate->setCheckable(true);
    m_rate->setMinimumHeight(34);
    m_rate->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_rate->setToolTip(tr("Rate the current Track: Unmarked, X, C, B, A, S and round again"));
    connect(m_rate, &QPushButton::clicked, this, [this] {
        m_form.Command8.Click.emit();
        // The press flipped the check mark; a handler that leaves Style alone
        // raises no change, so the look is put back here.
        ApplyRateButton();
    });
    Follow(form.Command8, [this] { ApplyRateButton(); }, false);
    ApplyRateButton();
    top->addWidget(m_rate, 1);
    column->addLayout(top);

    // One row per class, S at the top, then the whole Collection.
    auto* classes = new QGridLayout;
    classes->setHorizontalSpacing(3);
    classes->setVerticalSpacing(2);
    for (int slot = 6; slot >= 1; --slot) {
        const int row = 6 - slot;
        const QString caption = Q(Class_Caption(slot - 1));
        m_heads[slot - 1] = ClassLabel(form.Label10[slot - 1], QString::fromLatin1(kHeads[slot - 1]));
        m_heads[slot - 1]->setToolTip(caption);
        m_stars[slot - 1] = StarLabel(form.Label21[slot - 1]);
        m_stars[slot - 1]->setToolTip(caption);
        m_totals[slot] = ClassLabel(form.Label9[slot], {});
        classes->addWidget(m_heads[slot - 1], row, 0);
        classes->addWidget(m_stars[slot - 1], row, 1);
        classes->addWidget(m_totals[slot], row, 2);
    }
    auto* all = new QLabel(QStringLiteral("\u03a3"), this);  // the sum of every class
    all->setAlignment(Qt::AlignCenter);
    all->setToolTip(tr("The whole Collection"));
    QFont bold = all->font();
    bold.setBold(true);
    all->setFont(bold);
    classes->addWidget(all, 6, 0);
    m_totals[0] = ClassLabel(form.Label9[0], {});
    classes->addWidget(m_totals[0], 6, 1, 1, 2);
    classes->setColumnStretch(2, 1);
    column->addLayout(classes);

    m_progress = new ProgressStrip(this);
    m_progress->setObjectName(Q(form.Shape1[0].Name()));
    Follow(form.Shape1[0], [this] { ApplyProgress(); }, false);
    Follow(form.Label11[0], [this] { ApplyProgress(); });
    column->addWidget(m_progress);
    column->addStretch(1);
}

void RatingView::Follow(Control& control, std::function<void()> apply, bool now) {
    const size_t index = m_applies.size();
    m_applies.push_back(std::move(apply));
    m_dirty.push_back(false);
    m_subscriptions.push_back(control.Changed.connect([this, index](Change) {
        m_dirty[index] = true;
        m_pacer.Request();
    }));
    if (now) m_applies[index]();
}

void RatingView::ApplyChanged() {
    for (size_t i = 0; i < m_applies.size(); ++i) {
        if (!m_dirty[i]) continue;
        m_dirty[i] = false;
        m_applies[i]();
    }
}

QLabel* RatingView::StarLabel(CaptionControl& label) {
    auto* widget = new QLabel(this);
    widget->setObjectName(Q(label.Name()));
    widget->setAlignment(Qt::AlignCenter);
    widget->setLineWidth(1);
    widget->setFixedSize(kStarSize + 6, kStarSize + 6);
    widget->setAutoFillBackground(true);
    auto apply = [widget, &label] {
        widget->setPixmap(StarPixmap(label.Picture(), kStarSize));
        // Style 2 sinks the present class's star; a single border either way.
        const bool sunken = label.Style() == 2;
        widget->setFrameStyle(sunken ? QFrame::Panel | QFrame::Sunken : QFrame::Box | QFrame::Plain);
        QPalette palette = widget->parentWidget()->palette();
        palette.setColor(QPalette::Window, palette.color(sunken ? QPalette::Mid : QPalette::Window));
        palette.setColor(QPalette::WindowText, palette.color(sunken ? QPalette::Dark : QPalette::Mid));
        widget->setPalette(palette);
        ApplyLook(*widget, label);
    };
    Follow(label, apply);
    return widget;
}

QLabel* RatingView::ClassLabel(CaptionControl& label, const QString& head_text) {
    auto* widget = new QLabel(this);
    widget->setObjectName(Q(label.Name()));
    widget->setTextFormat(Qt::PlainText);
    widget->setAutoFillBackground(true);
    widget->setMargin(3);
    const bool head = !head_text.isEmpty();
    if (head) {
        widget->setAlignment(Qt::AlignCenter);
        widget->setFixedWidth(widget->fontMetrics().horizontalAdvance(QStringLiteral("WW")) + 8);
    } else {
        widget->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
        widget->setMinimumWidth(120);
    }
    widget->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    auto apply = [widget, &label, head_text, head] {
        // A caption the logic gives wins over the head's letter.
        widget->setText(label.Caption().empty() ? head_text : Q(label.Caption()));
        ApplyMark(*widget, label.Style() == 1, head ? QPalette::Button : QPalette::Base);
        ApplyLook(*widget, label);
    };
    Follow(label, apply);
    return widget;
}

void RatingView::ApplyRateButton() {
    const CommandButton& button = m_form.Command8;
    m_rate->setText(MenuText(button.Caption()));
    const bool pressed = button.Style() == 1;
    m_rate->setChecked(pressed);
    // The style's checked look is faint on some themes; a shaded face and a
    // bold caption make the pressed button plain to see.
    QPalette palette = this->palette();
    if (pressed) palette.setColor(QPalette::Button, palette.color(QPalette::Button).darker(118));
    m_rate->setPalette(palette);
    QFont font = m_rate->font();
    font.setBold(pressed);
    m_rate->setFont(font);
    ApplyLook(*m_rate, button);
}

void RatingView::ApplyProgress() {
    const Shape& bar = m_form.Shape1[0];
    const Label& text = m_form.Label11[0];
    m_progress->SetProgress(bar.Width(), Q(text.Caption()));
    m_progress->SetTextShown(text.Visible());
    ApplyLook(*m_progress, bar);
}

ProgressStrip::ProgressStrip(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressStrip::SetProgress(int percent, const QString& text) {
    percent = std::clamp(percent, 0, 100);
    if (percent == m_percent && text == m_text) return;
    m_percent = percent;
    m_text = text;
    update();
}

void ProgressStrip::SetTextShown(bool on) {
    if (on == m_text_shown) return;
    m_text_shown = on;
    update();
}

QSize ProgressStrip::sizeHint() const { return {200, fontMetrics().height() + 6}; }

QSize ProgressStrip::minimumSizeHint() const { return {60, fontMetrics().height() + 6}; }

void ProgressStrip::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QRect area = rect().adjusted(0, 0, -1, -1);
    p.setPen(palette().color(group, QPalette::Mid));
    p.setBrush(palette().color(group, QPalette::Base));
    p.drawRect(area);
    const QRect inner = area.adjusted(1, 1, 0, 0);
    const QRect filled(inner.topLeft(), QSize(inner.width() * m_percent / 100, inner.height()));
    p.fillRect(filled, palette().color(group, QPalette::Highlight));
    if (!m_text_shown) return;
    // The text takes the fill's colours where the fill runs under it.
    p.setPen(palette().color(group, QPalette::Text));
    p.drawText(inner, Qt::AlignCenter, m_text);
    p.setClipRect(filled);
    p.setPen(palette().color(group, QPalette::HighlightedText));
    p.drawText(inner, Qt::AlignCenter, m_text);
}

}  // namespace velmora
