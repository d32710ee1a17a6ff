// The player on a private session bus (dbus-run-session), steered by
// playerctl as a desktop widget or a media key would steer it.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <string>

#include "desktop/qt/media_player_bus.h"
#include "model/playback_fixture.h"

namespace velmora {
namespace {

using testing::Player;

// playerctl's answer; the bus object answers from this thread, so the loop
// runs while playerctl waits.
std::string Playerctl(const QStringList& args) {
    QProcess process;
    QEventLoop wait;
    QObject::connect(&process, &QProcess::finished, &wait, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &wait, &QEventLoop::quit);
    QTimer::singleShot(10000, &wait, &QEventLoop::quit);
    process.start(QStringLiteral("playerctl"), QStringList{QStringLiteral("--player=velmora")} + args);
    wait.exec();
    EXPECT_EQ(process.exitCode(), 0) << args.join(' ').toStdString() << ": "
                                     << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput().trimmed().toStdString();
}

struct OnTheBus : Player {
    OnTheBus() : Player(3, 60.0) {
        for (int row = 0; row < 3; ++row) {
            ctx.table.Title[row] = "Τραγούδι " + std::to_string(row);
            ctx.table.Artist[row] = "Artist " + std::to_string(row);
            ctx.table.Album[row] = "Album";
        }
        ctx.table.Rating_Class[1] = 5;  // S
        EXPECT_TRUE(bus.Register()) << bus.Error().toStdString();
    }
    // What the engine does on the loop's next ticks.
    void Settle() { loop.Advance(2000); }
    MediaPlayerBus bus{ctx};
};

TEST(MediaPlayerBus, PlayPauseNextAndMetadataFollowTheTransport) {
    ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run under dbus-run-session";
    OnTheBus app;
    EXPECT_EQ(Playerctl({"status"}), "Stopped");

    Playerctl({"play-pause"});
    app.Settle();
    EXPECT_EQ(Playerctl({"status"}), "Playing");
    const int first = app.ctx.table.Current_Track;
    EXPECT_EQ(Playerctl({"metadata", "--format", "{{xesam:title}}|{{xesam:artist}}|{{mpris:length}}"}),
              "Τραγούδι " + std::to_string(first) + "|Artist " + std::to_string(first) + "|60000000");

    Playerctl({"play-pause"});
    app.Settle();
    EXPECT_EQ(Playerctl({"status"}), "Paused");

    // Next is the next button: a new Track, numbered as it plays.
    Playerctl({"next"});
    app.Settle();
    const int second = app.ctx.table.Current_Track;
    ASSERT_NE(second, first);
    EXPECT_EQ(app.Rows(), (std::vector<int>{first, second}));
    EXPECT_EQ(Playerctl({"metadata", "xesam:title"}), "Τραγούδι " + std::to_string(second));
    EXPECT_EQ(Playerctl({"metadata", "xesam:userRating"}), second == 1 ? "1.0" : "0.0");
    EXPECT_EQ(app.player.URL(), app.Path(second));

    Playerctl({"previous"});
    app.Settle();
    EXPECT_EQ(app.ctx.table.Current_Track, first);

    // "Open with" from a desktop widget: a file the Collection lacks is added and plays.
    const std::string extra = (app.folder.Path() / "media" / "extra.mp3").string();
    testing::Make_Files(app, {{extra, 60.0}});
    Playerctl({"open", QUrl::fromLocalFile(QString::fromStdString(extra)).toString()});
    app.Settle();
    EXPECT_EQ(app.ctx.form1.List2.FindExact(extra), 3);
    EXPECT_EQ(app.player.URL(), extra);

    Playerctl({"volume", "0.5"});
    EXPECT_EQ(app.ctx.form1.HScroll1.Value(), 1000);
    EXPECT_EQ(Playerctl({"volume"}), "0.500000");
}

}  // namespace
}  // namespace velmora

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
