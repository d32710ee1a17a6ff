#pragma once
// One list box as an item model whose rows are read from the box when they
// are drawn, never copied: the catalogue's lists hold tens of thousands of
// rows of some five hundred characters, and its value boxes thousands of
// values, refilled at once by the logic.
//
// The model follows the box's items with one reset per redraw, however many
// changes the logic made in between, and none while the box is hidden: the
// logic hides a list while it fills it, and shows it when it is done.

#include <QAbstractListModel>

#include <cstdint>
#include <vector>

#include "base/signal.h"
#include "desktop/qt/redraw_pacer.h"

namespace velmora {

class ListBox;

class ListBoxModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit ListBoxModel(ListBox& box, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    ListBox& Box() const { return m_box; }

Q_SIGNALS:
    // The box's selection or list index changed, or the rows were reset
    // (which drops a view's selection); a view takes them from the box.
    void SelectionChanged();

private:
    void Flush();

    ListBox& m_box;
    int m_rows = 0;              // the rows the views know of, as of the last reset
    uint64_t m_shown_revision = 0;  // the box's items as of the last reset or row redraw
    static constexpr size_t kMostRowsRedrawn = 64;
    std::vector<int> m_changed_rows;  // rows whose text alone changed since
    bool m_contents_dirty = false;
    bool m_selection_dirty = false;
    RedrawPacer m_pacer{this, [this] { Flush(); }};
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
