#pragma once
// The two interfaces of the media-player bus object; each property and
// method passes straight to the MediaPlayerBus that owns them.

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>

#include "desktop/qt/media_player_bus.h"

namespace velmora {

class MediaPlayerRoot : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ CanQuit)
    Q_PROPERTY(bool CanRaise READ CanRaise)
    Q_PROPERTY(bool HasTrackList READ HasTrackList)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ SupportedUriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ SupportedMimeTypes)
public:
    MediaPlayerRoot(MediaPlayerBus& bus, QObject* host) : QDBusAbstractAdaptor(host), m_bus(bus) {}
    bool CanQuit() const { return true; }
    bool CanRaise() const { return true; }
    bool HasTrackList() const { return false; }
    QString Identity() const { return QStringLiteral("Velmora II"); }
    QString DesktopEntry() const { return QStringLiteral("velmora"); }
    QStringList SupportedUriSchemes() const { return {QStringLiteral("file")}; }
    QStringList SupportedMimeTypes() const;

public Q_SLOTS:
    void Raise() { m_bus.Raise(); }
    void Quit() { m_bus.Quit(); }

private:
    MediaPlayerBus& m_bus;
};

class MediaPlayerControls : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(double Rate READ Rate WRITE SetRate)
    Q_PROPERTY(double MinimumRate READ Rate)
    Q_PROPERTY(double MaximumRate READ Rate)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(double Volume READ Volume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(bool CanGoNext READ CanControl)
    Q_PROPERTY(bool CanGoPrevious READ CanControl)
    Q_PROPERTY(bool CanPlay READ CanControl)
    Q_PROPERTY(bool CanPause READ CanControl)
    Q_PROPERTY(bool CanSeek READ CanControl)
    Q_PROPERTY(bool CanControl READ CanControl)
public:
    MediaPlayerControls(MediaPlayerBus& bus, QObject* host) : QDBusAbstractAdaptor(host), m_bus(bus) {}
    QString PlaybackStatus() const { return m_bus.PlaybackStatus(); }
    // The player plays at its own speed only.
    double Rate() const { return 1.0; }
    void SetRate(double) {}
    QVariantMap Metadata() const { return m_bus.Metadata(); }
    double Volume() const { return m_bus.Volume(); }
    void SetVolume(double volume) { m_bus.SetVolume(volume); }
    qlonglong Position() const { return m_bus.Position(); }
    bool CanControl() const { return true; }

public Q_SLOTS:
    void PlayPause() { m_bus.PlayPause(); }
    void Play() { m_bus.Play(); }
    void Pause() { m_bus.Pause(); }
    void Stop() { m_bus.Stop(); }
    void Next() { m_bus.Next(); }
    void Previous() { m_bus.Previous(); }
    void Seek(qlonglong Offset) { m_bus.Seek(Offset); }
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position) { m_bus.SetPosition(TrackId.path(), Position); }
    void OpenUri(const QString& Uri) { m_bus.OpenUri(Uri); }

Q_SIGNALS:
    void Seeked(qlonglong Position);

private:
    MediaPlayerBus& m_bus;
};

}  // namespace velmora
