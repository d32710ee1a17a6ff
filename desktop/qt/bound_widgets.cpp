#include "desktop/qt/bound_widgets.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include <algorithm>
#include <memory>

#include "core/controls.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"

namespace velmora {

// Qt tells clicked, activated and textEdited for the user's hand only, never
// for the widget's own setters: drawing a control raises none of its events.

QPushButton* Bind_Button(CaptionControl& button, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QPushButton(parent);
    widget->setObjectName(Q(button.Name()));
    widget->setAutoDefault(false);
    QObject::connect(widget, &QPushButton::clicked, widget, [&button] { button.Click.emit(); });
    auto apply = [widget, &button] {
        widget->setText(MenuText(button.Caption()));
        ApplyLook(*widget, button);
    };
    keep.push_back(button.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QCheckBox* Bind_Check(ValueControl& check, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QCheckBox(parent);
    widget->setObjectName(Q(check.Name()));
    auto apply = [widget, &check] {
        widget->setText(MenuText(check.Caption()));
        widget->setChecked(check.Value() != 0);
        ApplyLook(*widget, check);
    };
    QObject::connect(widget, &QCheckBox::clicked, widget, [&check, apply](bool on) {
        check.SetValue(on ? 1 : 0);
        check.Click.emit();
        // A handler that turns the box back leaves Value as it was before
        // the click, which tells no change; the mark is drawn again here.
        apply();
    });
    keep.push_back(check.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

std::vector<QRadioButton*> Bind_Options(std::span<ValueControl> group, QWidget* parent,
                                        std::vector<Subscription>& keep) {
    std::vector<QRadioButton*> widgets;
    for (ValueControl& option : group) {
        auto* widget = new QRadioButton(parent);
        widget->setObjectName(Q(option.Name()));
        // The marks are drawn from the Values, not kept by Qt.
        widget->setAutoExclusive(false);
        auto apply = [widget, &option] {
            widget->setText(MenuText(option.Caption()));
            widget->setChecked(option.Value() != 0);
            ApplyLook(*widget, option);
        };
        QObject::connect(widget, &QRadioButton::clicked, widget, [group, &option, apply] {
            for (ValueControl& other : group)
                if (&other != &option) other.SetValue(0);
            option.SetValue(-1);
            apply();
            option.Click.emit();
        });
        keep.push_back(option.Changed.connect([apply](Change) { apply(); }));
        apply();
        widgets.push_back(widget);
    }
    return widgets;
}

QGroupBox* Bind_Frame(CaptionControl& frame, QWidget* parent, std::vector<Subscription>& keep, bool caption_tip) {
    auto* box = new QGroupBox(parent);
    box->setObjectName(Q(frame.Name()));
    auto apply = [box, &frame, caption_tip] {
        box->setTitle(MenuText(frame.Caption()));
        if (caption_tip) box->setToolTip(Q(frame.Caption()));
        ApplyLook(*box, frame);
    };
    keep.push_back(frame.Changed.connect([apply](Change) { apply(); }));
    apply();
    return box;
}

QLineEdit* Bind_Edit(TextBox& box, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QLineEdit(parent);
    widget->setObjectName(Q(box.Name()));
    widget->setClearButtonEnabled(true);
    QObject::connect(widget, &QLineEdit::textEdited, widget,
                     [&box](const QString& text) { box.SetText(text.toStdString()); });
    auto apply = [widget, &box] {
        const QString text = Q(box.Text());
        // The same text again leaves the cursor where the user is typing.
        if (widget->text() != text) widget->setText(text);
        widget->setReadOnly(box.Locked());
        ApplyLook(*widget, box);
    };
    keep.push_back(box.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QLabel* Bind_Label(CaptionControl& label, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QLabel(parent);
    widget->setObjectName(Q(label.Name()));
    widget->setTextFormat(Qt::PlainText);
    auto apply = [widget, &label] {
        widget->setText(Q(label.Caption()));
        ApplyLook(*widget, label, QString());
    };
    keep.push_back(label.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QSlider* Bind_Slider(RangeControl& range, bool seeks, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QSlider(Qt::Horizontal, parent);
    widget->setObjectName(Q(range.Name()));
    widget->setTracking(!seeks);
    // Set from the control, the slider raises no event of its own.
    auto syncing = std::make_shared<bool>(false);
    auto apply = [widget, &range, syncing] {
        *syncing = true;
        widget->setRange(range.Min(), range.Max());
        widget->setPageStep(std::max(1, range.LargeChange()));
        // The clock moves the position every second; it must not pull the
        // handle from under the user's hand.
        if (!widget->isSliderDown()) widget->setValue(range.Value());
        ApplyLook(*widget, range, QString());
        *syncing = false;
    };
    QObject::connect(widget, &QSlider::valueChanged, widget, [&range, syncing](int value) {
        if (*syncing) return;
        range.SetValue(value);
        range.Scroll.emit();
    });
    keep.push_back(range.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

}  // namespace velmora
