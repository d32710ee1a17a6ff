#pragma once
// MPEG audio frames counted one by one. An MP3 without a Xing or VBRI header
// says nothing of its length; a reader that divides the stream by the first
// frame's bit rate is wrong by as much as the bit rate varies. Walking the
// frame headers costs one pass over the bytes and gives the exact count of
// samples, so it is kept for the files that need it.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace velmora {

struct MpegFrameHeader {
    int version = 0;       // 1 for MPEG-1, 2 for MPEG-2, 25 for MPEG-2.5
    int layer = 0;         // 1 to 3
    int bitrate_kbps = 0;  // never 0: free-format streams are not counted
    int sample_rate = 0;
    int samples = 0;  // per frame
    int length = 0;   // bytes, padding included

    // Two headers that can belong to the same stream.
    bool SameStream(const MpegFrameHeader& other) const {
        return version == other.version && layer == other.layer && sample_rate == other.sample_rate;
    }
};

// The header at p (four bytes), or nothing when they are not one.
std::optional<MpegFrameHeader> ParseMpegFrameHeader(const uint8_t* p);

// Reads up to size bytes at offset into buffer; returns how many it read.
using ReadAt = std::function<size_t(int64_t offset, uint8_t* buffer, size_t size)>;

struct MpegStreamCount {
    int64_t frames = 0;
    int64_t samples = 0;
    int64_t bytes = 0;  // of the frames counted
    int sample_rate = 0;

    double Seconds() const { return sample_rate > 0 ? static_cast<double>(samples) / sample_rate : 0.0; }
    // Bits per second over the frames counted, 0 when none were.
    int64_t BitsPerSecond() const;
};

// Counts the frames of the stream that lies in [begin, end). ID3v2 tags met
// on the way (files joined end to end carry one each) are stepped over, and
// after anything else that is not a frame the walk finds the next two
// headers in a row before it counts again.
MpegStreamCount CountMpegFrames(const ReadAt& read, int64_t begin, int64_t end);

// A cheap look at a few places spread over [begin, end): true when a frame
// found there has another bit rate than the first frame.
bool MpegBitrateVaries(const ReadAt& read, int64_t begin, int64_t end, const MpegFrameHeader& first);

}  // namespace velmora
