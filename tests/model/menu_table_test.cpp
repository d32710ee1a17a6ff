#include "desktop/menu_table.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(MenuTable, ControlArraysTakeTheirIndexFromTheirOrder) {
    MenuSet menus(MainMenuRows());
    EXPECT_EQ(menus("mnufilecollection", 4).Caption(), "Έξοδος - Exit");
    EXPECT_EQ(menus("mnuFileCreateWPL", 3).Caption(), "Ένωσε - Merge (*.wpl; *.m3u)");
    EXPECT_EQ(menus("mnu_info2", 2).Caption(), "Προγραμματισμός - Programming");
    EXPECT_EQ(menus("mnu_info2", 3).Caption(), "Οθόνη Εκκίνησης - Startup Screen");
    EXPECT_EQ(menus("mnu_info2", 6).Caption(), "Email");
    EXPECT_EQ(menus("MnumoreStar_Active", 1).Caption(), "Ανενεργά - Disabled");
    EXPECT_EQ(menus("MnumoreStar_Colors", 3).Caption(), "Μεικτό - Mix");
    EXPECT_EQ(menus("mnuvideoshow", 2).Caption(), "Αυτόματο - Auto");
    EXPECT_EQ(menus("MnuMoreReport").Caption(),
              "Αναφορές Αρχείων - Files Reports -> [Directory_Media_Player_Report.txt]");
    EXPECT_FALSE(menus.Has("mnu_info2", 7));
    EXPECT_FALSE(menus.Has("NoSuchMenu"));
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
    EXPECT_EQ(menus("MnuMoreFavor").Children().size(), 7u);
    EXPECT_EQ(menus("mnufilecollection", 3).Children().size(), 11u);
}

TEST(MenuTable, TrayMenuRows) {
    MenuSet tray(TrayMenuRows());
    ASSERT_EQ(tray.TopLevel().size(), 1u);
    const auto& rows = tray.TopLevel().front()->Children();
    ASSERT_EQ(rows.size(), 14u);
    EXPECT_EQ(rows.front()->Name(), "MnuSystemTrayTop");
    EXPECT_EQ(rows.back()->Caption(), "Έξοδος - Quit");
    EXPECT_EQ(tray("MnuSystemTray_Favor").Children().size(), 7u);
}

}  // namespace
}  // namespace velmora
