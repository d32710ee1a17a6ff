// The catalogue's page drawn offscreen: the boxes and lists following the
// controls, the user's hand on the widgets reaching the controls as one
// event per gesture, and a whole program on the test doubles played from a
// filter result.

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFontInfo>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>

#include <gtest/gtest.h>

#include <array>

#include "app/startup.h"
#include "catalogue/filter_building.h"
#include "core/forms.h"
#include "desktop/qt/catalogue_view.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/track_list_model.h"
#include "gui_support.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::Eventually;

// A Track's row as the catalogue pads it: each field cut or filled with
// blanks to its width, closed by a bar.
std::string Row(QString row, const std::array<QString, 11>& fields) {
    static constexpr std::array<int, 11> kWidths{45, 20, 9, 10, 7, 15, 20, 50, 4, 60, 256};
    for (size_t i = 0; i < fields.size(); ++i) row += fields[i].leftJustified(kWidths[i], ' ', true) + "|";
    return row.toStdString();
}

std::string Track_Row(int number, const std::array<QString, 11>& fields) {
    const QString n = QStringLiteral("%1").arg(number, 6, 10, QLatin1Char('0'));
    return Row(n + "|" + n + "|", fields);
}

// A head row, then Tracks with long, empty and Greek fields.
std::vector<std::string> Greek_Rows() {
    return {Row("FILTER| TOTAL|", {"          ΤΙΤΛΟΣ - TITLE", "ΠΡΟΤΙΜΗΣΗ - FAVORITE", "HH:MM:SS", "ΜΕΓ - SIZE", "KBPS",
                          "ΕΙΔΟΣ - GENRE", "ΚΑΛΛΙΤΕΧΝΗΣ - ARTIST", "        ΆΛΜΠΟΥΜ - ALBUM", "Ε:Y",
                          "         ΑΡΧΕΙΟ - FILE", "         ΔΙΑΔΡΟΜΗ - PATH"}),
            Track_Row(1, {"Ο κύκλος της ζωής", "Κλάση Υ΄ - Class S", "00:03:41", "8.45Mb", "320Kbps", "Έντεχνο",
                          "Μάνος Χατζιδάκις", "Ο Μεγάλος Ερωτικός", "1972", "Ο κύκλος της ζωής.mp3",
                          "/home/eleni/Μουσική/Χατζιδάκις/Ο Μεγάλος Ερωτικός"}),
            Track_Row(2, {"Zorba's Dance (Sirtaki) - Original Soundtrack Recording 1964", "Ασημείωτα - Unmarked",
                          "00:04:02", "5.10Mb", "192Kbps", "Soundtrack", "Mikis Theodorakis", "Zorba the Greek",
                          "1964", "Zorba.flac", "/home/eleni/Μουσική/Theodorakis"}),
            Track_Row(3, {"", "Κλάση Α΄ - Class A", "01:12:09", "1.02Gb", "1411Kbps", "", "", "", "",
                          "Ταινία & ήχος.mkv", "/home/eleni/Βίντεο"})};
}

void Press_Row(QAbstractItemView& view, int row) {
    testing::Mouse(*view.viewport(), view.visualRect(view.model()->index(row, 0)).center(),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
}

// A key as the focused widget gets it, through the window's key filter.
void Press_Key(QWidget& widget, int key, const QString& text = {}) {
    widget.setFocus();
    ASSERT_TRUE(Eventually([&] { return QApplication::focusWidget() == &widget; }));
    testing::Key(widget, key, text);
}

class CatalogueViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        form.Show();
        form.MultiPage1.SetValue(4);
        form.Frame6.SetVisible(true);  // as the page's handler does, which this bare form has not wired
        ASSERT_TRUE(Eventually([&] { return window.isVisible(); }));
    }

    template <class W>
    W& Widget(const char* name) { return testing::Child<W>(window, name); }
    QListView& List(const char* name) { return Widget<QListView>(name); }

    Form1 form;
    int esc_key = 0;
    MainWindow window{form, esc_key};
};

