// The start screen and the slide show, drawn offscreen.

#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <gtest/gtest.h>

#include <filesystem>

#include "core/forms.h"
#include "desktop/slide_show.h"
#include "desktop/qt/slide_show_window.h"
#include "desktop/qt/splash_window.h"
#include "gui_support.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::Child;

void Press_Key(QWidget& widget) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::NoModifier, QStringLiteral("q"));
    QApplication::sendEvent(&widget, &press);
}

void Click(QWidget& widget) {
    const QPointF at(3, 3);
    QMouseEvent press(QEvent::MouseButtonPress, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
}

TEST(StartScreen, ShowsAtOnceWithItsPictureAndAnyKeyOrClickClosesIt) {
    FrmSplash form;
    SplashWindow splash(form);
    form.Show();
    // Shown and drawn before the loop turns, since the load follows at once.
    EXPECT_TRUE(splash.isVisible());
    EXPECT_GE(splash.width(), 320);
    Press_Key(splash);
    EXPECT_FALSE(form.Visible() || splash.isVisible());

    form.Show();
    Click(splash);
    EXPECT_FALSE(form.Visible() || splash.isVisible());
}

TEST(SlideShow, ShowsTheProgramsPicturesThroughItsFileAndCloses) {
    testing::TempFolder folder;
    Form3 form;
    int links = 0;
    SlideShowWindow slides(form, [&] { return folder.Str(); }, [&] { ++links; });
    form.Show();
    ASSERT_TRUE(slides.isVisible());
    const QLabel& picture = Child<QLabel>(slides, "Picture1");
    for (int id = kFirstSlide; id < kFirstSlide + kSlideCount; ++id)
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/pictures/%1.jpg").arg(id))) << "picture " << id;
    // Each picture shows, and its file goes.
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_FALSE(picture.pixmap().isNull()) << "picture " << slides.Picture();
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / "tmp.jpg"));
        slides.Tick();
    }
    Click(Child<QLabel>(slides, "Label1"));
    EXPECT_EQ(links, 1);
    Child<QPushButton>(slides, "Command1").click();
    EXPECT_FALSE(form.Visible() || slides.isVisible());
}

}  // namespace
}  // namespace velmora
