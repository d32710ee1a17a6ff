// The main window over a Form1 of its own, drawn offscreen.

#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QItemSelectionModel>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTabBar>
#include <QTableView>

#include <gtest/gtest.h>

#include <array>
#include <set>

#include "core/forms.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/menu_view.h"
#include "desktop/qt/track_list_model.h"
#include "gui_support.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::Eventually;

// A row: number, class, time, size and bit rate in the mirrors, then the path.
void AddTrack(Form1& form, const std::array<std::string, 6>& row) {
    for (int b = 0; b < 5; ++b) form.List3_0[b].AddItem(row[b]);
    form.List2.AddItem(row[5]);
}

// Every action below the menu, depth first.
void Collect(const QList<QAction*>& actions, std::vector<QAction*>& out) {
    for (QAction* action : actions) {
        out.push_back(action);
        if (action->menu()) Collect(action->menu()->actions(), out);
    }
}

class MainWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        AddTrack(form, {"00001", "S", "00:03:41", "8.45", "320", "/music/Χατζιδάκις/Ο κύκλος.mp3"});
        AddTrack(form, {"00002", "-", "00:04:02", "5.10", "192", "/music/Theodorakis/Zorba.flac"});
        AddTrack(form, {"00003", "A", "01:12:09", "712.3", "1411", "/video/Ταινία & ήχος.mkv"});
        form.Text2[0].SetText("12:00:01 -> Έτοιμο - Done\n12:00:00 -> Φόρτωμα - Loading\n");
        form.Command11.SetPicture("play");
        form.Show();
        ASSERT_TRUE(Eventually([&] { return !Log().isEmpty(); }));
    }
    QString Log() const { return window.findChild<QPlainTextEdit*>("Text2(0)")->toPlainText(); }

    Form1 form;
    int esc_key = 0;
    MainWindow window{form, esc_key};
};

TEST_F(MainWindowTest, DrawsTheFormItsMenusLetterForLetterAndItsPageTabs) {
    testing::Save_Drawing(window, "main_window.png");
    form.Menus("MnuMoreRandom").SetChecked(true);
    QMenu* play = window.MenuActions().ActionFor(form.Menus("MnuPlay"))->menu();
    play->adjustSize();
    testing::Save_Drawing(*play, "play_menu.png");

    EXPECT_EQ(std::tuple(window.isVisible(), window.windowTitle()), std::tuple(true, QStringLiteral("VELMORA II")));
    EXPECT_EQ(window.TrackModel().index(0, TrackListModel::Class).data().toString(), QStringLiteral("S"));
    EXPECT_TRUE(Log().startsWith("12:00:01 -> Έτοιμο"));

    // The bar: seven menus and the one command that stands on it alone.
    QStringList menus, commands;
    for (QAction* action : window.menuBar()->actions()) (action->menu() ? menus : commands) << action->text();
    EXPECT_EQ(menus, QStringList({"Αρχεία - Files", "Αναπαραγωγή - Play", "Προτίμηση - Rating", "Φίλτρα - Filters",
                                  "Περισσότερα - More", "Διακόπτες - Triggers", "Πληροφορίες - About"}));
    EXPECT_EQ(commands, QStringList({"Ελαχιστοποίηση - Minimize"}));

    // One action per row of the table, in the table's order under its parent.
    std::vector<QAction*> all;
    Collect(window.menuBar()->actions(), all);
    EXPECT_EQ(all.size(), form.Menus.All().size());
    std::set<QAction*> seen;
    for (const auto& item : form.Menus.All()) {
        QAction* action = window.MenuActions().ActionFor(*item);
        ASSERT_NE(action, nullptr) << item->Name();
        EXPECT_TRUE(seen.insert(action).second) << item->Name() << " shares its action";
        EXPECT_EQ(action->text().replace("&&", "&").toStdString(), item->Caption()) << item->Name();
        if (!item->Children().empty()) {
            ASSERT_NE(action->menu(), nullptr) << item->Name();
            const QList<QAction*> shown = action->menu()->actions();
            ASSERT_EQ(static_cast<size_t>(shown.size()), item->Children().size()) << item->Name();
            for (size_t i = 0; i < item->Children().size(); ++i)
                EXPECT_EQ(shown[static_cast<int>(i)], window.MenuActions().ActionFor(*item->Children()[i]));
        }
    }

    // The tray popup holds the tray rows, and not the main menu.
    QStringList tray;
    for (QAction* action : window.TrayMenu().actions()) tray << action->text();
    ASSERT_EQ(tray.size(), 14);
    EXPECT_EQ(tray.front(), QStringLiteral("Πάντα σε πρώτο πλάνο - Always on top"));
    EXPECT_EQ(tray.back(), QStringLiteral("Έξοδος - Quit"));

    // Which frame a page shows is the page handler's; the tabs and the page
    // number follow each other both ways.
    auto* tabs = window.findChild<QTabBar*>();
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), 5);
    for (int page = 0; page < 5; ++page)
        EXPECT_TRUE(tabs->tabText(page).contains(" - ")) << "Greek - English: " << page;
    form.MultiPage1.SetValue(2);
    EXPECT_EQ(tabs->currentIndex(), 2);
    EXPECT_EQ(window.findChild<QGroupBox*>("Frame1")->title(), QStringLiteral("Αναζήτηση Πολυμέσων - Multimedia Search"));
    int changes = 0;
    auto sub = form.MultiPage1.Change_.connect([&] { ++changes; });
    tabs->setCurrentIndex(3);
    EXPECT_EQ(std::tuple(form.MultiPage1.Value(), changes), std::tuple(3, 1));
}

