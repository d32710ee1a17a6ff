// The catalogue's page over a Form1 of its own, drawn offscreen: the boxes
// and lists following the controls, and the user's hand on the widgets
// reaching the controls as one event per gesture.

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFontInfo>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <array>

#include "core/forms.h"
#include "desktop/qt/catalogue_view.h"
#include "desktop/qt/combo_box_widget.h"
#include "desktop/qt/list_box_model.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/result_list_view.h"
#include "gui_support.h"

namespace velmora {
namespace {

using testing::Eventually;

// The fields of a row as the catalogue pads them, each cut or filled with
// blanks to its width and closed by a bar.
constexpr std::array<int, 11> kWidths{45, 20, 9, 10, 7, 15, 20, 50, 4, 60, 256};

std::string Row(const QString& first, const QString& second, const std::array<QString, 11>& fields) {
    QString row = first + "|" + second + "|";
    for (size_t i = 0; i < fields.size(); ++i) row += fields[i].leftJustified(kWidths[i], ' ', true) + "|";
    return row.toStdString();
}

std::string Track_Row(int number, const std::array<QString, 11>& fields) {
    const QString n = QStringLiteral("%1").arg(number, 6, 10, QLatin1Char('0'));
    return Row(n, n, fields);
}

std::vector<std::string> Head_Rows() {
    std::array<QString, 11> rule;
    for (size_t i = 0; i < rule.size(); ++i) rule[i] = QString(kWidths[i], QLatin1Char('~'));
    return {Row("FILTER", " TOTAL",
                {"          ΤΙΤΛΟΣ - TITLE", "ΠΡΟΤΙΜΗΣΗ - FAVORITE", "HH:MM:SS", "ΜΕΓ - SIZE", "KBPS",
                 "ΕΙΔΟΣ - GENRE", "ΚΑΛΛΙΤΕΧΝΗΣ - ARTIST", "        ΆΛΜΠΟΥΜ - ALBUM", "Ε:Y",
                 "         ΑΡΧΕΙΟ - FILE", "         ΔΙΑΔΡΟΜΗ - PATH"}),
            Row("~~~~~~", "~~~~~~", rule)};
}

// Some Tracks with long, empty and Greek fields.
std::vector<std::string> Greek_Rows() {
    std::vector<std::string> rows = Head_Rows();
    rows.push_back(Track_Row(1, {"Ο κύκλος της ζωής", "Κλάση Υ΄ - Class S", "00:03:41", "8.45Mb", "320Kbps",
                                 "Έντεχνο", "Μάνος Χατζιδάκις", "Ο Μεγάλος Ερωτικός", "1972",
                                 "Ο κύκλος της ζωής.mp3", "/home/eleni/Μουσική/Χατζιδάκις/Ο Μεγάλος Ερωτικός"}));
    rows.push_back(Track_Row(2, {"Zorba's Dance (Sirtaki) - Original Soundtrack Recording 1964",
                                 "Ασημείωτα - Unmarked", "00:04:02", "5.10Mb", "192Kbps", "Soundtrack",
                                 "Mikis Theodorakis", "Zorba the Greek", "1964", "Zorba.flac",
                                 "/home/eleni/Μουσική/Theodorakis"}));
    rows.push_back(Track_Row(3, {"", "Κλάση Α΄ - Class A", "01:12:09", "1.02Gb", "1411Kbps", "", "", "", "",
                                 "Ταινία & ήχος.mkv", "/home/eleni/Βίντεο"}));
    rows.push_back(Track_Row(4, {"Άρνηση", "Κλάση Β΄ - Class B", "00:02:58", "4.07Mb", "256Kbps", "Λαϊκό",
                                 "Γρηγόρης Μπιθικώτσης", "Επιφάνεια", "1961", "Άρνηση.mp3",
                                 "/home/eleni/Μουσική/Θεοδωράκης/Επιφάνεια"}));
    return rows;
}

class CatalogueViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        form.Show();
        form.MultiPage1.SetValue(4);
        window.resize(1280, 800);
        ASSERT_TRUE(Eventually([&] { return window.isVisible(); }));
    }