TEST_F(CatalogueViewTest, AFullListIsDrawnOnceWhenShown) {
    std::vector<std::string> rows = Greek_Rows();
    for (int i = 4; rows.size() < 32768; ++i)
        rows.push_back(Track_Row(i, {QStringLiteral("Τραγούδι %1").arg(i), "Ασημείωτα - Unmarked", "00:03:00",
                                     "4.00Mb", "192Kbps", "Λαϊκό", QStringLiteral("Καλλιτέχνης %1").arg(i % 5000),
                                     "Άλμπουμ", "1970", "x.mp3", "/m"}));
    QListView& all = List("List5");
    int resets = 0;
    QObject::connect(all.model(), &QAbstractItemModel::modelReset, [&] { ++resets; });

    // The logic hides the lists while it fills them: nothing is drawn then.
    form.List4.SetVisible(false);
    form.List5.SetVisible(false);
    form.List5.Assign(rows);
    for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
    EXPECT_EQ(std::tuple(resets, all.isVisible()), std::tuple(0, false));
    form.List5.SetVisible(true);
    all.viewport()->repaint();
    EXPECT_EQ(std::tuple(resets, all.model()->rowCount(), all.isVisible()), std::tuple(1, 32768, true));
    EXPECT_EQ(all.model()->index(32767, 0).data().toString().toStdString(), rows.back());

    // A row rewritten alone redraws that row; rows added while shown are
    // taken in one reset per turn of the loop.
    int redrawn = -1;
    QObject::connect(all.model(), &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& top) { redrawn = top.row(); });
    form.List5.SetList(7, rows[7] + "*");
    ASSERT_TRUE(Eventually([&] { return redrawn == 7; }));
    for (int i = 0; i < 100; ++i) form.List5.AddItem("extra");
    ASSERT_TRUE(Eventually([&] { return all.model()->rowCount() == 32868; }));
    EXPECT_EQ(resets, 2);
}

TEST_F(CatalogueViewTest, WidgetsFollowTheControls) {
    auto& artists = Widget<QComboBox>("Combo4_0(6)");
    form.Combo4_0[6].Assign({"Μάνος Χατζιδάκις", "mikis Theodorakis", "Άλκηστις Πρωτοψάλτη"});
    ASSERT_TRUE(Eventually([&] { return artists.count() == 3; }));
    EXPECT_EQ(artists.itemText(0), QStringLiteral("mikis Theodorakis"));
    form.Combo4_0[6].SetListIndex(2);
    EXPECT_EQ(std::tuple(artists.currentIndex(), artists.currentText()),
              std::tuple(2, Q(form.Combo4_0[6].List(2))));
    form.Combo4_0[6].SetText("Χατζ");
    EXPECT_EQ(artists.currentText(), QStringLiteral("Χατζ"));
    // Every box emptied: the texts go, the class captions stay listed.
    for (ComboBox& box : form.Combo4_0) box.SetListIndex(-1);
    form.Combo4_0[6].Clear();
    auto& classes = Widget<QComboBox>("Combo4_0(0)");
    ASSERT_TRUE(Eventually([&] { return artists.count() == 0; }));
    EXPECT_EQ(std::tuple(artists.currentText(), classes.currentText(), classes.count()),
              std::tuple(QString(), QString(), 6));

    // A filter run disables the boxes and the managing frame with them; the
    // box typed into has the focus again after it.
    artists.setFocus();
    form.Frame12.SetEnabled(false);
    EXPECT_TRUE(Eventually([&] { return !artists.isEnabled() && !classes.isEnabled(); }));
    EXPECT_FALSE(Widget<QPushButton>("Command16(0)").isEnabled());
    form.Frame12.SetEnabled(true);
    EXPECT_TRUE(Eventually([&] { return artists.isEnabled() && Widget<QPushButton>("Command16(0)").isEnabled(); }));
    EXPECT_EQ(QApplication::focusWidget(), &artists);
}

