#include "desktop/qt/media_player_bus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <cmath>

#include "core/app_context.h"
#include "core/media_engine.h"
#include "desktop/given_files.h"
#include "desktop/qt/media_player_adaptors.h"
#include "desktop/tray.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

const QString kObjectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kPlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

QString Q(const std::string& text) { return QString::fromStdString(text); }

// The engine whose state the bus reports: the one that plays now, or the
// main window's when none is chosen.
const MediaEngine& Engine(AppContext& ctx) {
    const MediaEngine* engine = Active_Engine(ctx);
    return engine != nullptr ? *engine : ctx.ports.player;
}

}  // namespace

MediaPlayerBus::MediaPlayerBus(AppContext& ctx, QObject* parent)
    : QObject(parent), m_ctx(ctx), m_root(new MediaPlayerRoot(*this, this)),
      m_controls(new MediaPlayerControls(*this, this)) {
    // A state change or a new Track is told on the loop's next turn, once,
    // however many events the engines raise on the way.
    auto changed = [this](int) {
        if (m_announce_pending) return;
        m_announce_pending = true;
        QTimer::singleShot(0, this, [this] {
            m_announce_pending = false;
            Announce();
        });
    };
    for (MediaEngine* engine : {&ctx.ports.player, &ctx.ports.video, &ctx.ports.second})
        m_links.push_back(engine->PlayStateChange.connect(changed));
    for (ScrollBar* bar : {&ctx.form1.HScroll1, &ctx.form4.HScroll1})
        m_links.push_back(bar->Changed.connect([changed](Change) { changed(0); }));
}

MediaPlayerBus::~MediaPlayerBus() {
    if (m_registered) QDBusConnection::sessionBus().unregisterObject(kObjectPath);
}

bool MediaPlayerBus::HandOver(const QStringList& files, const QString& service) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (files.isEmpty() || !bus.isConnected() || !bus.interface()->isServiceRegistered(service)) return false;
    bool handed = false;
    for (const QString& file : files) {
        QDBusMessage call = QDBusMessage::createMethodCall(service, kObjectPath, kPlayerInterface, QStringLiteral("OpenUri"));
        call << QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toString();
        handed = bus.call(call, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage || handed;
    }
    return handed;
}

bool MediaPlayerBus::Register(const QString& service) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        m_error = QStringLiteral("no session bus: ") + bus.lastError().message();
        return false;
    }
    if (!bus.registerObject(kObjectPath, this)) {
        m_error = QStringLiteral("the object path is taken: ") + bus.lastError().message();
        return false;
    }
    if (!bus.registerService(service)) {
        m_error = service + QStringLiteral(" is taken: ") + bus.lastError().message();
        bus.unregisterObject(kObjectPath);
        return false;
    }
    m_error.clear();
    m_registered = true;
    return true;
}

QString MediaPlayerBus::PlaybackStatus() const {
    switch (Engine(m_ctx).playState()) {
        case PS_Playing: return QStringLiteral("Playing");
        case PS_Paused: return QStringLiteral("Paused");
        default: return QStringLiteral("Stopped");
    }
}

QVariantMap MediaPlayerBus::Metadata() const {
    const TrackTable& t = m_ctx.table;
    const ListBox& paths = m_ctx.form1.List2;
    const int row = t.Current_Track;
    if (row < 0 || row > t.Bound() || row >= paths.ListCount())
        return {{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath("/org/mpris/MediaPlayer2/TrackList/NoTrack"))}};
    const size_t r = static_cast<size_t>(row);
    QVariantMap data;
    data.insert(QStringLiteral("mpris:trackid"),
                QVariant::fromValue(QDBusObjectPath("/org/velmora/track/" + QString::number(row))));
    const QString path = Q(std::string(paths.List(row)));
    data.insert(QStringLiteral("xesam:url"), QUrl::fromLocalFile(path).toString());
    // A Track never identified has no title: its file's name stands in.
    const QString title = Q(t.Title[r]).trimmed();
    data.insert(QStringLiteral("xesam:title"), title.isEmpty() ? QFileInfo(path).completeBaseName() : title);
    const QString artist = Q(t.Artist[r]).trimmed();
    if (!artist.isEmpty()) data.insert(QStringLiteral("xesam:artist"), QStringList{artist});
    const QString album = Q(t.Album[r]).trimmed();
    if (!album.isEmpty()) data.insert(QStringLiteral("xesam:album"), album);
    if (t.Duration[r].Raw() > 0)
        data.insert(QStringLiteral("mpris:length"), qlonglong(std::llround(t.Duration[r].ToDouble() * 1e6)));
    // The classes Unmarked, X, C, B, A and S as 0 to 1: S is the best.
    const int rating = std::clamp<int>(t.Rating_Class[r], 0, 5);
    data.insert(QStringLiteral("xesam:userRating"), rating / 5.0);
    return data;
}