    template <class W>
    W& Widget(const char* name) { return testing::Child<W>(window, name); }
    QListView& List(const char* name) { return Widget<QListView>(name); }

    Form1 form;
    int esc_key = 0;
    MainWindow window{form, esc_key};
};

// A row's middle, where it stands on screen.
QPoint Row_Point(QListView& list, int row) { return list.visualRect(list.model()->index(row, 0)).center(); }

void Press_Row(QListView& list, int row) {
    const QPoint at = Row_Point(list, row);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, list.viewport()->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &event);
    }
}

// A key as the focused widget gets it, through the window's key filter.
void Press_Key(QWidget& widget, int key, const QString& text = {}) {
    widget.setFocus();
    ASSERT_TRUE(Eventually([&] { return QApplication::focusWidget() == &widget; }));
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &event);
}

TEST_F(CatalogueViewTest, AFullListIsDrawnOnceWhenShown) {
    std::vector<std::string> rows = Head_Rows();
    for (int i = 1; rows.size() < 32768; ++i)
        rows.push_back(Track_Row(i, {QStringLiteral("Τραγούδι %1").arg(i), "Ασημείωτα - Unmarked", "00:03:00",
                                     "4.00Mb", "192Kbps", "Λαϊκό", QStringLiteral("Καλλιτέχνης %1").arg(i % 5000),
                                     "Άλμπουμ", "1970", "x.mp3", "/m"}));
    QListView& all = List("List5");
    int resets = 0;
    QObject::connect(all.model(), &QAbstractItemModel::modelReset, [&] { ++resets; });

    // The logic hides the lists while it fills them: nothing is drawn then.
    form.List4.SetVisible(false);
    form.List5.SetVisible(false);
    QElapsedTimer clock;
    clock.start();
    form.List5.Assign(rows);
    for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
    EXPECT_EQ(std::tuple(resets, all.isVisible()), std::tuple(0, false));
    form.List5.SetVisible(true);
    all.viewport()->repaint();
    std::printf("32768 rows shown %lld ms after the fill began\n", static_cast<long long>(clock.elapsed()));
    EXPECT_EQ(std::tuple(resets, all.model()->rowCount(), all.isVisible()), std::tuple(1, 32768, true));
    EXPECT_EQ(all.model()->index(32767, 0).data().toString().toStdString(), rows.back());
    // Long rows scroll sideways, never cut short.
    EXPECT_GT(all.horizontalScrollBar()->maximum(), 0);
    EXPECT_TRUE(QFontInfo(all.font()).fixedPitch());

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
              std::tuple(2, QString::fromStdString(form.Combo4_0[6].List(2))));
    form.Combo4_0[6].SetText("Χατζ");
    EXPECT_EQ(artists.currentText(), QStringLiteral("Χατζ"));
    // Every box emptied: the texts go, the class captions stay listed.
    for (ComboBox& box : form.Combo4_0) box.SetListIndex(-1);
    form.Combo4_0[6].Clear();
    auto& classes = Widget<QComboBox>("Combo4_0(0)");
    ASSERT_TRUE(Eventually([&] { return artists.count() == 0; }));
    EXPECT_EQ(std::tuple(artists.currentText(), classes.currentText(), classes.count()),
              std::tuple(QString(), QString(), 6));

    // A filter run disables the boxes and the managing frame with them.
    form.Frame12.SetEnabled(false);
    EXPECT_TRUE(Eventually([&] { return !artists.isEnabled() && !classes.isEnabled(); }));
    EXPECT_FALSE(Widget<QPushButton>("Command16(0)").isEnabled());
    form.Frame12.SetEnabled(true);
    EXPECT_TRUE(Eventually([&] { return artists.isEnabled() && Widget<QPushButton>("Command16(0)").isEnabled(); }));

    // The list that counts is the one shown.
    form.List5.SetVisible(false);
    form.List4.SetVisible(true);
    EXPECT_TRUE(List("List4").isVisible() && !List("List5").isVisible());
    EXPECT_EQ(Widget<QPushButton>("Command16(1)").toolTip().toStdString(), form.Command16[1].ToolTip());
}

