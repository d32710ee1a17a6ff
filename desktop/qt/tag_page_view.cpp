#include "desktop/qt/tag_page_view.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/forms.h"
#include "desktop/qt/art_pixmap.h"
#include "desktop/qt/bound_widgets.h"
#include "desktop/qt/combo_box_widget.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"

namespace velmora {

namespace {

constexpr int kArtSize = 96;

// A tag box hands its text over when the edit is finished (Enter, or the
// focus leaving it), not at each key: a change of the box asks whether to
// store it.
QLineEdit* BindTagEdit(TextBox& box, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QLineEdit(parent);
    widget->setObjectName(Q(box.Name()));
    QObject::connect(widget, &QLineEdit::editingFinished, widget, [widget, &box] {
        const std::string text = widget->text().toStdString();
        if (text != box.Text()) box.SetText(text);
    });
    auto apply = [widget, &box] {
        if (widget->text() != Q(box.Text())) widget->setText(Q(box.Text()));
        widget->setReadOnly(box.Locked());
        ApplyLook(*widget, box);
    };
    keep.push_back(box.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QLabel* BindCaption(Label& label, QWidget* parent, std::vector<Subscription>& keep) {
    auto* widget = new QLabel(parent);
    widget->setObjectName(Q(label.Name()));
    auto apply = [widget, &label] { widget->setText(MenuText(label.Caption())); };
    keep.push_back(label.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

}  // namespace

TagPageView::TagPageView(Form1& form, QWidget* parent) : QWidget(parent), m_form(form) {
    setObjectName(QStringLiteral("TagPage"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(BuildTags(), 3);
    row->addWidget(BuildLinks(), 2);
}

QWidget* TagPageView::BuildTags() {
    Form1& f = m_form;
    QGroupBox* frame = Bind_Frame(f.Tag_Frame, this, m_subscriptions);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(6, 6, 6, 6);
    for (int i = 0; i < 5; ++i) {
        grid->addWidget(BindCaption(f.Label1[i], frame, m_subscriptions), i, 0);
        grid->addWidget(BindTagEdit(f.Text1[i], frame, m_subscriptions), i, 1);
    }
    grid->addWidget(BindCaption(f.Label1[5], frame, m_subscriptions), 5, 0);
    grid->addWidget(new ComboBoxWidget(f.Combo1, frame), 5, 1);
    QPushButton* save = Bind_Button(f.Command14, frame, m_subscriptions);
    if (f.Command14.Caption().empty()) save->setText(tr("Αποθήκευση - Save"));
    grid->addWidget(save, 6, 1);

    m_art = new QLabel(frame);
    m_art->setObjectName(Q(f.Picture1.Name()));
    m_art->setFixedSize(kArtSize, kArtSize);
    m_art->setAlignment(Qt::AlignCenter);
    m_art->setFrameShape(QFrame::StyledPanel);
    grid->addWidget(m_art, 0, 2, 6, 1);
    m_subscriptions.push_back(f.Picture1.Changed.connect([this](Change) { ApplyArt(); }));
    ApplyArt();
    return frame;
}

QWidget* TagPageView::BuildLinks() {
    Form1& f = m_form;
    auto* box = new QWidget(this);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new ComboBoxWidget(f.Combo3, box));
    QLineEdit* text = Bind_Edit(f.Text2[3], box, m_subscriptions);
    text->setObjectName(QStringLiteral("Text2(3).links"));
    text->setPlaceholderText(tr("Δώσε αναζήτηση ή νέα διεύθυνση δικτύου για α..."));
    column->addWidget(text);
    for (QRadioButton* option : Bind_Options(f.Option2, box, m_subscriptions)) column->addWidget(option);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Bind_Button(f.Command13, box, m_subscriptions));
    QPushButton* copy = Bind_Button(f.Command6[1], box, m_subscriptions);
    if (f.Command6[1].Caption().empty()) copy->setText(tr("Αντιγραφή Στοιχείων Copy Properties"));
    buttons->addWidget(copy);
    column->addLayout(buttons);
    column->addWidget(Bind_Check(f.Check1, box, m_subscriptions));
    column->addStretch(1);
    return box;
}

void TagPageView::ApplyArt() {
    // Scaled to the box, as the picture is painted into it.
    const QPixmap art = ArtPixmap(m_form.Picture1.Picture());
    if (art.isNull()) m_art->clear();
    else m_art->setPixmap(art.scaled(m_art->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace velmora
