#include "desktop/qt/menu_view.h"

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolTip>

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
    // A bar shows no tips of its own; the command that stands on it alone
    // has one to tell while it is not available.
    bar.installEventFilter(this);
}

void MenuView::Populate(QMenu& menu, const std::vector<MenuItem*>& items) {
    // The tip of a row says why it is disabled.
    menu.setToolTipsVisible(true);
    for (MenuItem* item : items) menu.addAction(Build(*item, &menu));
}

bool MenuView::eventFilter(QObject* watched, QEvent* event) {
    auto* bar = qobject_cast<QMenuBar*>(watched);
    if (bar == nullptr || event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const MenuItem* item = ItemFor(bar->actionAt(help->pos()));
    if (item == nullptr || item->ToolTip().empty()) return QObject::eventFilter(watched, event);
    QToolTip::showText(help->globalPos(), QString::fromStdString(item->ToolTip()), bar);
    return true;
}

QMenu* MenuView::BuildPopup(MenuItem& item, QWidget* parent) {
    auto* popup = new QMenu(parent);
    Populate(*popup, item.Children());
    m_actions[&item] = popup->menuAction();
    m_items[popup->menuAction()] = &item;
    popup->setEnabled(item.Enabled());
    connect(popup, &QMenu::aboutToShow, this, [&item] { item.Click.emit(); });
    m_subscriptions.push_back(item.Changed.connect([popup, &item](Change) { popup->setEnabled(item.Enabled()); }));
    return popup;
}

QAction* MenuView::ActionFor(const MenuItem& item) const {
    auto it = m_actions.find(&item);
    return it == m_actions.end() ? nullptr : it->second;
}

const MenuItem* MenuView::ItemFor(const QAction* action) const {
    auto it = m_items.find(action);
    return it == m_items.end() ? nullptr : it->second;
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
    m_items[action] = &item;
    Apply(*action, item);
    m_subscriptions.push_back(item.Changed.connect([action, &item](Change) { Apply(*action, item); }));
}

}  // namespace velmora
