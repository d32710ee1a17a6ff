#pragma once
// Menus drawn from the menu items: one QAction per item (a submenu's own
// action for an item with children), following its caption, check mark,
// tip, enabled and visible state. Choosing a row raises the item's Click; opening
// a submenu raises the Click of its item first, as the classic menus do, so
// the logic can set the check marks before they are seen.

#include <QObject>

#include <unordered_map>
#include <vector>

#include "base/signal.h"

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

namespace velmora {

class MenuItem;

class MenuView : public QObject {
    Q_OBJECT

public:
    explicit MenuView(QObject* parent = nullptr) : QObject(parent) {}

    // Adds the items, with their children, to the bar or the menu.
    void Populate(QMenuBar& bar, const std::vector<MenuItem*>& items);
    void Populate(QMenu& menu, const std::vector<MenuItem*>& items);
    // A popup of the item's children whose enabled state follows the item.
    QMenu* BuildPopup(MenuItem& item, QWidget* parent);

    // The action drawn for the item, or null.
    QAction* ActionFor(const MenuItem& item) const;
    // The item an action draws, or null.
    const MenuItem* ItemFor(const QAction* action) const;

protected:
    // Shows the tip of a row of the bar itself.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* Build(MenuItem& item, QWidget* parent);
    void Follow(MenuItem& item, QAction* action);

    std::unordered_map<const MenuItem*, QAction*> m_actions;
    std::unordered_map<const QAction*, const MenuItem*> m_items;
    std::vector<Subscription> m_subscriptions;
};

// The caption as a menu shows it: '&' would start a mnemonic there.
QString MenuText(const std::string& caption);

}  // namespace velmora
