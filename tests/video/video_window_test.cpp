// The video window on a real display (Xvfb with Mesa's software OpenGL):
// a generated test-pattern film plays in it through libmpv's render API, and
// closing the window goes on in the main window's engine at the same second.
#include <QImage>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>

#include "app/startup.h"
#include "core/app_context.h"
#include "desktop/qt/mpv_picture.h"
#include "desktop/qt/picture_engines.h"
#include "desktop/qt/video_window.h"
#include "playback/transport.h"
#include "playback/video_window.h"
#include "platform/lazy_engine.h"
#include "platform/media_reader.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "support/recording_shell.h"
#include "support/scripted_dialogs.h"
#include "support/test_app.h"
#include "support/track_rows.h"
#include "../gui/gui_support.h"

namespace velmora {
namespace {

using testing::Eventually;

// The colours that cover at least the share least of a picture, each
// channel cut to eight steps.
std::set<int> Main_Colours(const QImage& picture, double least) {
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    std::map<int, double> share;
    const double each = 1.0 / (image.width() * image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y);
            share[(qRed(p) >> 5) << 6 | (qGreen(p) >> 5) << 3 | (qBlue(p) >> 5)] += each;
        }
    std::set<int> main;
    for (const auto& [colour, part] : share)
        if (part >= least) main.insert(colour);
    return main;
}

struct RealPlayer {
    testing::TempFolder folder;
    QtEventLoop loop;
    testing::ScriptedDialogs dialogs;
    testing::RecordingShell shell;
    MpvEngine player{loop, {.ao = "null", .vo = "null", .wid = 0}};
    LazyEngine reader{[this] { return std::make_unique<MpvEngine>(loop, MpvEngine::Options{"null", "null", 0}); },
                      ReadMediaItem};
    MpvEngine video{loop, Video_Options("null")};
    MpvEngine second{loop, {.ao = "null", .vo = "null", .wid = 0}};
    AppContext ctx{Ports{loop, dialogs, shell, player, reader, video, second}};
};

TEST(VideoWindowOnScreen, TheFilmPlaysInTheWindowAndClosingGoesOnInAudio) {
    RealPlayer app;
    const std::string film = app.folder.Str() + "pattern.mkv";
    const std::string still = app.folder.Str() + "still.ppm";
    const std::string make = "ffmpeg -loglevel error -y -f lavfi -i testsrc=size=320x240:rate=25 -f lavfi -i sine "
                             "-t 20 -c:v mpeg4 -q:v 2 -c:a mp2 '" + film + "' && ffmpeg -loglevel error -y -ss 3 -i '" +
                             film + "' -frames:v 1 '" + still + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);

    app.ctx.program_folder = app.folder.Str();
    Form_Load(app.ctx);
    testing::Fill_Tracks(app.ctx, {{film, 20.0}});
    VideoWindow window(app.ctx.form2);
    ASSERT_TRUE(OpenGL_Available()) << "Mesa's OpenGL on the virtual display";
    window.Attach(app.video.Handle());

    Command3_Click(app.ctx, 0);
    ASSERT_TRUE(Eventually([&] { return app.player.playState() == PS_Playing; }, 10000));
    mnuvideoshow_Click(app.ctx, 0);
    ASSERT_TRUE(Eventually([&] { return app.video.playState() == PS_Playing && window.Frames() > 5; }, 10000));
    EXPECT_EQ(app.player.URL(), "") << "the sound comes from one engine";

    const QImage first = window.Picture().grab().toImage();
    Eventually([] { return false; }, 500);
    const QImage second = window.Picture().grab().toImage();
    ASSERT_EQ(first.size(), QSize(320, 240));
    EXPECT_NE(first, second) << "the pattern moves";
    // The bars of the pattern are the film's colours: each that covers a
    // twentieth of a frame covers a good part of the window's picture too.
    const std::set<int> film_colours = Main_Colours(QImage(QString::fromStdString(still)), 0.05);
    const std::set<int> shown = Main_Colours(second, 0.02);
    ASSERT_GE(film_colours.size(), 5u);
    for (int colour : film_colours) EXPECT_TRUE(shown.contains(colour)) << "colour " << colour;

    const double at = app.video.currentPosition().value_or(-1);
    window.close();
    ASSERT_TRUE(Eventually([&] { return app.player.playState() == PS_Playing; }, 10000));
    EXPECT_NEAR(app.player.currentPosition().value_or(-1), at, 0.5);
    EXPECT_EQ(std::tuple(app.ctx.table.Video_Mode, app.ctx.form2.Visible(), app.video.URL()), std::tuple(0, false, ""));
}

}  // namespace
}  // namespace velmora
