#pragma once
// The menu bar and the tray menu as one table: every row with its name,
// caption and depth. Rows of a control array share a name; their index is
// the order in which they stand.

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/controls.h"

namespace velmora {

struct MenuRow {
    int depth;            // 0: a menu of the bar (or the tray menu itself)
    const char* name;
    const char* caption;
};

std::span<const MenuRow> MainMenuRows();
std::span<const MenuRow> TrayMenuRows();

// The menu items of a window, built from the table, found by name and index.
class MenuSet {
public:
    explicit MenuSet(std::span<const MenuRow> rows);
    MenuSet(const MenuSet&) = delete;
    MenuSet& operator=(const MenuSet&) = delete;

    // The row of that name and index. A missing one is a programming error:
    // it is noted in Missed() and answers a detached placeholder, so that
    // the program goes on; the wiring checks Missed() and stops the start.
    MenuItem& operator()(std::string_view name, int index = 0);
    bool Has(std::string_view name, int index = 0) const;
    // Every row asked for that the table lacks, as "name(index)", in order.
    const std::vector<std::string>& Missed() const { return m_missed; }
    // The menus of depth 0, in order, each with its children.
    const std::vector<MenuItem*>& TopLevel() const { return m_top; }
    const std::vector<std::unique_ptr<MenuItem>>& All() const { return m_items; }

private:
    std::vector<std::unique_ptr<MenuItem>> m_items;
    std::vector<MenuItem*> m_top;
    std::unordered_map<std::string, std::vector<MenuItem*>> m_by_name;
    MenuItem m_missing{"<missing>", 0};
    std::vector<std::string> m_missed;
};

}  // namespace velmora