TEST_F(CatalogueViewTest, GesturesReachTheControlsOnceEach) {
    int picks = 0, edits = 0, row_clicks = 0, mouse_downs = 0, next_track = 0, plays = 0;
    std::vector<Subscription> subs;
    subs.push_back(form.Combo4_0[6].Click.connect([&] { ++picks; }));
    subs.push_back(form.Combo4_0[6].Change_.connect([&] { ++edits; }));
    subs.push_back(form.List5.Click.connect([&] { ++row_clicks; }));
    int pressed_row = 2;
    subs.push_back(form.List5.MouseDown.connect([&] {
        ++mouse_downs;
        EXPECT_EQ(form.List5.ListIndex(), pressed_row) << "the index is set first";
    }));
    subs.push_back(form.Command3[0].Click.connect([&] { ++next_track; }));
    subs.push_back(form.Command11.Click.connect([&] { ++plays; }));
    form.Combo4_0[6].Assign({"Άλκηστις", "Μάνος"});
    form.List4.SetVisible(false);
    form.List5.Assign(Greek_Rows());
    auto& artists = Widget<QComboBox>("Combo4_0(6)");
    QListView& all = List("List5");
    ASSERT_TRUE(Eventually([&] { return artists.count() == 2 && all.model()->rowCount() == 4; }));

    // Each field starts at the same place on screen in every row: the width
    // of what stands before it is the same, Greek letters and accents too.
    EXPECT_TRUE(QFontInfo(all.font()).fixedPitch());
    const QFontMetrics metrics = all.fontMetrics();
    for (int field_start : {14, 60, 81, 91, 102, 110, 126, 147, 198, 203, 264}) {
        const int x = metrics.horizontalAdvance(all.model()->index(0, 0).data().toString().left(field_start));
        for (int row = 1; row < 4; ++row)
            EXPECT_EQ(metrics.horizontalAdvance(all.model()->index(row, 0).data().toString().left(field_start)), x)
                << "row " << row << ", field at " << field_start;
    }
    // The rows are not cut to the list's width: they scroll sideways.
    EXPECT_GE(all.horizontalScrollBar()->maximum() + all.viewport()->width(), metrics.horizontalAdvance(QString(520, 'x')));

    // The arrow picks the next value; typed letters, a blank too, are the text.
    Press_Key(artists, Qt::Key_Down);
    EXPECT_EQ(std::tuple(picks, form.Combo4_0[6].ListIndex(), form.Combo4_0[6].Text()),
              std::tuple(1, 0, std::string("Άλκηστις")));
    for (const QString letter : {"Σ", " ", "Ω"}) Press_Key(artists, letter.at(0).unicode(), letter);
    EXPECT_EQ(std::tuple(edits, picks, form.Combo4_0[6].Text(), plays),
              std::tuple(3, 1, std::string("ΆλκηστιςΣ Ω"), 0));

    // A click on a row is one Click and one MouseDown, at that row; again on
    // the same row, another pair.
    Press_Row(all, 2);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 1; }));
    EXPECT_EQ(std::tuple(form.List5.ListIndex(), form.List5.Selected(2), form.List5.SelCount(), mouse_downs),
              std::tuple(2, true, 1, 1));
    Press_Row(all, 2);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 2; }));
    // Down moves to the next row, a Click without a MouseDown; Right scrolls
    // the rows and leaves the Track playing.
    Press_Key(all, Qt::Key_Down);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 3; }));
    EXPECT_EQ(std::tuple(form.List5.ListIndex(), form.List5.Selected(2), form.List5.Selected(3), mouse_downs),
              std::tuple(3, false, true, 2));
    Press_Key(all, Qt::Key_Right);
    EXPECT_EQ(std::tuple(all.horizontalScrollBar()->value() > 0, next_track), std::tuple(true, 0));
    QApplication::processEvents();
    EXPECT_EQ(row_clicks, 3);
    // Enter goes to the Track of the row in hand, as a click would.
    pressed_row = 3;
    Press_Key(all, Qt::Key_Return, "\r");
    EXPECT_EQ(std::tuple(form.List5.ListIndex(), mouse_downs), std::tuple(3, 3));

    // Enter in a search text presses its button.
    for (auto [text, button] : {std::pair{"Text2(3)", &form.Command6[0]}, {"Text2(4)", &form.Command17}}) {
        int presses = 0;
        auto sub = button->Click.connect([&] { ++presses; });
        Press_Key(Widget<QLineEdit>(text), Qt::Key_Return, "\r");
        EXPECT_EQ(presses, 1) << text;
    }
    Widget<QRadioButton>("Option3(2)").click();
    EXPECT_EQ(std::tuple(form.Option3[0].Value(), form.Option3[1].Value(), form.Option3[2].Value()),
              std::tuple(0, 0, -1));
    testing::Save_Drawing(window, "catalogue_page.png");
    testing::Save_Drawing(window.Catalogue().ResultsPage(), "catalogue_results.png");
}

