#include "desktop/qt/result_list_view.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>

#include "core/controls.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/list_box_model.h"

namespace velmora {

ResultListView::ResultListView(ListBox& box, QWidget* parent)
    : QListView(parent), m_box(box), m_model(new ListBoxModel(box, this)) {
    setObjectName(Q(box.Name()));
    // The rows are padded to fixed widths in characters; only a font whose
    // characters are all one width, Greek ones too, keeps the fields in columns.
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setStyleHint(QFont::Monospace);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    // Every row is as high and as wide as the first: the view never measures
    // the others, and a list of tens of thousands lays out at once.
    setUniformItemSizes(true);
    setWordWrap(false);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 4);
    setAlternatingRowColors(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(box.MultiSelect() ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
    setModel(m_model);

    connect(m_model, &ListBoxModel::SelectionChanged, this, &ResultListView::ApplySelection);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ResultListView::ViewSelectionChanged);
    // A click on the row already selected changes no selection, and still
    // goes to its Track again.
    connect(this, &QAbstractItemView::pressed, this, [this] {
        if (m_syncing) return;
        m_mouse_pending = true;
        Gesture();
    });
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!index.isValid()) return;
        if (m_box.ListIndex() != index.row()) m_box.SetListIndex(index.row());
        m_box.DblClick.emit();
    });
    m_subscriptions.push_back(box.Changed.connect([this](Change kind) {
        if (kind == Change::Look) ApplyLook(*this, m_box);
    }));
    ApplyLook(*this, box);
    ApplySelection();
}

void ResultListView::ApplySelection() {
    QScopedValueRollback guard(m_syncing, true);
    QItemSelection selection;
    const int count = m_model->rowCount();
    int run_start = -1;
    for (int row = 0; row <= count; ++row) {
        const bool on = row < count && m_box.Selected(row);
        if (on && run_start < 0) run_start = row;
        if (!on && run_start >= 0) {
            selection.select(m_model->index(run_start), m_model->index(row - 1));
            run_start = -1;
        }
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = m_model->index(m_box.ListIndex());
    if (!current.isValid()) {
        // A list filled anew starts at its head rows.
        if (!currentIndex().isValid()) verticalScrollBar()->setValue(0);
        return;
    }
    if (currentIndex() != current) {
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
        scrollTo(current);
    }
}

void ResultListView::ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    if (m_syncing) return;
    for (const QItemSelectionRange& range : deselected)
        for (int row = range.top(); row <= range.bottom(); ++row) m_box.Store_Selected(row, false);
    for (const QItemSelectionRange& range : selected)
        for (int row = range.top(); row <= range.bottom(); ++row) m_box.Store_Selected(row, true);
    Gesture();
}

void ResultListView::Gesture() {
    // One gesture may change the selection in several steps and press a row
    // as well; the handler hears of it once, after all of them are stored.
    if (m_click_pending) return;
    m_click_pending = true;
    QTimer::singleShot(0, this, [this] {
        const bool mouse = m_mouse_pending;
        m_click_pending = m_mouse_pending = false;
        const int row = currentIndex().row();
        if (row < 0 || row >= m_box.ListCount()) return;
        m_box.SetListIndex(row);
        if (mouse) m_box.MouseDown.emit();
    });
}

void ResultListView::keyPressEvent(QKeyEvent* event) {
    // Enter goes to the row's Track, as a click on it does: the arrows only
    // move through the rows.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        const int row = currentIndex().row();
        if (row >= 0 && row < m_box.ListCount()) {
            m_box.SetListIndex(row);
            m_box.MouseDown.emit();
        }
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        const bool page = event->modifiers() & Qt::ControlModifier;
        const bool left = event->key() == Qt::Key_Left;
        horizontalScrollBar()->triggerAction(page ? (left ? QAbstractSlider::SliderPageStepSub
                                                           : QAbstractSlider::SliderPageStepAdd)
                                                  : (left ? QAbstractSlider::SliderSingleStepSub
                                                          : QAbstractSlider::SliderSingleStepAdd));
        event->accept();
        return;
    }
    QListView::keyPressEvent(event);
}

}  // namespace velmora
