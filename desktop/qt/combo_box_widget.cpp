#include "desktop/qt/combo_box_widget.h"

#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>

#include "core/controls.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/list_box_model.h"

namespace velmora {

ComboBoxWidget::ComboBoxWidget(ComboBox& box, QWidget* parent)
    : QComboBox(parent), m_box(box), m_model(new ListBoxModel(box, this)) {
    setObjectName(Q(box.Name()));
    setEditable(true);
    // The typed text is the box's text as it stands, letter for letter: no
    // completion writes into it, and Enter adds no item.
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    // Measuring thousands of values for the widest would stall every refill.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    setMaxVisibleItems(20);
    setModel(m_model);
    if (auto* list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
    // Titles and albums are long and the boxes narrow: the list that drops
    // down is wider than its box, and cuts what is still too long at its end.
    view()->setTextElideMode(Qt::ElideRight);
    view()->setMinimumWidth(fontMetrics().averageCharWidth() * 45);

    connect(this, &QComboBox::activated, this, [this](int index) {
        if (!m_syncing && index >= 0 && index < m_box.ListCount()) m_box.SetListIndex(index);
    });
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        if (m_syncing) return;
        m_box.SetText(text.toStdString());
        m_box.Change_.emit();
    });
    // A reset empties the edit text and picks the first row; the box says
    // what is chosen and written.
    connect(m_model, &QAbstractItemModel::modelReset, this, &ComboBoxWidget::Apply);
    m_subscriptions.push_back(box.Changed.connect([this](Change kind) {
        if (kind == Change::Look)
            ApplyLook(*this, m_box);
        else if (kind != Change::Selection)
            Apply();
    }));
    ApplyLook(*this, box);
    Apply();
}

void ComboBoxWidget::Apply() {
    QScopedValueRollback guard(m_syncing, true);
    // Rows the model has not taken yet are chosen once it has.
    const int index = m_box.ListIndex();
    if (index < count() && index != currentIndex()) setCurrentIndex(index);
    const QString text = Q(m_box.Text());
    // The same text again leaves the cursor where the user is typing.
    if (currentText() != text) setEditText(text);
}

}  // namespace velmora
