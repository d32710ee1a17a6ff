#pragma once
// A short look into a media file with libavformat: its duration, whether it
// carries video, its bit rate and its text tags. The file is opened and closed
// within the call.

#include <cstdint>
#include <map>
#include <string>

#include "base/result.h"

namespace velmora {

struct AvProbe {
    double duration = 0;  // seconds, 0 when the container does not say
    bool has_video = false;  // a video stream that is not a cover picture
    int64_t bit_rate = 0;    // bits per second, 0 when unknown
    int64_t file_size = 0;   // bytes
    bool playable = false;   // it has an audio stream or a video stream that is not a cover
    std::string format_name;  // libavformat's name of the container ("mp3", "image2", ...)
    // Tags under their lower-case libavformat names (title, artist, album,
    // date, genre, comment, ...), container tags before stream tags.
    std::map<std::string, std::string> tags;

    // The value of one of the engine's attribute names ("Title", "WM/Year",
    // "MediaType", "Bitrate", ...) read from the probe, or empty text.
    std::string Attribute(const std::string& name) const;
};

// The file as libavformat opens it, whatever streams it holds.
Result<AvProbe> ProbeContainer(const std::string& path);
// The same for a file that has something to play; an error for one that has not.
Result<AvProbe> ProbeMediaFile(const std::string& path);

}  // namespace velmora
