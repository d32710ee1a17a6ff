// The search page over a whole program on the test doubles: a folder tree
// searched and taken in by the user's hand on the widgets, the page following
// the controls, and files dropped on the window.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QUrl>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/startup.h"
#include "desktop/qt/main_window.h"
#include "desktop/qt/redraw_pacer.h"
#include "gui_support.h"
#include "intake/file_drop.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

using testing::Eventually;

QStringList Rows(const QListWidget& list) {
    QStringList rows;
    for (int i = 0; i < list.count(); ++i) rows << list.item(i)->text();
    return rows;
}

class SearchPage : public ::testing::Test {
protected:
    SearchPage() {
        Form_Load(app.ctx);
        window.resize(1200, 860);
        window.show();
    }

    template <class W>
    W& Widget(const char* name) { return testing::Child<W>(window, name); }

    testing::TestApp app;
    Form1& form = app.ctx.form1;
    MainWindow window{app.ctx.form1, app.ctx.core.Esc_Key};
};

TEST_F(SearchPage, SearchesAndAddsByTheWidgets) {
    const fs::path root = app.folder.Path() / "Μουσική";
    for (const char* file : {"Χατζιδάκις/Ο κύκλος.mp3", "Χατζιδάκις/Live/Ζωντανά.wma", "Video/clip.wmv",
                             "Κείμενα/notes.txt", "ΦΩΝΗ.MP3", "Πρόλογος.mp3"}) {
        fs::create_directories((root / file).parent_path());
        std::ofstream(root / file) << "x";
    }

    form.MultiPage1.SetValue(2);
    form.Dir1.SetPath(app.folder.Str());
    QListWidget& folders = Widget<QListWidget>("Dir1");
    ASSERT_TRUE(Eventually([&] { return folders.findItems("Μουσική", Qt::MatchEndsWith).size() == 1; }));
    Q_EMIT folders.itemActivated(folders.findItems("Μουσική", Qt::MatchEndsWith).front());
    EXPECT_EQ(form.Dir1.Path(), root.string());
    // The way down to the folder, then its subfolders one step further in.
    ASSERT_TRUE(Eventually([&] { return Rows(folders).last().trimmed() == QStringLiteral("Χατζιδάκις"); }));
    const QStringList shown = Rows(folders);
    ASSERT_GE(shown.size(), 5);
    EXPECT_EQ(std::tuple(shown.first(), shown[shown.size() - 4].trimmed(), shown[shown.size() - 3].trimmed()),
              std::tuple(QStringLiteral("/"), QStringLiteral("Μουσική"), QStringLiteral("Video")));
    EXPECT_EQ(shown.last(), QString(shown[shown.size() - 4]).replace("Μουσική", "  Χατζιδάκις"));

    // "All" chooses every type; the file box then shows the folder's media,
    // capitals too.
    Widget<QPushButton>("Command7(0)").click();
    QListWidget& types = Widget<QListWidget>("List3");
    QListWidget& files = Widget<QListWidget>("File1");
    EXPECT_TRUE(Eventually([&] { return Rows(files) == QStringList({"Πρόλογος.mp3", "ΦΩΝΗ.MP3"}); }))
        << Rows(files).join(", ").toStdString();
    EXPECT_TRUE(Eventually([&] { return types.selectedItems().size() == 32; })) << types.selectedItems().size();

    // The subfolder switch searches; the found folders and the counts show.
    Widget<QCheckBox>("Check2").click();
    EXPECT_TRUE(Widget<QCheckBox>("Check2").isChecked() && Widget<QGroupBox>("Frame1").isEnabled());
    EXPECT_EQ(Widget<QGroupBox>("Frame8").title().toStdString(), form.Frame8.Caption());
    const QString base = QString::fromStdString(root.string());
    const QStringList found = {base + "/", base + "/Video/", base + "/Χατζιδάκις/", base + "/Χατζιδάκις/Live/"};
    EXPECT_TRUE(Eventually([&] { return Rows(Widget<QListWidget>("List1")) == found; }));
    EXPECT_TRUE(Eventually([&] { return Widget<QLineEdit>("Text2(2)").text().isEmpty(); }));

    for (auto [page, png] : {std::pair{3, "search_page_folders.png"}, {2, "search_page.png"}}) {
        form.MultiPage1.SetValue(page);
        testing::Save_Drawing(window, png);
    }

    // Adding takes the files of the folder box: the subfolder switch goes off.
    Widget<QPushButton>("Command18(0)").click();
    EXPECT_FALSE(Widget<QCheckBox>("Check2").isChecked());
    EXPECT_EQ(form.List2.ListCount(), 2);
}

