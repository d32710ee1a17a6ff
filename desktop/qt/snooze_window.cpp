#include "desktop/qt/snooze_window.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDate>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "core/snooze_form.h"
#include "desktop/qt/bound_widgets.h"
#include "desktop/qt/combo_box_widget.h"
#include "desktop/qt/control_look.h"

namespace velmora {

namespace {

constexpr const char* kDateFormat = "dd/MM/yyyy";

// A spin control: up raises the value, as on a clock.
QScrollBar* Bind_Spin(ScrollBar& spin, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QScrollBar(Qt::Vertical, parent);
    widget->setObjectName(Q(spin.Name()));
    widget->setInvertedAppearance(true);
    widget->setInvertedControls(false);
    widget->setFixedHeight(widget->sizeHint().width() * 2 + 4);
    QObject::connect(widget, &QScrollBar::actionTriggered, widget, [widget, &spin](int) {
        // The action moves the slider only after this signal.
        spin.SetValue(widget->sliderPosition());
    });
    auto apply = [widget, &spin] {
        const QSignalBlocker quiet(widget);
        widget->setRange(spin.Min(), spin.Max());
        widget->setValue(spin.Value());
        ApplyLook(*widget, spin);
    };
    keep.push_back(spin.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

}  // namespace

SnoozeWindow::SnoozeWindow(Form5& form, QWidget* parent) : QWidget(parent, Qt::Window), m_form(form) {
    setObjectName(QStringLiteral("Form5"));
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addWidget(BuildDate());
    auto* right = new QVBoxLayout;
    right->addWidget(BuildBoxes(0, form.Frame2));
    right->addWidget(BuildBoxes(3, form.Frame3));
    right->addWidget(BuildSelection());
    right->addStretch();
    top->addLayout(right);
    layout->addLayout(top);
    layout->addWidget(BuildFile());

    QLabel* left = Bind_Label(form.Label1, this, m_subscriptions);
    QFont big = left->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    left->setFont(big);
    left->setAlignment(Qt::AlignCenter);
    layout->addWidget(left);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (int i : {1, 2, 0}) buttons->addWidget(Bind_Button(form.Command1[i], this, m_subscriptions));
    layout->addLayout(buttons);

    m_subscriptions.push_back(form.Changed.connect([this](Change) { ApplyForm(); }));
    ApplyForm();
}

SnoozeWindow::~SnoozeWindow() = default;

QWidget* SnoozeWindow::BuildDate() {
    QGroupBox* frame = Bind_Frame(m_form.Frame1, this, m_subscriptions);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(Bind_Check(m_form.Check3, frame, m_subscriptions));
    m_calendar = new QCalendarWidget(frame);
    m_calendar->setObjectName(Q(m_form.Calendar1.Name()));
    m_calendar->setGridVisible(true);
    QObject::connect(m_calendar, &QCalendarWidget::clicked, this, [this](QDate date) {
        m_form.Calendar1.SetText(date.toString(QLatin1String(kDateFormat)).toStdString());
    });
    m_subscriptions.push_back(m_form.Calendar1.Changed.connect([this](Change) { ApplyCalendar(); }));
    ApplyCalendar();
    layout->addWidget(m_calendar);
    return frame;
}

QWidget* SnoozeWindow::BuildBoxes(int first, CaptionControl& caption) {
    QGroupBox* frame = Bind_Frame(caption, this, m_subscriptions);
    auto* layout = new QHBoxLayout(frame);
    for (int i = first; i < first + 3; ++i) {
        if (i > first) layout->addWidget(new QLabel(QStringLiteral(":"), frame));
        QLineEdit* box = Bind_Edit(m_form.Text1[i], frame, m_subscriptions);
        box->setClearButtonEnabled(false);
        box->setMaxLength(3);  // a third character is typed, and turns the box to "00"
        box->setAlignment(Qt::AlignCenter);
        box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("000")) + 16);
        layout->addWidget(box);
        layout->addWidget(Bind_Spin(m_form.VScroll1[i], frame, m_subscriptions));
    }
    layout->addStretch();
    return frame;
}

QWidget* SnoozeWindow::BuildSelection() {
    QGroupBox* frame = Bind_Frame(m_form.Frame4, this, m_subscriptions);
    auto* layout = new QVBoxLayout(frame);
    for (CheckBox* check : {&m_form.Check1, &m_form.Check2, &m_form.Check4})
        layout->addWidget(Bind_Check(*check, frame, m_subscriptions));
    layout->addWidget(Bind_Label(m_form.Label2, frame, m_subscriptions));
    return frame;
}

QWidget* SnoozeWindow::BuildFile() {
    QGroupBox* frame = Bind_Frame(m_form.Frame5, this, m_subscriptions);
    auto* layout = new QVBoxLayout(frame);
    auto* combo = new ComboBoxWidget(m_form.Combo1, frame);
    combo->setMinimumContentsLength(40);
    layout->addWidget(combo);
    return frame;
}

void SnoozeWindow::ApplyForm() {
    setWindowTitle(Q(m_form.Caption()));
    if (m_form.Visible() != isVisible()) setVisible(m_form.Visible());
}

void SnoozeWindow::ApplyCalendar() {
    const QDate date = QDate::fromString(Q(m_form.Calendar1.Text()), QLatin1String(kDateFormat));
    if (date.isValid() && date != m_calendar->selectedDate()) m_calendar->setSelectedDate(date);
}

void SnoozeWindow::closeEvent(QCloseEvent* event) {
    // Whether the window goes is the handler's to say, through Form5.
    event->ignore();
    if (m_on_close) m_on_close();
}

}  // namespace velmora
