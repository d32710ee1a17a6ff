#include "desktop/qt/list_box_model.h"

#include "core/controls.h"
#include "desktop/qt/control_look.h"

namespace velmora {

ListBoxModel::ListBoxModel(ListBox& box, QObject* parent)
    : QAbstractListModel(parent), m_box(box), m_rows(box.ListCount()), m_shown_revision(box.Revision()) {
    m_subscriptions.push_back(box.Changed.connect([this](Change kind) {
        switch (kind) {
            case Change::Contents: {
                // A combo box tells a new edit text as a change of contents
                // too; its items are the same while the revision is.
                if (m_box.Revision() == m_shown_revision) return;
                m_shown_revision = m_box.Revision();
                const int row = m_box.Last_Item_Changed();
                if (row >= 0 && !m_contents_dirty && m_changed_rows.size() < kMostRowsRedrawn)
                    m_changed_rows.push_back(row);
                else
                    m_contents_dirty = true;
                break;
            }
            case Change::Selection:
            case Change::Index: m_selection_dirty = true; break;
            case Change::Look:
                // Shown again: the debt of the time it was hidden is paid at
                // once, before the list is drawn with rows it no longer has.
                if (m_box.Visible() && (m_contents_dirty || m_selection_dirty || !m_changed_rows.empty())) Flush();
                return;
        }
        m_pacer.Request();
    }));
}

int ListBoxModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rows; }

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows) return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole) return Q(m_box.List(index.row()));
    return {};
}

void ListBoxModel::Flush() {
    if (!m_box.Visible()) return;
    if (m_contents_dirty) {
        m_contents_dirty = false;
        m_changed_rows.clear();
        beginResetModel();
        m_rows = m_box.ListCount();
        endResetModel();
        m_selection_dirty = true;
    }
    for (int row : m_changed_rows)
        if (row < m_rows) Q_EMIT dataChanged(index(row), index(row), {Qt::DisplayRole});
    m_changed_rows.clear();
    if (m_selection_dirty) {
        m_selection_dirty = false;
        Q_EMIT SelectionChanged();
    }
}

}  // namespace velmora