TEST_F(MainWindowTest, MenuActionsFollowTheirItemsAndRaiseClick) {
    MenuItem& random = form.Menus("MnuMoreRandom");
    QAction* action = window.MenuActions().ActionFor(random);
    ASSERT_NE(action, nullptr);

    int clicks = 0;
    auto toggle = random.Click.connect([&] {
        ++clicks;
        random.SetChecked(!random.Checked());
    });
    for (int click = 1; click <= 2; ++click) {
        action->trigger();
        EXPECT_EQ(std::tuple(clicks, action->isChecked()), std::tuple(click, click == 1));
    }

    // A handler that leaves the mark alone leaves it alone on screen too.
    toggle.reset();
    random.SetChecked(true);
    auto counter = random.Click.connect([&] { ++clicks; });
    action->trigger();
    EXPECT_EQ(std::tuple(clicks, action->isChecked()), std::tuple(3, true));

    random.SetEnabled(false);
    random.SetCaption("A & B");
    EXPECT_EQ(std::tuple(action->isEnabled(), action->text()), std::tuple(false, QStringLiteral("A && B")));
    form.Menus("MnuMoreMinimize").SetVisible(false);
    EXPECT_FALSE(window.MenuActions().ActionFor(form.Menus("MnuMoreMinimize"))->isVisible());
    form.Tray.TopLevel().front()->SetEnabled(false);
    EXPECT_FALSE(window.TrayMenu().isEnabled());
}

TEST_F(MainWindowTest, SelectionTravelsBothWays) {
    int clicks = 0;
    auto sub = form.List2.Click.connect([&] { ++clicks; });
    QItemSelectionModel& selection = *window.TrackView().selectionModel();
    const QAbstractItemModel& model = window.TrackModel();

    // The user picks rows 1 and 2, row 2 last.
    selection.setCurrentIndex(model.index(2, 0), QItemSelectionModel::NoUpdate);
    selection.select(QItemSelection(model.index(1, 0), model.index(2, TrackListModel::Path)),
                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    ASSERT_TRUE(Eventually([&] { return clicks == 1; })) << "one gesture, one click";
    EXPECT_EQ(std::tuple(form.List2.Selected(0), form.List2.Selected(1), form.List2.Selected(2)),
              std::tuple(false, true, true));
    EXPECT_EQ(form.List2.ListIndex(), 2);

    // The logic moves to row 0 and clears row 2; the view follows without
    // telling it back as a click.
    form.List2.SetSelected(2, false);
    form.List2.SetSelected(0, true);
    form.List2.SetListIndex(0);
    EXPECT_EQ(clicks, 4) << "each change the logic makes raises its own click";
    auto rows = [&] {
        std::set<int> selected;
        for (const QModelIndex& index : selection.selectedRows()) selected.insert(index.row());
        return selected;
    };
    ASSERT_TRUE(Eventually([&] { return selection.currentIndex().row() == 0 && rows() == std::set<int>({0, 1}); }));
    EXPECT_EQ(clicks, 4);

    // A burst of adds is one refill, on the loop's next turn, and it keeps
    // the selection the logic holds.
    int resets = 0;
    QObject::connect(&model, &QAbstractItemModel::modelReset, [&] { ++resets; });
    for (int i = 0; i < 1000; ++i) {
        form.List2.AddItem("/music/" + std::to_string(i) + ".mp3");
        form.List3_0[0].AddItem(std::to_string(i));
    }
    EXPECT_EQ(resets, 0);
    ASSERT_TRUE(Eventually([&] { return resets > 0; }));
    EXPECT_EQ(std::tuple(resets, model.rowCount()), std::tuple(1, 1003));
    EXPECT_EQ(model.index(1002, TrackListModel::Path).data().toString(), QStringLiteral("/music/999.mp3"));
    EXPECT_TRUE(Eventually([&] { return rows() == std::set<int>({0, 1}); }));
}

// The view paints what the logic selects at once, and Qt's own selection
// follows later; a Ctrl+click in between must still act on what is shown.
TEST_F(MainWindowTest, ACtrlClickRightAfterTheLogicSelectedARowTakesItOff) {
    QTableView& view = window.TrackView();
    ASSERT_TRUE(Eventually([&] { return view.isVisible(); }));
    form.List2.SetSelected(1, true);
    // Long enough for the repaint, shorter than the still time before Qt follows.
    Eventually([] { return false; }, 100);
    const QPoint at = view.visualRect(view.model()->index(1, TrackListModel::Path)).center();
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent click(type, at, view.viewport()->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::ControlModifier);
        QApplication::sendEvent(view.viewport(), &click);
    }
    EXPECT_TRUE(Eventually([&] { return !form.List2.Selected(1); })) << "the click toggled the row the user saw selected";
}

