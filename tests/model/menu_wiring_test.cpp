#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "app/handlers.h"
#include "app/startup.h"
#include "core/menu_table.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::TestApp;
using Rows = std::vector<std::string>;

TEST(MenuWiring, EveryRowTheWiringLooksUpIsInTheTablesInTheirOrder) {
    TestApp app;
    MenuSet& m = app.ctx.form1.Menus;
    (void)m("MnuMoreNoSuchRow");  // a miss before the wiring is not the wiring's
    EXPECT_EQ(Wire_Handlers(app.ctx), Rows{});

    (void)m("mnu_info2", 7);
    (void)app.ctx.form1.Tray("TrayFavorZ");
    EXPECT_EQ(m.Missed(), (Rows{"MnuMoreNoSuchRow(0)", "mnu_info2(7)"}));
    EXPECT_EQ(app.ctx.form1.Tray.Missed(), Rows{"TrayFavorZ(0)"});

    // Control arrays take their index from their order.
    const std::tuple<const char*, int, const char*> rows[] = {
        {"mnufilecollection", 4, "Έξοδος - Exit"}, {"mnuFileCreateWPL", 3, "Ένωσε - Merge (*.wpl; *.m3u)"},
        {"mnu_info2", 2, "Προγραμματισμός - Programming"}, {"mnu_info2", 3, "Οθόνη Εκκίνησης - Startup Screen"},
        {"mnu_info2", 6, "Email"}, {"MnumoreStar_Active", 1, "Ανενεργά - Disabled"},
        {"MnumoreStar_Colors", 3, "Μεικτό - Mix"}, {"mnuvideoshow", 2, "Αυτόματο - Auto"},
    };
    for (const auto& [name, index, caption] : rows) EXPECT_EQ(m(name, index).Caption(), caption) << name;
    EXPECT_EQ(m("MnuMoreReport").Caption(), "Αναφορές Αρχείων - Files Reports -> [Directory_Media_Player_Report.txt]");
    EXPECT_FALSE(m.Has("mnu_info2", 7) || m.Has("NoSuchMenu"));
    EXPECT_EQ(m("NoSuchMenu").Name(), "<missing>");
}

// The preferences of a run that deleted from the disk, which enable the
// recycle row by its mark: the row still has no handler and stays disabled.
TEST(MenuWiring, RowsWithoutAHandlerAreDisabledWithTheirTipAfterStartUp) {
    testing::Running first;
    first.ctx.settings.Delete_From_Disk = -1;
    Form_QueryUnload(first.ctx);
    testing::Running app(first.folder.Str());
    Form1& f = app.ctx.form1;
    ASSERT_EQ(app.ctx.settings.Delete_From_Disk, -1);

    for (MenuSet* set : {&f.Menus, &f.Tray}) {
        for (const auto& item : set->All()) {
            const std::string row = item->Name() + "(" + std::to_string(item->Index()) + ")";
            if (!item->Children().empty()) {
                EXPECT_TRUE(item->Enabled()) << row << ": a menu opens whatever its rows hold";
            } else if (!item->Click.empty()) {
                EXPECT_NE(item->ToolTip(), kNotBuiltTip) << row << " has a handler";
            } else if (item->Enabled()) {
                EXPECT_TRUE(item->Name().starts_with("mnurepeat") || item->Name() == "mnusystemtraycancel")
                    << row << " does nothing and is offered";
            } else {
                EXPECT_EQ(item->ToolTip(), kNotBuiltTip) << row;
            }
        }
    }
    for (const char* row : {"mnurepeatsleepstart", "mnurepeatsleeprestore", "MnuMoreRandom"})
        EXPECT_TRUE(f.Menus(row).Enabled() && f.Menus(row).ToolTip().empty()) << row;
    EXPECT_TRUE(f.Tray("mnusystemtraycopypaste").Enabled());
    EXPECT_TRUE(f.Tray("mnusystemtraycancel").Enabled() && f.Tray("mnusystemtrayexit").Enabled());
    EXPECT_EQ(f.Menus.Missed(), Rows{});
}

}  // namespace
}  // namespace velmora
