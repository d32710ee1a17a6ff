// The snooze window drawn offscreen over a started program: it comes and
// goes with Form5, and the hand on its calendar, boxes, spins and check
// boxes reaches the logic.

#include <QCalendarWidget>
#include <QCheckBox>
#include <QLineEdit>
#include <QScrollBar>

#include <gtest/gtest.h>

#include "app/startup.h"
#include "desktop/qt/snooze_window.h"
#include "gui_support.h"
#include "support/test_app.h"
#include "timed/snooze_window.h"

namespace velmora {
namespace {

TEST(SnoozeWindowView, FollowsForm5AndTheHandReachesTheLogic) {
    testing::TestApp app;
    Form_Load(app.ctx);
    app.ctx.settings.Trigger_Date = "24/03/2024";
    SnoozeWindow window(app.ctx.form5);
    window.SetCloseHandler([&] { form5::Form_QueryUnload(app.ctx); });
    app.ctx.form1.Menus("mnutimesnooze").Click.emit();
    ASSERT_TRUE(window.isVisible());
    EXPECT_EQ(testing::Child<QCalendarWidget>(window, "Form5.Calendar1").selectedDate(), QDate(2024, 3, 24));

    auto& minutes = testing::Child<QLineEdit>(window, "Form5.Text1(1)");
    minutes.selectAll();
    for (char digit : {'1', '2', '3'}) testing::Key(minutes, Qt::Key_0 + (digit - '0'), QString(QChar(digit)));
    EXPECT_EQ(std::tuple(app.ctx.form5.Text1[1].Text(), minutes.text().toStdString()), std::tuple("00", "00"));
    testing::Child<QScrollBar>(window, "Form5.VScroll1(3)").triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(app.ctx.form5.Text1[3].Text(), "1");
    testing::Child<QCheckBox>(window, "Form5.Check2").click();
    EXPECT_EQ(app.ctx.settings.Trigger_Mode, 2);
    EXPECT_FALSE(testing::Child<QCheckBox>(window, "Form5.Check1").isChecked());
    app.loop.Advance(1000);
    testing::Save_Drawing(window, "snooze_window.png");

    window.close();
    EXPECT_FALSE(window.isVisible() || app.ctx.form5.Timer1.Enabled());
    Form_QueryUnload(app.ctx);
}

}  // namespace
}  // namespace velmora
