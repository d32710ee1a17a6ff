#include "desktop/qt/second_player_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
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

SecondPlayerWindow::SecondPlayerWindow(Form4& form, QWidget* parent) : QWidget(parent, Qt::Window), m_form(form) {
    setObjectName(QStringLiteral("Form4"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(4);
    column->addWidget(Bind_Label(form.Label9, this, m_subscriptions));
    column->addWidget(Bind_Label(form.Label6, this, m_subscriptions));
    column->addWidget(Bind_Label(form.Label4, this, m_subscriptions));

    auto* times = new QHBoxLayout;
    times->addWidget(TimeBox(form.Text5[1], tr("Position")));
    times->addWidget(Bind_Slider(form.Slider1, true, this, m_subscriptions), 1);
    times->addWidget(TimeBox(form.Text5[2], tr("Time left")));
    times->addWidget(TimeBox(form.Text5[0], tr("Length")));
    column->addLayout(times);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(Button(form.Command3[1], "previous", tr("Previous")));
    buttons->addWidget(Button(form.Command11, "play", tr("Play or pause")));
    buttons->addWidget(Button(form.Command3[0], "next", tr("Next")));
    buttons->addWidget(Button(form.Command15[1], "back", tr("Back by the step count")));
    buttons->addWidget(Button(form.Command15[0], "forward", tr("Forward by the step count")));
    buttons->addWidget(Button(form.Command15[2], "top", tr("The top of the history")));
    QLineEdit* steps = Bind_Edit(form.Text3, this, m_subscriptions);
    steps->setMaximumWidth(40);
    steps->setToolTip(tr("Step count"));
    buttons->addWidget(steps);
    buttons->addWidget(Button(form.Command8, "rate", tr("Rate the Track")));
    buttons->addWidget(Bind_Slider(form.HScroll1, false, this, m_subscriptions), 1);
    buttons->addWidget(Button(form.Command1, "window", tr("Back to the main window")));
    column->addLayout(buttons);

    m_subscriptions.push_back(form.Changed.connect([this](Change) { Apply(); }));
    Apply();
}

void SecondPlayerWindow::Apply() {
    setWindowTitle(m_form.Caption().empty() ? QStringLiteral("VELMORA II") : Q(m_form.Caption()));
    if (m_form.Visible() != isVisible()) setVisible(m_form.Visible());
}

void SecondPlayerWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_form.QueryUnload.emit();
}

QToolButton* SecondPlayerWindow::Button(CaptionControl& button, const char* picture, const QString& tip) {
    auto* widget = new QToolButton(this);
    widget->setObjectName(Q(button.Name()));
    widget->setIconSize(QSize(18, 18));
    connect(widget, &QToolButton::clicked, this, [&button] { button.Click.emit(); });
    auto apply = [widget, &button, picture, tip] {
        widget->setIcon(ButtonPicture(button.Picture().empty() ? picture : button.Picture()));
        widget->setText(MenuText(button.Caption()));
        widget->setToolButtonStyle(button.Caption().empty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        ApplyLook(*widget, button, tip);
    };
    m_subscriptions.push_back(button.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QLineEdit* SecondPlayerWindow::TimeBox(TextBox& box, const QString& tip) {
    auto* widget = new QLineEdit(this);
    widget->setObjectName(Q(box.Name()));
    widget->setReadOnly(true);
    widget->setFocusPolicy(Qt::NoFocus);
    widget->setAlignment(Qt::AlignCenter);
    widget->setFixedWidth(widget->fontMetrics().horizontalAdvance(QStringLiteral("00:00:00")) + 14);
    auto apply = [widget, &box, tip] {
        widget->setText(Q(box.Text()));
        ApplyLook(*widget, box, tip);
    };
    m_subscriptions.push_back(box.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

}  // namespace velmora
