#pragma once
// The Track list's selection as the window shows it. The rows the logic
// selects are painted straight from the path box; Qt's own selection model
// is brought in step only when the user is about to use it, or once the box
// has been still for a moment. In shuffled order the played rows stay
// selected as thousands of scattered ranges, and Qt compares the old ranges
// with the new at every change: kept in step at each step of a walk, the
// cost grew with the square of the Collection.

#include <QObject>
#include <QTimer>

#include <vector>

class QTableView;

namespace velmora {

class ListBox;

class TrackSelectionMirror : public QObject {
    Q_OBJECT

public:
    // `syncing` is raised while Qt's model is set from the box, so that its
    // change is not taken for the user's.
    TrackSelectionMirror(QTableView& view, const ListBox& paths, bool& syncing);

    // The box's selection changed: the rows are repainted now, Qt's model
    // follows later.
    void Changed();
    // Brings Qt's model in step now, if it is behind.
    void Settle();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTableView& m_view;
    const ListBox& m_paths;
    bool& m_syncing;
    bool m_behind = false;
    std::vector<bool> m_held;  // the rows Qt's model holds selected
    QTimer m_still;
};

}  // namespace velmora
