#pragma once
// The catalogue: the nine filter boxes under their captions above the list
// that counts (the filter results or every Track), with the search of the
// list in view above it and the search of the catalogue below, all in the
// results frame (Frame6, a page of its own); and the managing frame
// (Frame12), which runs the copy, move or delete over the results. The
// boxes belong to the managing frame and are disabled with it while a
// filter runs, though they stand with the results they choose.
// It draws Form1's controls and raises their events; the handlers decide.

#include <QObject>
#include <QPointer>

#include <array>
#include <vector>

#include "base/signal.h"
#include "desktop/qt/redraw_pacer.h"

class QGroupBox;
class QLayout;

namespace velmora {

struct Form1;
class CaptionControl;
class ComboBoxWidget;
class PreviewPanesView;
class ResultListView;

class CatalogueView : public QObject {
    Q_OBJECT

public:
    // The widgets are made as children of parent; the window places them.
    CatalogueView(Form1& form, QWidget* parent);

    // Frame12 with its buttons and choices; it shares a page with Frame4.
    QGroupBox& ManagingFrame() const { return *m_managing; }
    // Frame6 with the boxes, the lists and the searches: one page.
    QWidget& ResultsPage() const { return *m_results_page; }

    ComboBoxWidget& FilterBox(int k) const { return *m_boxes.at(k); }
    ResultListView& Results() const { return *m_results; }    // List4
    ResultListView& AllTracks() const { return *m_all; }      // List5
    PreviewPanesView& Panes() const { return *m_panes; }

private:
    QGroupBox* BuildManagingFrame(QWidget* parent);
    QGroupBox* BuildResultsFrame(QWidget* parent);
    QWidget* BuildBoxes(QWidget* parent);
    // A search text with its button beside it; Enter in the text presses it.
    QLayout* SearchRow(int text_index, CaptionControl& button, const QString& hint, QWidget* parent);
    void ApplyBoxesEnabled();

    Form1& m_form;
    QGroupBox* m_managing = nullptr;
    QWidget* m_results_page = nullptr;
    QWidget* m_box_grid = nullptr;
    std::array<ComboBoxWidget*, 9> m_boxes{};
    ResultListView* m_results = nullptr;
    ResultListView* m_all = nullptr;
    PreviewPanesView* m_panes = nullptr;
    QPointer<QWidget> m_focus_before;  // the focus when a filter run disabled the boxes
    // A filter run disables the boxes and enables them again; one shorter
    // than a turn of the loop leaves them as they were, without a flicker.
    RedrawPacer m_boxes_pacer{this, [this] { ApplyBoxesEnabled(); }, 0};
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