TEST_F(SearchPage, FollowsTheControls) {
    form.MultiPage1.SetValue(2);

    // A search disables the frame; the stop button beside it stays in reach.
    form.Frame1.SetEnabled(false);
    form.Command2.SetEnabled(true);
    EXPECT_TRUE(!Widget<QPushButton>("Command18(0)").isEnabled() && Widget<QPushButton>("Command2").isEnabled());
    form.Frame1.SetEnabled(true);
    // A frame that changes on another page stays out of sight.
    form.Frame8.SetCaption("Υποφάκελοι - Subdirectories --> 0");
    EXPECT_TRUE(!Widget<QGroupBox>("Frame8").isVisible() && Widget<QGroupBox>("Frame1").isVisible());

    // A progress text rewritten per row, the loop given way between rows, is
    // redrawn no sooner than the spacing after its last drawing, and shows
    // the last text in the end.
    QPlainTextEdit& progress = Widget<QPlainTextEdit>("Text2(1)");
    QElapsedTimer clock;
    clock.start();
    std::vector<qint64> drawn_at;
    QObject::connect(&progress, &QPlainTextEdit::textChanged, [&] { drawn_at.push_back(clock.elapsed()); });
    int row = 0;
    ASSERT_TRUE(Eventually([&] {
        form.Text2[1].SetText("row " + std::to_string(++row));
        return drawn_at.size() >= 4;
    }));
    const QString last = QString::fromStdString("row " + std::to_string(row));
    EXPECT_TRUE(Eventually([&] { return progress.toPlainText() == last; }));
    for (size_t i = 1; i < drawn_at.size(); ++i)
        EXPECT_GE(drawn_at[i] - drawn_at[i - 1], RedrawPacer::kSpacingMs - 3) << "drawing " << i << " of " << row;

    // A list filled while hidden is not drawn, though the progress beside it
    // is; it is drawn once, when it shows.
    form.MultiPage1.SetValue(3);
    QListWidget& found = Widget<QListWidget>("List1");
    int resets = 0;
    QObject::connect(found.model(), &QAbstractItemModel::rowsInserted, [&] { ++resets; });
    form.List1.SetVisible(false);
    const size_t drawings = drawn_at.size();
    int added = 0;
    ASSERT_TRUE(Eventually([&] {
        form.List1.AddItem("/m/" + std::to_string(added++) + "/");
        form.Text2[1].SetText("folder " + std::to_string(added));
        return drawn_at.size() >= drawings + 2;
    }));
    EXPECT_EQ(std::tuple(found.isVisible(), found.count(), resets), std::tuple(false, 0, 0));
    form.List1.SetVisible(true);
    ASSERT_TRUE(Eventually([&] { return found.count() == added; }));
    EXPECT_EQ(resets, 1);

    form.Command1[0].SetCaption("Κανένας - None");
    form.Frame10.SetVisible(false);
    EXPECT_EQ(std::tuple(Widget<QPushButton>("Command1(0)").text(), Widget<QGroupBox>("Frame10").isVisible()),
              std::tuple(QStringLiteral("Κανένας - None"), false));
}

TEST_F(SearchPage, UserChoicesReachTheControls) {
    form.MultiPage1.SetValue(3);
    form.Check2.SetValue(1);
    form.Frame10.SetVisible(true);
    form.List1.SetEnabled(true);
    form.List1.Assign({"/a/", "/b/", "/c/"});
    QListWidget& found = Widget<QListWidget>("List1");
    ASSERT_TRUE(Eventually([&] { return found.count() == 3; }));

    int clicks = 0;
    auto sub = form.List1.Click.connect([&] { ++clicks; });
    found.setCurrentRow(2, QItemSelectionModel::ClearAndSelect);
    found.setCurrentRow(0, QItemSelectionModel::Select);
    ASSERT_TRUE(Eventually([&] { return clicks == 1; })) << "one gesture, one click";
    EXPECT_EQ(std::tuple(form.List1.Selected(0), form.List1.Selected(1), form.List1.Selected(2)),
              std::tuple(true, false, true));
    EXPECT_EQ(form.List1.ListIndex(), 0);

    // Choosing one option button of a pair clears the other.
    Widget<QRadioButton>("Option1_1").click();
    EXPECT_EQ(std::tuple(form.Option1_0.Value(), form.Option1_1.Value()), std::tuple(0, 1));
    Widget<QRadioButton>("Option1_0").click();
    EXPECT_EQ(std::tuple(form.Option1_0.Value(), form.Option1_1.Value()), std::tuple(1, 0));
    EXPECT_FALSE(Widget<QRadioButton>("Option1_1").isChecked());

    // "Invert" is told to its handler, which flips every row.
    Widget<QPushButton>("Command1(1)").click();
    EXPECT_TRUE(Eventually([&] { return found.selectedItems().size() == 1 && found.item(1)->isSelected(); }));

    // The drive box moves the folder box to the chosen drive.
    form.Drive1.Assign({"/", app.folder.Path().string()});
    QComboBox& drives = Widget<QComboBox>("Drive1");
    ASSERT_EQ(drives.count(), 2);
    drives.setCurrentIndex(1);
    Q_EMIT drives.activated(1);
    EXPECT_EQ(std::tuple(form.Drive1.Path(), form.Dir1.Path()),
              std::tuple(app.folder.Path().string(), app.folder.Path().string()));
}

TEST_F(SearchPage, DroppedLocalFilesJoinTheCollection) {
    std::vector<std::string> dropped;
    window.SetDropHandler([&](const std::vector<std::string>& names) {
        dropped = names;
        Accept_Dropped_Files(app.ctx, names);
    });
    auto entered = [&](const QMimeData& data) {
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        return enter.isAccepted();
    };
    QMimeData remote, files;
    remote.setUrls({QUrl("https://example.org/song.mp3")});
    EXPECT_FALSE(entered(remote));
    files.setUrls({QUrl::fromLocalFile("/μουσική/Ο κύκλος.mp3"), QUrl("https://example.org/x.mp3"),
                   QUrl::fromLocalFile("/m/notes.txt"), QUrl::fromLocalFile("/m/clip #1.avi")});
    EXPECT_TRUE(entered(files));
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    EXPECT_TRUE(dropped.empty()) << "taken in when the loop next turns";
    ASSERT_TRUE(Eventually([&] { return !dropped.empty(); }));
    EXPECT_EQ(dropped, std::vector<std::string>({"/μουσική/Ο κύκλος.mp3", "/m/notes.txt", "/m/clip #1.avi"}));
    EXPECT_EQ(form.List2.Items(), std::vector<std::string>({"/μουσική/Ο κύκλος.mp3", "/m/clip #1.avi"}));
}

}  // namespace
}  // namespace velmora
