// The transport area over a whole program on the test doubles: a Collection
// playing, drawn offscreen, and the user's hand on its buttons, sliders and keys.

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

#include "app/startup.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/transport_view.h"
#include "playback/transport.h"
#include "gui_support.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

const char* const kNames[] = {"01 - Μάνος Χατζιδάκις - Ο κύκλος.mp3", "02 - Theodorakis - Zorba.flac",
                              "03 - Σαββόπουλος - Ντιρλαντά.mp3", "04 - Vangelis - Chariots of Fire.ogg",
                              "05 - Ξαρχάκος - Το τρένο.mp3", "06 - Loreena McKennitt - The Mummers' Dance.mp3"};

// Some rated, some not: the class rows then have something to show.
const int kClasses[] = {5, 4, 0, 3, 2, 0};

// A started program with six files of four minutes, the window over it.
class PlayingWindow : public ::testing::Test {
protected:
    PlayingWindow() {
        Form_Load(app.ctx);
        std::vector<testing::TrackRow> rows;
        for (int i = 0; i < 6; ++i)
            rows.push_back({(app.folder.Path() / "Μουσική" / kNames[i]).string(), 240.0 + 7 * i, kClasses[i], 8.41, 320});
        testing::Make_Files(app, rows);
        testing::Fill_Tracks(app.ctx, rows);
        app.ctx.settings.Random_Order = 0;
    }
    ~PlayingWindow() override { Form_QueryUnload(app.ctx); }

    // Three Tracks played, the fourth a minute in.
    void PlayIntoTheFourth() {
        window.activateWindow();
        for (int i = 0; i < 4; ++i) {
            Command3_Click(app.ctx, 0);
            app.loop.Advance(i < 3 ? 3'000 : 65'000);
        }
    }

    void Press(QWidget& target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        // The window shows itself enabled again on the loop's turn after a recount.
        ASSERT_TRUE(testing::Eventually([&] { return window.isEnabled(); }));
        target.setFocus();
        ASSERT_TRUE(testing::Eventually([&] { return QApplication::focusWidget() == &target; }));
        testing::Key(target, key, key == Qt::Key_Space ? " " : "", modifiers);
        app.loop.Advance(500);
    }

    template <class W>
    W& Find(const char* name) { return testing::Child<W>(window, name); }

    testing::TestApp app;
    MainWindow window{app.ctx.form1, app.ctx.core.Esc_Key};
};

TEST_F(PlayingWindow, DrawsWhatPlaysAndWhereItStands) {
    window.resize(1180, 640);
    PlayIntoTheFourth();
    const Form1& f = app.ctx.form1;
    ASSERT_EQ(app.ctx.table.Current_Track, 3);
    testing::Save_Drawing(window, "playing.png");

    // Each box shows its control, as the clock left it.
    for (const auto& box : f.Text5)
        EXPECT_EQ(Find<QLineEdit>(box.Name().c_str()).text().toStdString(), box.Text()) << box.Name();
    EXPECT_EQ(std::tuple(Find<QSlider>("Slider1").maximum(), Find<QSlider>("Slider1").value(),
                         Find<QSlider>("HScroll1").value()),
              std::tuple(261, f.Slider1.Value(), f.HScroll1.Value()));
    EXPECT_NEAR(f.Slider1.Value(), 65, 1) << "the slider followed the clock";
    EXPECT_EQ(Find<QLineEdit>("Text3").text().toStdString(), f.Text3.Text());
    for (const auto* label : {&f.Label2[0], &f.Label2[1], &f.Label3[0], &f.Label3[1], &f.Label6})
        EXPECT_EQ(Find<QLabel>(label->Name().c_str()).text().toStdString(), label->Caption()) << label->Name();

    // The path with the file's name marked, counted in characters though the name is Greek.
    PathLabel& path = Find<PathLabel>("Text6");
    EXPECT_EQ(path.Text().toStdString(), f.Text6.Text());
    EXPECT_EQ(path.Marked(), QString::fromUtf8(kNames[3]));
    app.ctx.form1.Text6.SetText("/α/β/γδ.mp3");
    app.ctx.form1.Text6.SetSelection(5, 6);
    EXPECT_EQ(path.Marked(), QStringLiteral("γδ.mp3"));

    // A control the logic hides or disables takes its widget with it.
    app.ctx.form1.Command15[3].SetVisible(false);
    app.ctx.form1.Command3[0].SetEnabled(false);
    EXPECT_TRUE(Find<QToolButton>("Command15(3)").isHidden() && !Find<QToolButton>("Command3(0)").isEnabled());
    EXPECT_EQ(window.windowTitle().toStdString(), f.Caption());
}

TEST_F(PlayingWindow, KeysSlidersAndTheListReachTheLogicButKeysNotWhileTyping) {
    PlayIntoTheFourth();
    const TrackTable& t = app.ctx.table;
    QTableView& list = window.TrackView();

    Press(list, Qt::Key_Left);
    EXPECT_EQ(t.Current_Track, 2);
    Press(list, Qt::Key_Right);
    EXPECT_EQ(t.Current_Track, 4) << "in serial order forward is the walk, not the history";
    for (int state : {PS_Paused, PS_Playing}) {
        Press(list, Qt::Key_Space);
        EXPECT_EQ(app.player.playState(), state);
    }

    // Ctrl and the arrow: by the step count through the history.
    app.ctx.form1.Text3.SetText("2");
    Press(list, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(t.Current_Track, 1);

    // In the step count box the keys edit the text.
    QLineEdit& steps = Find<QLineEdit>("Text3");
    const int before = t.Current_Track;
    Press(steps, Qt::Key_Right);
    Press(steps, Qt::Key_Left, Qt::ControlModifier);
    Press(steps, Qt::Key_Space);
    EXPECT_EQ(std::tuple(t.Current_Track, app.player.playState()), std::tuple(before, int{PS_Playing}));

    QSlider& position = Find<QSlider>("Slider1");
    position.setValue(200);
    EXPECT_EQ(app.ctx.form1.Slider1.Value(), 200);
    EXPECT_NEAR(app.player.currentPosition().value_or(-1), 200, 0.5);
    EXPECT_EQ(std::tuple(app.ctx.form1.Slider1.ToolTip(), position.toolTip().toStdString()),
              std::tuple(app.player.currentPositionString(), app.player.currentPositionString()));
    // The clock writing the slider does not seek.
    app.loop.Advance(2'000);
    EXPECT_NEAR(app.player.currentPosition().value_or(-1), 202, 0.5);

    Find<QSlider>("HScroll1").setValue(1000);
    EXPECT_EQ(std::tuple(app.ctx.settings.Volume_Step, app.player.volume()), std::tuple(50, 50));

    steps.selectAll();
    steps.insert(QStringLiteral("7"));
    EXPECT_EQ(app.ctx.settings.Backtrack_Steps, 7);
    steps.selectAll();
    steps.insert(QStringLiteral("x"));
    EXPECT_EQ(steps.text(), QStringLiteral("3")) << "the model puts a bad count back";

    // A double click plays the row (the handler's own test says how).
    const QModelIndex row = list.model()->index(5, 0);
    list.setCurrentIndex(row);
    Q_EMIT list.doubleClicked(row);
    EXPECT_TRUE(testing::Eventually([&] { return app.player.URL() == app.ctx.form1.List2.List(5); }));
    EXPECT_EQ(t.Current_Track, 5);
}

}  // namespace
}  // namespace velmora
