#pragma once
// The media engine port: everything the program asks of a player instance.
// Events (PlayStateChange, StatusChange, SoundDeviceMissing) are delivered through the event loop,
// never from inside the call that caused them. A failing call returns an
// error to its caller and never ends the program.

#include <memory>
#include <string>

#include "base/result.h"
#include "base/signal.h"

namespace velmora {

// The numbers are those the logic tests against.
enum PlayState : int {
    PS_Undefined = 0,
    PS_Stopped = 1,
    PS_Paused = 2,
    PS_Playing = 3,
    PS_MediaEnded = 8,
    PS_Transitioning = 9,
    PS_Ready = 10,
};

// A file seen through the engine, loaded or not.
class MediaItem {
public:
    virtual ~MediaItem() = default;
    // Seconds; 0 until the engine knows.
    virtual double duration() const = 0;
    virtual std::string sourceURL() const = 0;
    // The value of the attribute ("Title", "Artist", "WM/Year", ...), or empty text.
    virtual std::string getItemInfo(const std::string& attribute) const = 0;
    virtual Status setItemInfo(const std::string& attribute, const std::string& value) = 0;
    virtual bool isReadOnlyItem(const std::string& attribute) const = 0;
};

// The position as an engine prints it: "mm:ss", or "h:mm:ss" from an hour on.
std::string Position_Text(double seconds);

class MediaEngine {
public:
    virtual ~MediaEngine() = default;

    virtual std::string URL() const = 0;
    // Loads the file without starting to play it.
    virtual Status setURL(const std::string& path) = 0;
    virtual Status close() = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void setUiMode(const std::string& mode) = 0;
    virtual std::unique_ptr<MediaItem> newMedia(const std::string& path) = 0;
    // The loaded item, or null while nothing is loaded.
    virtual std::unique_ptr<MediaItem> currentMedia() = 0;
    virtual int playState() const = 0;

    // controls
    virtual Status play() = 0;
    virtual Status pause() = 0;
    virtual Status stop() = 0;
    virtual Result<double> currentPosition() const = 0;
    // Allowed while paused and before play; the position holds until play.
    virtual Status setCurrentPosition(double seconds) = 0;
    virtual std::string currentPositionString() const = 0;

    // settings
    virtual void setAutoStart(bool on) = 0;
    virtual void setMute(bool on) = 0;
    virtual int volume() const = 0;
    virtual Status setVolume(int volume) = 0;  // 0 to 100

    // events; the state argument is informative, handlers read playState() afresh
    Signal<int> PlayStateChange;
    Signal<> StatusChange;
    // The engine found no sound device and plays on without sound.
    Signal<> SoundDeviceMissing;
};

}  // namespace velmora
