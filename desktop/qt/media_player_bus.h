#pragma once
// The player on the session bus under the desktop's media-player interface,
// so that media keys, playerctl and desktop widgets steer it. Every command
// goes to the same handler as the window's own transport button.

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <vector>

#include "base/signal.h"

namespace velmora {

struct AppContext;
class MediaPlayerRoot;
class MediaPlayerControls;

class MediaPlayerBus : public QObject {
    Q_OBJECT
public:
    explicit MediaPlayerBus(AppContext& ctx, QObject* parent = nullptr);
    ~MediaPlayerBus() override;

    // Takes the bus name; false (and the reason in Error()) where there is
    // no session bus or another program holds the name.
    bool Register(const QString& service = QStringLiteral("org.mpris.MediaPlayer2.velmora"));
    const QString& Error() const { return m_error; }
    // Gives the files to the player already on the bus, which adds and plays
    // them; false when there is none, or it took none of them.
    static bool HandOver(const QStringList& files,
                         const QString& service = QStringLiteral("org.mpris.MediaPlayer2.velmora"));

    // What the properties answer, read afresh from the program's state.
    QString PlaybackStatus() const;
    QVariantMap Metadata() const;
    double Volume() const;
    qlonglong Position() const;

    void PlayPause();
    void Play();
    void Pause();
    void Stop();
    void Next();
    void Previous();
    void Seek(qlonglong offset_us);
    void SetPosition(const QString& track_id, qlonglong position_us);
    void SetVolume(double volume);
    void OpenUri(const QString& uri);
    void Raise();
    void Quit();

private:
    // Tells the bus what changed since it was last told.
    void Announce();

    AppContext& m_ctx;
    MediaPlayerRoot* m_root;
    MediaPlayerControls* m_controls;
    QString m_error;
    bool m_registered = false;
    QString m_told_status;
    QVariantMap m_told_metadata;
    double m_told_volume = -1;
    bool m_announce_pending = false;
    std::vector<Subscription> m_links;
};

}  // namespace velmora
