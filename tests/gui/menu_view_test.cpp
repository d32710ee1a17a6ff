// The menus over a program brought up on the test doubles: a row with no
// behaviour yet is drawn disabled and tells why where the pointer rests.

#include <QAction>
#include <QApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolTip>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "app/handlers.h"
#include "app/startup.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/menu_view.h"
#include "gui_support.h"
#include "support/test_app.h"

namespace velmora {
namespace {

// The tip the widget shows for a pointer resting on the action; "-" when it
// shows none, since a hidden tip keeps its last text.
template <class MenuOrBar>
std::string TipAt(MenuOrBar& widget, QAction* action) {
    if constexpr (std::is_same_v<MenuOrBar, QMenu>) widget.adjustSize();  // a menu finds its rows by its size
    const QRect place = widget.actionGeometry(action);
    QToolTip::showText(widget.mapToGlobal(QPoint()), QStringLiteral("-"), &widget);
    QHelpEvent help(QEvent::ToolTip, place.center(), widget.mapToGlobal(place.center()));
    QApplication::sendEvent(&widget, &help);
    return QToolTip::text().toStdString();
}

TEST(MenuView, RowsNotBuiltYetAreDisabledAndSaySo) {
    testing::TestApp app;
    MainWindow window(app.ctx.form1, app.ctx.core.Esc_Key);
    Form_Load(app.ctx);
    Form1& f = app.ctx.form1;
    const MenuView& menus = window.MenuActions();
    const std::string tip = kNotBuiltTip;

    QMenu& lists = *menus.ActionFor(f.Menus("MnuMore"))->menu();
    QAction* create = menus.ActionFor(f.Menus("MnuMoreOnTop"));
    // Every row is built now; one the logic marks as not built shows so.
    f.Menus("MnuMoreOnTop").SetEnabled(false);
    f.Menus("MnuMoreOnTop").SetToolTip(tip);
    EXPECT_FALSE(create->isEnabled());
    EXPECT_EQ(TipAt(lists, create), tip);

    // The command on the bar itself is built: offered, and without that tip.
    QMenuBar& bar = *window.menuBar();
    QAction* minimize = menus.ActionFor(f.Menus("MnuMoreMinimize"));
    EXPECT_TRUE(minimize->isEnabled());
    EXPECT_NE(TipAt(bar, minimize), tip);

    // The sleep entries do nothing on purpose and stay offered.
    EXPECT_TRUE(menus.ActionFor(f.Menus("mnurepeatsleepstart"))->isEnabled());

    // A row that gets its behaviour shows it at once.
    f.Menus("MnuMoreOnTop").SetEnabled(true);
    f.Menus("MnuMoreOnTop").SetToolTip("");
    EXPECT_TRUE(create->isEnabled());
    EXPECT_EQ(TipAt(lists, create), "-");

    // For people to look at: the Collection menu and the bar.
    QMenu& collection = *menus.ActionFor(f.Menus("mnufilecollection", 0))->menu();
    collection.adjustSize();
    testing::Save_Drawing(collection, "collection_menu.png");
    testing::Save_Drawing(bar, "menu_bar.png");
    Form_QueryUnload(app.ctx);
}

}  // namespace
}  // namespace velmora