TEST_F(CatalogueViewTest, GesturesReachTheControlsOnceEach) {
    int picks = 0, edits = 0, row_clicks = 0, next_track = 0, plays = 0;
    std::vector<Subscription> subs;
    subs.push_back(form.Combo4_0[6].Click.connect([&] { ++picks; }));
    subs.push_back(form.Combo4_0[6].Change_.connect([&] { ++edits; }));
    subs.push_back(form.List5.Click.connect([&] { ++row_clicks; }));
    subs.push_back(form.Command3[0].Click.connect([&] { ++next_track; }));
    subs.push_back(form.Command11.Click.connect([&] { ++plays; }));
    form.Combo4_0[6].Assign({"Άλκηστις", "Μάνος"});
    form.List4.SetVisible(false);
    form.List5.Assign(Greek_Rows());
    auto& artists = Widget<QComboBox>("Combo4_0(6)");
    QListView& all = List("List5");
    ASSERT_TRUE(Eventually([&] { return artists.count() == 2 && all.model()->rowCount() == 6; }));

    // The arrow picks the next value; typed letters, a blank too, are the text.
    Press_Key(artists, Qt::Key_Down);
    EXPECT_EQ(std::tuple(picks, form.Combo4_0[6].ListIndex(), form.Combo4_0[6].Text()),
              std::tuple(1, 0, std::string("Άλκηστις")));
    for (const QString letter : {"Σ", " ", "Ω"}) Press_Key(artists, letter.at(0).unicode(), letter);
    EXPECT_EQ(std::tuple(edits, picks, form.Combo4_0[6].Text(), plays),
              std::tuple(3, 1, std::string("ΆλκηστιςΣ Ω"), 0));

    // A click on a row is one Click, at that row; again on the same row, another.
    Press_Row(all, 3);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 1; }));
    EXPECT_EQ(std::tuple(form.List5.ListIndex(), form.List5.Selected(3), form.List5.SelCount()), std::tuple(3, true, 1));
    Press_Row(all, 3);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 2; }));
    // Down moves to the next row; Right scrolls the rows and leaves the Track playing.
    Press_Key(all, Qt::Key_Down);
    ASSERT_TRUE(Eventually([&] { return row_clicks == 3; }));
    EXPECT_EQ(std::tuple(form.List5.ListIndex(), form.List5.Selected(3), form.List5.Selected(4)),
              std::tuple(4, false, true));
    Press_Key(all, Qt::Key_Right);
    EXPECT_EQ(std::tuple(all.horizontalScrollBar()->value() > 0, next_track), std::tuple(true, 0));
    QApplication::processEvents();
    EXPECT_EQ(row_clicks, 3);

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
}

TEST_F(CatalogueViewTest, DrawsGreekRowsInColumns) {
    form.Combo4_0[4].Assign({"Έντεχνο", "Λαϊκό", "Soundtrack"});
    form.Combo4_0[6].Assign({"Μάνος Χατζιδάκις", "Mikis Theodorakis", "Γρηγόρης Μπιθικώτσης"});
    form.Combo4_0[6].SetListIndex(0);
    form.List4.SetVisible(false);
    form.List5.Assign(Greek_Rows());
    form.List5.SetSelected(3, true);
    QListView& all = List("List5");
    ASSERT_TRUE(Eventually([&] { return all.model()->rowCount() == 6; }));
    window.resize(1100, 700);  // as the program opens
    testing::Save_Drawing(window, "catalogue_page.png");
    testing::Save_Drawing(window.Catalogue().ResultsPage(), "catalogue_results.png");
    form.MultiPage1.SetValue(1);
    testing::Save_Drawing(window.Catalogue().ManagingFrame(), "catalogue_managing.png");
}

}  // namespace
}  // namespace velmora
