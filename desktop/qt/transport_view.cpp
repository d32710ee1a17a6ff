#include "desktop/qt/transport_view.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "core/forms.h"
#include "desktop/qt/bound_widgets.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"
#include "desktop/qt/pictures.h"

namespace velmora {

namespace {

// A separator between groups of buttons.
QFrame* Rule(QWidget* parent) {
    auto* rule = new QFrame(parent);
    rule->setFrameShape(QFrame::VLine);
    rule->setFrameShadow(QFrame::Sunken);
    return rule;
}

}  // namespace

TransportView::TransportView(Form1& form, QWidget* parent) : QWidget(parent), m_form(form) {
    setObjectName(QStringLiteral("Transport"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    // The buttons, the position and the volume.
    auto* controls = new QHBoxLayout;
    controls->setSpacing(4);
    controls->addWidget(Button(form.Command3[1], "previous", tr("Previous Track (Left)")));
    m_play = Button(form.Command11, "play", tr("Play or pause (Space)"));
    m_play->setIconSize(QSize(30, 30));
    m_play->setMinimumSize(46, 46);
    controls->addWidget(m_play);
    controls->addWidget(Button(form.Command3[0], "next", tr("Next Track (Right)")));
    controls->addWidget(Rule(this));
    controls->addWidget(Button(form.Command15[1], "back", tr("Back by the step count (Ctrl+Left)")));

    m_steps = new QLineEdit(this);
    m_steps->setObjectName(Q(form.Text3.Name()));
    m_steps->setAlignment(Qt::AlignCenter);
    m_steps->setMaxLength(5);
    m_steps->setFixedWidth(m_steps->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 14);
    connect(m_steps, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (m_syncing) return;
        m_form.Text3.SetText(text.toStdString());
    });
    m_subscriptions.push_back(form.Text3.Changed.connect([this](Change) { ApplySteps(); }));
    controls->addWidget(m_steps);
    ApplySteps();

    controls->addWidget(Button(form.Command15[0], "forward", tr("Forward by the step count (Ctrl+Right)")));
    controls->addWidget(Button(form.Command15[2], "top", tr("Back to the newest Track of the history")));
    controls->addWidget(Button(form.Command15[3], "window", tr("The small player window")));
    controls->addWidget(Rule(this));

    controls->addWidget(TimeBox(form.Text5[1], 8, tr("Position")));
    m_position = Bind_Slider(form.Slider1, true, this, m_subscriptions);
    m_position->setMinimumWidth(160);
    controls->addWidget(m_position, 1);
    controls->addWidget(TimeBox(form.Text5[2], 8, tr("Time left")));
    controls->addWidget(TimeBox(form.Text5[0], 8, tr("Length")));
    controls->addWidget(Rule(this));

    auto* speaker = new QLabel(this);
    speaker->setPixmap(ButtonPicture("volume").pixmap(18, 18));
    controls->addWidget(speaker);
    m_volume = Bind_Slider(form.HScroll1, false, this, m_subscriptions);
    m_volume->setFixedWidth(110);
    controls->addWidget(m_volume);
    column->addLayout(controls);

    // What plays: its path with the name marked, the mode, size and rate.
    auto* playing = new QHBoxLayout;
    playing->setSpacing(6);
    m_path = new PathLabel(this);
    m_path->setObjectName(Q(form.Text6.Name()));
    m_subscriptions.push_back(form.Text6.Changed.connect([this](Change) { ApplyPath(); }));
    playing->addWidget(m_path, 1);
    ApplyPath();
    QLabel* mode = Bind_Label(form.Label6, this, m_subscriptions);
    mode->setStyleSheet(QStringLiteral("font-weight: bold; color: #1f4e8c;"));
    playing->addWidget(mode);
    playing->addWidget(TimeBox(form.Text5[3], 8, tr("Size")));
    playing->addWidget(TimeBox(form.Text5[4], 4, tr("Bit rate, kbit/s")));
    column->addLayout(playing);

    // How much has been heard: the totals and the counts, all and by class.
    auto* totals = new QGridLayout;
    totals->setHorizontalSpacing(12);
    totals->setVerticalSpacing(0);
    totals->addWidget(Bind_Label(form.Label2[0], this, m_subscriptions), 0, 0);
    totals->addWidget(Bind_Label(form.Label3[0], this, m_subscriptions), 0, 1, Qt::AlignRight);
    totals->addWidget(Bind_Label(form.Label2[1], this, m_subscriptions), 1, 0);
    totals->addWidget(Bind_Label(form.Label3[1], this, m_subscriptions), 1, 1, Qt::AlignRight);
    totals->setColumnStretch(0, 1);
    column->addLayout(totals);

    m_subscriptions.push_back(form.Command11.Changed.connect([this](Change) { ApplyPlayButton(); }));
    ApplyPlayButton();
}

QToolButton* TransportView::Button(CaptionControl& button, const char* picture, const QString& tip) {
    auto* widget = new QToolButton(this);
    widget->setObjectName(Q(button.Name()));
    widget->setIconSize(QSize(20, 20));
    widget->setMinimumSize(34, 34);
    connect(widget, &QToolButton::clicked, this, [&button] { button.Click.emit(); });
    if (&button == &m_form.Command11) return widget;  // drawn by ApplyPlayButton
    auto apply = [widget, &button, picture, tip] {
        // A caption the logic gives wins over the picture.
        widget->setIcon(ButtonPicture(button.Picture().empty() ? picture : button.Picture()));
        widget->setText(MenuText(button.Caption()));
        widget->setToolButtonStyle(button.Caption().empty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        widget->setDown(button.Style() == 1);
        ApplyLook(*widget, button, tip);
    };
    m_subscriptions.push_back(button.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QLineEdit* TransportView::TimeBox(TextBox& box, int chars, const QString& tip) {
    auto* widget = new QLineEdit(this);
    widget->setObjectName(Q(box.Name()));
    widget->setReadOnly(true);
    widget->setFocusPolicy(Qt::NoFocus);
    widget->setAlignment(Qt::AlignCenter);
    const int least = widget->fontMetrics().horizontalAdvance(QString(chars, QLatin1Char('0'))) + 14;
    widget->setFixedWidth(least);
    auto apply = [widget, &box, tip, least] {
        if (widget->text() != Q(box.Text())) {
            widget->setText(Q(box.Text()));
            // The preview writes longer texts into the position box; the box grows for them.
            widget->setFixedWidth(std::max(least, widget->fontMetrics().horizontalAdvance(widget->text()) + 14));
        }
        ApplyLook(*widget, box, tip);
    };
    m_subscriptions.push_back(box.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

void TransportView::ApplyPlayButton() {
    const CommandButton& button = m_form.Command11;
    m_play->setIcon(ButtonPicture(button.Picture().empty() ? "play" : button.Picture()));
    m_play->setText(MenuText(button.Caption()));
    m_play->setToolButtonStyle(button.Caption().empty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    m_play->setDown(button.Style() == 1);
    ApplyLook(*m_play, button, tr("Play or pause (Space)"));
}

void TransportView::ApplyPath() {
    const PathBox& box = m_form.Text6;
    ApplyLook(*m_path, box, Q(box.Text()));
    const QString text = Q(box.Text());
    // The offsets count characters; QString counts UTF-16 units.
    const QList<uint> chars = text.toUcs4();
    auto units = [&](int count) {
        count = std::clamp(count, 0, static_cast<int>(chars.size()));
        return static_cast<int>(QString::fromUcs4(reinterpret_cast<const char32_t*>(chars.data()), count).size());
    };
    const int start = units(box.SelStart());
    m_path->SetPath(text, start, units(box.SelStart() + box.SelLength()) - start);
}

PathLabel::PathLabel(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PathLabel::SetPath(const QString& text, int start, int length) {
    if (text == m_text && start == m_start && length == m_length) return;
    m_text = text;
    m_start = start;
    m_length = length;
    update();
}

QSize PathLabel::sizeHint() const { return {fontMetrics().horizontalAdvance(m_text) + 8, fontMetrics().height() + 8}; }

QSize PathLabel::minimumSizeHint() const { return {80, fontMetrics().height() + 8}; }

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QRect area = rect().adjusted(4, 0, -4, 0);
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics plain_metrics(font()), bold_metrics(bold);
    const QString before = m_text.left(m_start), marked = m_text.mid(m_start, m_length),
                  after = m_text.mid(m_start + m_length);
    // The marked part first gets its room, the rest shares what is left.
    const QString shown_marked = bold_metrics.elidedText(marked, Qt::ElideMiddle, area.width());
    const int marked_width = bold_metrics.horizontalAdvance(shown_marked);
    const QString shown_after =
        plain_metrics.elidedText(after, Qt::ElideRight, std::max(0, area.width() - marked_width));
    const int after_width = plain_metrics.horizontalAdvance(shown_after);
    const QString shown_before =
        plain_metrics.elidedText(before, Qt::ElideLeft, std::max(0, area.width() - marked_width - after_width));

    int x = area.left();
    const int baseline = (height() + plain_metrics.ascent() - plain_metrics.descent()) / 2;
    p.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::PlaceholderText));
    p.drawText(x, baseline, shown_before);
    x += plain_metrics.horizontalAdvance(shown_before);
    p.setFont(bold);
    p.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    p.drawText(x, baseline, shown_marked);
    x += marked_width;
    p.setFont(font());
    p.drawText(x, baseline, shown_after);
}

void TransportView::ApplySteps() {
    QScopedValueRollback guard(m_syncing, true);
    const QString text = Q(m_form.Text3.Text());
    // Set only when it differs, so the cursor stays where the user types.
    if (m_steps->text() != text) m_steps->setText(text);
    m_steps->setReadOnly(m_form.Text3.Locked());
    ApplyLook(*m_steps, m_form.Text3, tr("Steps back and forward"));
}

}  // namespace velmora
