#pragma once
// A combo box control drawn as an editable drop-down: its items read from the
// box as they show (a value box may hold thousands), its edit text and its
// chosen row kept as the box holds them. Choosing a row sets the box's list
// index, which puts the row's text into the box and raises Click; typing
// sets the box's text and raises Change_. What either means, the handlers
// decide.

#include <QComboBox>

#include <vector>

#include "base/signal.h"

namespace velmora {

class ComboBox;
class ListBoxModel;

class ComboBoxWidget : public QComboBox {
    Q_OBJECT

public:
    ComboBoxWidget(ComboBox& box, QWidget* parent);

    ListBoxModel& Model() const { return *m_model; }

private:
    void Apply();

    ComboBox& m_box;
    ListBoxModel* m_model;
    bool m_syncing = false;  // the widget is being set from the box
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
