#pragma once
// The Track list as one table: the five mirror boxes (number, class, time,
// size, bit rate) and the path box side by side, row for row. The boxes
// change many times while a long loop runs; the table follows them at most
// once per redraw, a few times a second.

#include <QAbstractTableModel>

#include <array>
#include <vector>

#include "base/signal.h"
#include "desktop/qt/redraw_pacer.h"

namespace velmora {

struct Form1;
class ListBox;

class TrackListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Number, Class, Time, Size, BitRate, Path, ColumnCount };

    explicit TrackListModel(Form1& form, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // The box behind a column.
    ListBox& Box(int column) const { return *m_boxes[column]; }

Q_SIGNALS:
    // The path box's selection, list index or top row changed; the view
    // follows it once per redraw.
    void SelectionChanged();

private:
    void Flush();

    std::array<ListBox*, ColumnCount> m_boxes;
    std::vector<Subscription> m_subscriptions;
    // The rows whose text alone changed since the last flush, as one span:
    // the view repaints only what of it shows.
    int m_changed_first = -1, m_changed_last = -1;
    bool m_contents_dirty = false;
    bool m_selection_dirty = false;
    RedrawPacer m_pacer;
};

}  // namespace velmora
