#pragma once
// A list of the catalogue's fixed-width rows (the filter results, every
// Track): drawn in a monospaced font so that the fields of all rows stand in
// columns, scrolled sideways, read from the box row by row as they show.
// A click, or a move with the keys, stores the selection the gesture made in
// the box and tells it as one Click with the list index at the current row,
// and a click of the mouse as MouseDown after it; the handlers decide what
// either means.

#include <QListView>

#include <vector>

#include "base/signal.h"

namespace velmora {

class ListBox;
class ListBoxModel;

class ResultListView : public QListView {
    Q_OBJECT

public:
    ResultListView(ListBox& box, QWidget* parent);

    ListBoxModel& Model() const { return *m_model; }

protected:
    // Left and right scroll the long rows sideways.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ApplySelection();
    void ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void Gesture();

    ListBox& m_box;
    ListBoxModel* m_model;
    bool m_syncing = false;        // the view is being set from the box
    bool m_click_pending = false;  // a gesture's Click waits for the loop's turn
    bool m_mouse_pending = false;  // and the gesture was a click of the mouse
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
