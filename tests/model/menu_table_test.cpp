#include "core/menu_table.h"

#include <gtest/gtest.h>

#include <tuple>

namespace velmora {
namespace {

TEST(MenuTable, ControlArraysTakeTheirIndexFromTheirOrder) {
    MenuSet menus(MainMenuRows());
    const std::tuple<const char*, int, const char*> rows[] = {
        {"mnufilecollection", 4, "Έξοδος - Exit"}, {"mnuFileCreateWPL", 3, "Ένωσε - Merge (*.wpl; *.m3u)"},
        {"mnu_info2", 2, "Προγραμματισμός - Programming"}, {"mnu_info2", 3, "Οθόνη Εκκίνησης - Startup Screen"},
        {"mnu_info2", 6, "Email"}, {"MnumoreStar_Active", 1, "Ανενεργά - Disabled"},
        {"MnumoreStar_Colors", 3, "Μεικτό - Mix"}, {"mnuvideoshow", 2, "Αυτόματο - Auto"},
    };
    for (const auto& [name, index, caption] : rows) EXPECT_EQ(menus(name, index).Caption(), caption) << name;
    EXPECT_EQ(menus("MnuMoreReport").Caption(),
              "Αναφορές Αρχείων - Files Reports -> [Directory_Media_Player_Report.txt]");
    EXPECT_FALSE(menus.Has("mnu_info2", 7) || menus.Has("NoSuchMenu"));
    EXPECT_EQ(menus("NoSuchMenu").Name(), "<missing>");
}

TEST(MenuTable, TheBarHasItsMenusAndEveryRowSitsUnderOne) {
    MenuSet menus(MainMenuRows());
    std::vector<std::string> bar;
    for (MenuItem* m : menus.TopLevel()) bar.push_back(m->Name());
    EXPECT_EQ(bar, (std::vector<std::string>{"mnuFile", "MnuPlay", "mnufavorites", "MnuFilters",
                                             "MnuMoreMinimize", "MnuMore", "mnutimetrig", "mnuinfo"}));
    // Every row is reachable from the bar exactly once.
    size_t reached = 0;
    std::function<void(const MenuItem*)> walk = [&](const MenuItem* m) {
        ++reached;
        for (const MenuItem* c : m->Children()) walk(c);
    };
    for (MenuItem* m : menus.TopLevel()) walk(m);
    EXPECT_EQ(reached, menus.All().size());
    EXPECT_EQ(std::tuple(menus("MnuMoreFavor").Children().size(), menus("mnufilecollection", 3).Children().size()),
              std::tuple(size_t{7}, size_t{11}));
}

TEST(MenuTable, TrayMenuRows) {
    MenuSet tray(TrayMenuRows());
    ASSERT_EQ(tray.TopLevel().size(), 1u);
    const auto& rows = tray.TopLevel().front()->Children();
    ASSERT_EQ(rows.size(), 14u);
    EXPECT_EQ(std::tuple(rows.front()->Name(), rows.back()->Caption()),
              std::tuple("MnuSystemTrayTop", "Έξοδος - Quit"));
    EXPECT_EQ(tray("MnuSystemTray_Favor").Children().size(), 7u);
}

}  // namespace
}  // namespace velmora