// The whole program on the test doubles, by the user's hand: an artist
// chosen in its box narrows the results, a click on a result finds its
// Track in the Track list, and a double click there plays it.
TEST(CatalogueStartUp, AChosenArtistsTrackPlaysFromItsResult) {
    testing::TestApp app;
    app.ctx.program_folder = app.folder.Str();
    MainWindow window(app.ctx.form1, app.ctx.core.Esc_Key);
    Form_Load(app.ctx);
    const std::string dir = (app.folder.Path() / "Μουσική").string();
    const std::vector<testing::TrackRow> rows{{dir + "/Ο κύκλος.mp3", 221, 0, 8.45, 320},
                                              {dir + "/Zorba.mp3", 242, 0, 5.1, 192},
                                              {dir + "/Άρνηση.mp3", 178, 0, 4.07, 256}};
    testing::Make_Files(app, rows);
    testing::Fill_Tracks(app.ctx, rows);
    const char* artists[] = {"Μάνος Χατζιδάκις", "Mikis Theodorakis", "Μάνος Χατζιδάκις"};
    const char* titles[] = {"Ο κύκλος", "Zorba's Dance", "Άρνηση"};
    for (int i = 0; i < 3; ++i) app.ctx.table.Artist[i] = artists[i], app.ctx.table.Title[i] = titles[i];
    Remake_Filters(app.ctx);
    // Playing goes on by the button where the last run stopped; then the user
    // turns to the catalogue.
    auto& next = testing::Child<QAbstractButton>(window, "Command3(0)");
    ASSERT_TRUE(Eventually([&] { return next.isEnabled(); }));
    next.click();
    ASSERT_EQ(app.player.URL(), rows[0].path);
    window.findChild<QTabBar*>()->setCurrentIndex(4);

    auto& box = testing::Child<QComboBox>(window, "Combo4_0(6)");
    ASSERT_TRUE(Eventually([&] { return box.count() == 2; }));
    box.showPopup();
    Press_Row(*box.view(), box.findText("Μάνος Χατζιδάκις"));
    EXPECT_EQ(box.currentText(), QStringLiteral("Μάνος Χατζιδάκις"));

    // Tracks 1 and 3 behind the head rows, in the list shown in place of
    // every Track's; the second result goes to row 2.
    QListView& results = testing::Child<QListView>(window, "List4");
    ASSERT_TRUE(Eventually([&] { return results.isVisible() && results.model()->rowCount() == 4; }));
    EXPECT_FALSE(testing::Child<QListView>(window, "List5").isVisible());
    Press_Row(results, 3);
    ASSERT_TRUE(Eventually([&] { return app.ctx.form1.List2.ListIndex() == 2; }));

    QTableView& tracks = window.TrackView();
    ASSERT_TRUE(Eventually([&] { return tracks.currentIndex().row() == 2; }));
    testing::Mouse(*tracks.viewport(), tracks.visualRect(tracks.model()->index(2, TrackListModel::Path)).center(),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                    QEvent::MouseButtonRelease});
    EXPECT_EQ(std::tuple(app.player.URL(), app.ctx.table.Current_Track), std::tuple(rows[2].path, 2));
    testing::Save_Drawing(window, "catalogue_start_up.png");
    Form_QueryUnload(app.ctx);
}

}  // namespace
}  // namespace velmora
