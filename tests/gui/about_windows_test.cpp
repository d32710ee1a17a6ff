// The start screen and the slide show, drawn offscreen.

#include <QFile>
#include <QLabel>
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

void Click(QWidget& widget) { testing::Mouse(widget, QPoint(3, 3), {QEvent::MouseButtonPress}); }

TEST(StartScreen, ShowsAtOnceWithItsPictureAndAnyKeyOrClickClosesIt) {
    FrmSplash form;
    SplashWindow splash(form);
    form.Show();
    // Shown and drawn before the loop turns, since the load follows at once.
    EXPECT_TRUE(splash.isVisible());
    EXPECT_GE(splash.width(), 320);
    testing::Key(splash, Qt::Key_Q, QStringLiteral("q"));
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
