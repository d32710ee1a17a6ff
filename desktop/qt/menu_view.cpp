#include "desktop/qt/menu_view.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "core/controls.h"

namespace velmora {

namespace {

void Apply(QAction& action, const MenuItem& item) {
    action.setSeparator(item.IsSeparator());
    action.setText(MenuText(item.Caption()));
    action.setToolTip(QString::fromStdString(item.ToolTip()));
    action.setEnabled(item.Enabled());
    action.setVisible(item.Visible());
    if (!action.menu()) {
        // Only a row that shows a mark reserves the look of a check box.
        action.setCheckable(item.Checked());
        action.setChecked(item.Checked());
    }
}

}  // namespace

QString MenuText(const std::string& caption) {
    return QString::fromStdString(caption).replace('&', QLatin1String("&&"));
}

void MenuView::Populate(QMenuBar& bar, const std::vector<MenuItem*>& items) {
    for (MenuItem* item : items) bar.addAction(Build(*item, &bar));
}

void MenuView::Populate(QMenu& menu, const std::vector<MenuItem*>& items) {
    for (MenuItem* item : items) menu.addAction(Build(*item, &menu));
}

QMenu* MenuView::BuildPopup(MenuItem& item, QWidget* parent) {
    auto* popup = new QMenu(parent);
    Populate(*popup, item.Children());
    m_actions[&item] = popup->menuAction();
    popup->setEnabled(item.Enabled());
    connect(popup, &QMenu::aboutToShow, this, [&item] { item.Click.emit(); });
    m_subscriptions.push_back(item.Changed.connect([popup, &item](Change) { popup->setEnabled(item.Enabled()); }));
    return popup;
}

QAction* MenuView::ActionFor(const MenuItem& item) const {
    auto it = m_actions.find(&item);
    return it == m_actions.end() ? nullptr : it->second;
}

QAction* MenuView::Build(MenuItem& item, QWidget* parent) {
    QAction* action = nullptr;
    if (!item.Children().empty()) {
        auto* menu = new QMenu(parent);
        Populate(*menu, item.Children());
        connect(menu, &QMenu::aboutToShow, this, [&item] { item.Click.emit(); });
        action = menu->menuAction();
    } else {
        action = new QAction(parent);
        connect(action, &QAction::triggered, this, [action, &item] {
            item.Click.emit();
            // The logic owns the mark; undo the toggle Qt made on its own.
            Apply(*action, item);
        });
    }
    Follow(item, action);
    return action;
}

void MenuView::Follow(MenuItem& item, QAction* action) {
    m_actions[&item] = action;
    Apply(*action, item);
    m_subscriptions.push_back(item.Changed.connect([action, &item](Change) { Apply(*action, item); }));
}

}  // namespace velmora
