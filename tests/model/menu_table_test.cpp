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

}  // namespace
}  // namespace velmora