namespace {

// The volume bar of the window that plays.
ScrollBar& Volume_Bar(AppContext& ctx) {
    return ctx.settings.Second_Player == -1 ? ctx.form4.HScroll1 : ctx.form1.HScroll1;
}

}  // namespace

double MediaPlayerBus::Volume() const {
    const ScrollBar& bar = Volume_Bar(m_ctx);
    return bar.Max() > 0 ? static_cast<double>(bar.Value()) / bar.Max() : 0.0;
}

qlonglong MediaPlayerBus::Position() const {
    const auto position = Engine(m_ctx).currentPosition();
    return position.ok() ? qlonglong(std::llround(position.value() * 1e6)) : 0;
}

void MediaPlayerBus::PlayPause() { m_ctx.form1.Command11.Click.emit(); }

void MediaPlayerBus::Play() {
    if (Engine(m_ctx).playState() != PS_Playing) PlayPause();
}

void MediaPlayerBus::Pause() {
    if (Engine(m_ctx).playState() == PS_Playing) PlayPause();
}

// The window has no stop button: a stop keeps the place, as a pause does.
void MediaPlayerBus::Stop() { Pause(); }

void MediaPlayerBus::Next() { m_ctx.form1.Command3[0].Click.emit(); }

void MediaPlayerBus::Previous() { m_ctx.form1.Command3[1].Click.emit(); }

void MediaPlayerBus::Seek(qlonglong offset_us) {
    SetPosition(Metadata().value(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>().path(),
                Position() + offset_us);
}

void MediaPlayerBus::SetPosition(const QString& track_id, qlonglong position_us) {
    // A position for another Track than the one playing comes too late.
    if (track_id != Metadata().value(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>().path()) return;
    // The slider of the window that plays, moved as the user moves it.
    Slider& slider = m_ctx.settings.Second_Player == -1 ? m_ctx.form4.Slider1 : m_ctx.form1.Slider1;
    const int seconds = static_cast<int>(std::clamp<qlonglong>(position_us / 1000000, 0, slider.Max()));
    slider.SetValue(seconds);
    slider.Scroll.emit();
    Q_EMIT m_controls->Seeked(Position());
}

void MediaPlayerBus::SetVolume(double volume) {
    ScrollBar& bar = Volume_Bar(m_ctx);
    bar.SetValue(static_cast<int>(std::lround(std::clamp(volume, 0.0, 1.0) * bar.Max())));
}

void MediaPlayerBus::OpenUri(const QString& uri) {
    const QUrl url(uri);
    if (!url.isLocalFile()) return;
    Open_Given_Files(m_ctx, {url.toLocalFile().toStdString()}, QDir::currentPath().toStdString());
}

void MediaPlayerBus::Raise() {
    // Hidden in the tray, it comes back as a click on the icon brings it.
    if (m_ctx.settings.Window_Visible != -1) Form_MouseMove(m_ctx, kTrayLeftDown);
}

void MediaPlayerBus::Quit() { m_ctx.form1.Tray("mnusystemtrayexit").Click.emit(); }

void MediaPlayerBus::Announce() {
    if (!m_registered) return;
    QVariantMap changed;
    const QString status = PlaybackStatus();
    if (status != m_told_status) changed.insert(QStringLiteral("PlaybackStatus"), m_told_status = status);
    const QVariantMap metadata = Metadata();
    if (metadata != m_told_metadata) changed.insert(QStringLiteral("Metadata"), m_told_metadata = metadata);
    const double volume = Volume();
    if (volume != m_told_volume) changed.insert(QStringLiteral("Volume"), m_told_volume = volume);
    if (changed.isEmpty()) return;
    QDBusMessage signal = QDBusMessage::createSignal(kObjectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                     QStringLiteral("PropertiesChanged"));
    signal << kPlayerInterface << changed << QStringList();
    QDBusConnection::sessionBus().send(signal);
}

}  // namespace velmora
