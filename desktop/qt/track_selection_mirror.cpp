#include "desktop/qt/track_selection_mirror.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTableView>

#include <algorithm>

#include "core/controls.h"

namespace velmora {

namespace {

// How long the box must keep still before Qt's model follows it.
constexpr int kStillMs = 250;

// Draws a row as selected when the path box says so, whatever Qt's model
// holds at that moment.
class SelectedFromBox : public QStyledItemDelegate {
public:
    SelectedFromBox(const ListBox& paths, QObject* parent) : QStyledItemDelegate(parent), m_paths(paths) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const int row = index.row();
        if (row < m_paths.ListCount() && m_paths.Selected(row))
            option->state |= QStyle::State_Selected;
        else
            option->state &= ~QStyle::State_Selected;
    }

private:
    const ListBox& m_paths;
};

}  // namespace

TrackSelectionMirror::TrackSelectionMirror(QTableView& view, const ListBox& paths, bool& syncing)
    : QObject(&view), m_view(view), m_paths(paths), m_syncing(syncing) {
    m_view.setItemDelegate(new SelectedFromBox(paths, &m_view));
    m_still.setSingleShot(true);
    m_still.setInterval(kStillMs);
    connect(&m_still, &QTimer::timeout, this, &TrackSelectionMirror::Settle);
    // A reset empties Qt's model without a word; the box keeps its selection.
    connect(m_view.model(), &QAbstractItemModel::modelReset, this, [this] {
        m_held.assign(static_cast<size_t>(m_view.model()->rowCount()), false);
        Changed();
    });
    m_held.assign(static_cast<size_t>(m_view.model()->rowCount()), false);
    connect(m_view.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                const auto mark = [this](const QItemSelection& ranges, bool on) {
                    for (const QItemSelectionRange& range : ranges)
                        for (int row = range.top(); row <= range.bottom(); ++row)
                            if (row >= 0 && row < static_cast<int>(m_held.size())) m_held[row] = on;
                };
                mark(deselected, false);
                mark(selected, true);
            });
    // Qt's model decides what a click, a Ctrl+click or a key does to the
    // selection, so it is brought in step before the view sees one.
    m_view.installEventFilter(this);
    m_view.viewport()->installEventFilter(this);
}

void TrackSelectionMirror::Changed() {
    m_behind = true;
    m_still.start();
    m_view.viewport()->update();
}

void TrackSelectionMirror::Settle() {
    if (!m_behind) return;
    m_behind = false;
    m_still.stop();
    QScopedValueRollback guard(m_syncing, true);
    QAbstractItemModel& model = *m_view.model();
    const int last_column = model.columnCount() - 1;
    const int count = std::min(m_paths.ListCount(), model.rowCount());
    QItemSelectionModel& qt = *m_view.selectionModel();
    // Only the rows that differ are handed over: Qt's cost grows with the
    // ranges it is given and with those it holds.
    QItemSelection on, off;
    const auto flush = [&](QItemSelection& into, int first, int last) {
        if (first >= 0) into.select(model.index(first, 0), model.index(last, last_column));
    };
    int on_start = -1, off_start = -1;
    for (int row = 0; row <= count; ++row) {
        const bool want = row < count && m_paths.Selected(row);
        const bool has = row < count && row < static_cast<int>(m_held.size()) && m_held[row];
        const bool add = want && !has, drop = !want && has && row < count;
        if (add && on_start < 0) on_start = row;
        if (!add && on_start >= 0) flush(on, on_start, row - 1), on_start = -1;
        if (drop && off_start < 0) off_start = row;
        if (!drop && off_start >= 0) flush(off, off_start, row - 1), off_start = -1;
    }
    if (!off.isEmpty()) qt.select(off, QItemSelectionModel::Deselect);
    if (!on.isEmpty()) qt.select(on, QItemSelectionModel::Select);
}

bool TrackSelectionMirror::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::ContextMenu:
            Settle();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace velmora
