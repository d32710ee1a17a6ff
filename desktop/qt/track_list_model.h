#pragma once
// The Track list as one table: the five mirror boxes (number, class, time,
// size, bit rate) and the path box side by side, row for row. The boxes
// change many times while a long loop runs; the table is reset at most once
// per turn of the event loop, when the loop gives way.

#include <QAbstractTableModel>

#include <array>
#include <vector>

#include "base/signal.h"

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
    // follows it once per turn of the loop.
    void SelectionChanged();

private:
    void ScheduleFlush();
    void Flush();

    std::array<ListBox*, ColumnCount> m_boxes;
    std::vector<Subscription> m_subscriptions;
    static constexpr size_t kMostRowsRedrawn = 64;
    std::vector<int> m_changed_rows;  // rows whose text alone changed since the last flush
    bool m_contents_dirty = false;
    bool m_selection_dirty = false;
    bool m_flush_pending = false;
};

}  // namespace velmora