TEST_F(MainWindowTest, KeysReachTheLogicAndLongWorkShowsTheHourglass) {
    int plays = 0;
    auto sub = form.Command11.Click.connect([&] { ++plays; });
    auto press = [this](int key) {
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : &window;
        testing::Key(*target, key, key == Qt::Key_Space ? " " : "");
    };
    window.activateWindow();
    window.TrackView().setFocus();
    ASSERT_TRUE(Eventually([&] { return QApplication::focusWidget() == &window.TrackView(); }));

    for (auto [key, code] : {std::pair{Qt::Key_Escape, 27}, {Qt::Key_A, 65}, {Qt::Key_Space, 32}}) {
        press(key);
        EXPECT_EQ(esc_key, code);
    }
    EXPECT_EQ(plays, 1);

    form.Command11.SetEnabled(false);
    press(Qt::Key_Space);
    EXPECT_EQ(plays, 1);

    // Long work disables the window and still stops on Esc. Its hourglass is
    // the application's, and taken back once however often it was asked for.
    form.SetMousePointer(FormState::kHourglass);
    form.SetEnabled(false);
    ASSERT_FALSE(window.isEnabled());
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    press(Qt::Key_Escape);
    EXPECT_EQ(esc_key, 27);
    form.SetCaption("busy");  // another change of the form stacks no second cursor
    form.SetMousePointer(FormState::kDefaultPointer);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, AnEmptyTrackListSaysWhereMediaComeFrom) {
    const QLabel& hint = window.EmptyHint();
    EXPECT_TRUE(hint.isHidden());
    for (ListBox* box : {&form.List2, &form.List3_0[0], &form.List3_0[1], &form.List3_0[2], &form.List3_0[3],
                         &form.List3_0[4]})
        box->Clear();
    EXPECT_TRUE(Eventually([&] { return hint.isVisible(); }));
    EXPECT_TRUE(hint.text().contains("Αναζήτηση") && hint.text().contains("drop"));
    AddTrack(form, {"00001", "S", "00:03:41", "8.45", "320", "/music/one.mp3"});
    EXPECT_TRUE(Eventually([&] { return hint.isHidden(); }));
}

// The window's size, splitters and column widths come back at the next run.
TEST_F(MainWindowTest, LayoutOutlivesTheRun) {
    testing::TempFolder folder;
    QSettings store(QString::fromStdString(folder.Str() + "window.conf"), QSettings::IniFormat);
    window.resize(window.width() + 50, window.height() + 30);
    window.TrackView().horizontalHeader()->resizeSection(0, 123);
    window.SaveLayout(store);
    store.sync();

    Form1 next_form;
    int next_esc = 0;
    MainWindow next{next_form, next_esc};
    next.RestoreLayout(store);
    EXPECT_EQ(next.TrackView().horizontalHeader()->sectionSize(0), 123);
    EXPECT_EQ(next.size(), window.size());
}

}  // namespace
}  // namespace velmora
