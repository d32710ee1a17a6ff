#include "desktop/qt/track_list_model.h"

#include <algorithm>

#include "core/forms.h"
#include "desktop/qt/control_look.h"

namespace velmora {

TrackListModel::TrackListModel(Form1& form, QObject* parent)
    : QAbstractTableModel(parent),
      m_boxes{&form.List3_0[0], &form.List3_0[1], &form.List3_0[2], &form.List3_0[3], &form.List3_0[4], &form.List2},
      // A walk past a drive that is gone steps thousands of times a second;
      // following each step would cost the view more than the step.
      m_pacer(this, [this] { Flush(); }) {
    for (ListBox* box : m_boxes) {
        const bool is_path = box == &form.List2;
        m_subscriptions.push_back(box->Changed.connect([this, box, is_path](Change kind) {
            if (kind == Change::Contents) {
                // The walk changes a row or two per step; a reset would lay
                // out and reselect every row of the table each time.
                const int row = box->Last_Item_Changed();
                if (row >= 0) {
                    m_changed_first = m_changed_first < 0 ? row : std::min(m_changed_first, row);
                    m_changed_last = std::max(m_changed_last, row);
                } else {
                    m_contents_dirty = true;
                }
            } else if (is_path && (kind == Change::Selection || kind == Change::Index)) {
                m_selection_dirty = true;
            } else {
                return;
            }
            m_pacer.Request();
        }));
    }
}

int TrackListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    // The boxes are kept in step by the logic; between two of its steps the
    // longest one decides, so no row is ever out of sight.
    int rows = 0;
    for (const ListBox* box : m_boxes) rows = std::max(rows, box->ListCount());
    return rows;
}

int TrackListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant TrackListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return Q(m_boxes[index.column()]->List(index.row()));
        case Qt::TextAlignmentRole:
            if (index.column() == Path) return int(Qt::AlignLeft | Qt::AlignVCenter);
            if (index.column() == Class) return int(Qt::AlignHCenter | Qt::AlignVCenter);
            return int(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::ToolTipRole:
            if (index.column() == Path) return Q(m_boxes[Path]->List(index.row()));
            return {};
        default:
            return {};
    }
}

void TrackListModel::Flush() {
    if (m_contents_dirty) {
        m_contents_dirty = false;
        m_changed_first = m_changed_last = -1;
        beginResetModel();
        endResetModel();
        m_selection_dirty = true;  // a reset drops the view's selection
    }
    const int last = std::min(m_changed_last, rowCount() - 1);
    if (m_changed_first >= 0 && m_changed_first <= last)
        Q_EMIT dataChanged(index(m_changed_first, 0), index(last, ColumnCount - 1), {Qt::DisplayRole});
    m_changed_first = m_changed_last = -1;
    if (m_selection_dirty) {
        m_selection_dirty = false;
        Q_EMIT SelectionChanged();
    }
}

}  // namespace velmora
