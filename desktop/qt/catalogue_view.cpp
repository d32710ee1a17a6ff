#include "desktop/qt/catalogue_view.h"

#include <QApplication>
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
#include "desktop/qt/bound_widgets.h"
#include "desktop/qt/combo_box_widget.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"
#include "desktop/qt/preview_panes_view.h"
#include "desktop/qt/result_list_view.h"

namespace velmora {

namespace {

// The boxes stand three to a row, each under its caption.
constexpr int kBoxesPerRow = 3;

}  // namespace

CatalogueView::CatalogueView(Form1& form, QWidget* parent) : QObject(parent), m_form(form) {
    m_managing = BuildManagingFrame(parent);
    // The page holds the frame, so that the frame's own visible state and
    // the page group's choice of page do not overrule each other.
    m_results_page = new QWidget(parent);
    m_results_page->setObjectName(QStringLiteral("ResultsPage"));
    auto* column = new QVBoxLayout(m_results_page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(BuildResultsFrame(m_results_page));

    m_subscriptions.push_back(form.Frame12.Changed.connect([this](Change kind) {
        if (kind == Change::Look) m_boxes_pacer.Request();
    }));
    ApplyBoxesEnabled();
}

QGroupBox* CatalogueView::BuildManagingFrame(QWidget* parent) {
    Form1& f = m_form;
    QGroupBox* box = Bind_Frame(f.Frame12, parent, m_subscriptions);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);

    // What to do with the rows, and how.
    auto* how = new QVBoxLayout;
    how->setSpacing(2);
    for (QRadioButton* option : Bind_Options(f.Option3, box, m_subscriptions)) how->addWidget(option);
    how->addSpacing(6);
    how->addWidget(Bind_Check(f.Check3, box, m_subscriptions));
    how->addWidget(Bind_Check(f.Check4, box, m_subscriptions));
    how->addStretch(1);
    grid->addLayout(how, 0, 0);

    auto* run = new QVBoxLayout;
    run->setSpacing(4);
    QPushButton* execute = Bind_Button(f.Command16[0], box, m_subscriptions);
    execute->setToolTip(tr("Copy, move or delete the files of the filter results, or of the rows selected"));
    run->addWidget(execute);
    run->addWidget(Bind_Button(f.Command16[1], box, m_subscriptions));
    run->addStretch(1);
    grid->addLayout(run, 0, 1);

    // Where copies and moves go: the picker's button and the folder it gave.
    auto* destination = new QHBoxLayout;
    destination->addWidget(Bind_Button(f.Command19, box, m_subscriptions));
    QLineEdit* folder = Bind_Edit(f.Text2[5], box, m_subscriptions);
    folder->setClearButtonEnabled(false);
    folder->setPlaceholderText(tr("No destination folder chosen"));
    destination->addWidget(folder, 1);
    grid->addLayout(destination, 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    return box;
}

QWidget* CatalogueView::BuildBoxes(QWidget* parent) {
    Form1& f = m_form;
    m_box_grid = new QWidget(parent);
    m_box_grid->setObjectName(QStringLiteral("FilterBoxes"));
    auto* grid = new QGridLayout(m_box_grid);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    for (int k = 0; k < 9; ++k) {
        auto* caption = new QLabel(m_box_grid);
        caption->setObjectName(Q(f.Label12[k].Name()));
        Label& label = f.Label12[k];
        auto apply = [caption, &label] {
            caption->setText(Q(label.Caption()));
            ApplyLook(*caption, label);
        };
        m_subscriptions.push_back(label.Changed.connect([apply](Change) { apply(); }));
        apply();
        m_boxes[k] = new ComboBoxWidget(f.Combo4_0[k], m_box_grid);
        caption->setBuddy(m_boxes[k]);
        auto* cell = new QVBoxLayout;
        cell->setSpacing(1);
        cell->addWidget(caption);
        cell->addWidget(m_boxes[k]);
        grid->addLayout(cell, k / kBoxesPerRow, k % kBoxesPerRow);
    }
    for (int col = 0; col < kBoxesPerRow; ++col) grid->setColumnStretch(col, 1);
    return m_box_grid;
}

QGroupBox* CatalogueView::BuildResultsFrame(QWidget* parent) {
    Form1& f = m_form;
    QGroupBox* box = Bind_Frame(f.Frame6, parent, m_subscriptions);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(4);
    column->addWidget(BuildBoxes(box));
    column->addLayout(SearchRow(4, f.Command17, tr("Find in the list shown"), box));

    // The two lists share one place; the logic shows the one that counts and
    // hides both while it fills them, which leaves the place as it was.
    auto* lists = new QGridLayout;
    m_results = new ResultListView(f.List4, box);
    m_all = new ResultListView(f.List5, box);
    for (ResultListView* list : {m_results, m_all}) {
        QSizePolicy policy = list->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        list->setSizePolicy(policy);
        lists->addWidget(list, 0, 0);
    }
    column->addLayout(lists, 1);
    m_panes = new PreviewPanesView(f, box);
    column->addWidget(m_panes);
    column->addLayout(SearchRow(3, f.Command6[0], tr("Search the catalogue: every box emptied, the rows found selected"), box));
    return box;
}

QLayout* CatalogueView::SearchRow(int text_index, CaptionControl& button, const QString& hint, QWidget* parent) {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    QLineEdit* text = Bind_Edit(m_form.Text2[text_index], parent, m_subscriptions);
    text->setPlaceholderText(hint);
    QPushButton* press = Bind_Button(button, parent, m_subscriptions);
    press->setToolTip(hint);
    connect(text, &QLineEdit::returnPressed, this, [&button] {
        if (button.Enabled() && button.Visible()) button.Click.emit();
    });
    row->addWidget(text, 1);
    row->addWidget(press);
    return row;
}

void CatalogueView::ApplyBoxesEnabled() {
    const bool on = m_form.Frame12.Enabled();
    // The grid's own state: the whole window may be disabled around it.
    if (on == m_box_grid->isEnabledTo(m_box_grid->parentWidget())) return;
    if (!on) {
        // A filter runs on every letter typed into a box: the letters that
        // follow must find the box as the user left it.
        QWidget* focus = QApplication::focusWidget();
        m_focus_before = focus && m_box_grid->isAncestorOf(focus) ? focus : nullptr;
    }
    m_box_grid->setEnabled(on);
    if (on && m_focus_before) {
        QWidget* focus = QApplication::focusWidget();
        // Unless the user went elsewhere meanwhile.
        if (!focus || m_results_page->isAncestorOf(focus)) m_focus_before->setFocus();
        m_focus_before = nullptr;
    }
}

}  // namespace velmora
