#include "platform/mpeg_frames.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace velmora {

namespace {

// kbps by [MPEG-1 or not][layer - 1][index]; index 0 (free format) and 15 are not frames.
constexpr int kBitrates[2][3][16] = {
    {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
     {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0}},
    {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0}},
};
constexpr int kSampleRates[3] = {44100, 48000, 32000};

// A window on the source that serves small reads from one larger one.
class Window {
public:
    Window(const ReadAt& read, size_t chunk) : m_read(read), m_buffer(chunk) {}

    // n bytes at pos, or null when the source ends before them.
    const uint8_t* At(int64_t pos, size_t n) {
        if (pos >= m_start && pos + static_cast<int64_t>(n) <= m_start + static_cast<int64_t>(m_size))
            return m_buffer.data() + (pos - m_start);
        m_start = pos;
        m_size = m_read(pos, m_buffer.data(), m_buffer.size());
        return m_size >= n ? m_buffer.data() : nullptr;
    }

private:
    const ReadAt& m_read;
    std::vector<uint8_t> m_buffer;
    int64_t m_start = 0;
    size_t m_size = 0;
};

// The header at pos when it is one, fits before end and belongs with ref.
std::optional<MpegFrameHeader> FrameAt(Window& w, int64_t pos, int64_t end, const MpegFrameHeader* ref) {
    if (pos + 4 > end) return std::nullopt;
    const uint8_t* p = w.At(pos, 4);
    if (p == nullptr || p[0] != 0xFF) return std::nullopt;
    auto h = ParseMpegFrameHeader(p);
    if (!h || pos + h->length > end || (ref != nullptr && !h->SameStream(*ref))) return std::nullopt;
    return h;
}

// A header found where no frame was expected is believed only when the next
// frame's header follows where it says, or it is the last frame of the stream:
// any two bytes 0xFF 0xEx in noise look like a header.
bool Confirmed(Window& w, int64_t pos, const MpegFrameHeader& h, int64_t end) {
    const int64_t next = pos + h.length;
    return next == end || FrameAt(w, next, end, &h).has_value();
}

// The size of an ID3v2 tag at pos, header and footer included, or 0.
int64_t Id3v2SizeAt(Window& w, int64_t pos) {
    const uint8_t* p = w.At(pos, 10);
    if (p == nullptr || std::memcmp(p, "ID3", 3) != 0 || p[3] == 0xFF || p[4] == 0xFF) return 0;
    if ((p[6] | p[7] | p[8] | p[9]) & 0x80) return 0;  // sizes are synchsafe
    const int64_t body = (int64_t{p[6]} << 21) | (int64_t{p[7]} << 14) | (int64_t{p[8]} << 7) | p[9];
    const bool footer = (p[5] & 0x10) != 0;
    return 10 + body + (footer ? 10 : 0);
}

// The first frame of an encoder's stream may carry its Xing, Info or VBRI
// header instead of sound; decoders play nothing for it.
bool IsInfoFrame(Window& w, int64_t pos, const MpegFrameHeader& h) {
    const size_t n = static_cast<size_t>(std::min(h.length, 64));
    const uint8_t* p = w.At(pos, n);
    if (p == nullptr) return false;
    for (size_t i = 4; i + 4 <= n; ++i) {
        if (std::memcmp(p + i, "Xing", 4) == 0 || std::memcmp(p + i, "Info", 4) == 0 ||
            std::memcmp(p + i, "VBRI", 4) == 0)
            return true;
    }
    return false;
}

}  // namespace

std::optional<MpegFrameHeader> ParseMpegFrameHeader(const uint8_t* p) {
    if (p[0] != 0xFF || (p[1] & 0xE0) != 0xE0) return std::nullopt;
    const int version_bits = (p[1] >> 3) & 3;
    const int layer_bits = (p[1] >> 1) & 3;
    const int bitrate_index = p[2] >> 4;
    const int rate_index = (p[2] >> 2) & 3;
    const int padding = (p[2] >> 1) & 1;
    if (version_bits == 1 || layer_bits == 0 || rate_index == 3 || (p[3] & 3) == 2) return std::nullopt;

    MpegFrameHeader h;
    h.version = version_bits == 3 ? 1 : version_bits == 2 ? 2 : 25;
    h.layer = 4 - layer_bits;
    h.bitrate_kbps = kBitrates[h.version == 1 ? 0 : 1][h.layer - 1][bitrate_index];
    if (h.bitrate_kbps == 0) return std::nullopt;
    h.sample_rate = kSampleRates[rate_index] / (h.version == 1 ? 1 : h.version == 2 ? 2 : 4);
    const int bps = h.bitrate_kbps * 1000;
    if (h.layer == 1) {
        h.samples = 384;
        h.length = (12 * bps / h.sample_rate + padding) * 4;
    } else if (h.layer == 2 || h.version == 1) {
        h.samples = 1152;
        h.length = 144 * bps / h.sample_rate + padding;
    } else {
        h.samples = 576;
        h.length = 72 * bps / h.sample_rate + padding;
    }
    return h;
}

int64_t MpegStreamCount::BitsPerSecond() const {
    const double seconds = Seconds();
    return seconds > 0 ? static_cast<int64_t>(static_cast<double>(bytes) * 8 / seconds + 0.5) : 0;
}

MpegStreamCount CountMpegFrames(const ReadAt& read, int64_t begin, int64_t end) {
    Window w(read, 256 * 1024);
    MpegStreamCount count;
    std::optional<MpegFrameHeader> ref;
    bool synced = false;
    int64_t pos = std::max<int64_t>(begin, 0);
    while (pos + 4 <= end) {
        auto h = FrameAt(w, pos, end, ref ? &*ref : nullptr);
        if (h && (synced || Confirmed(w, pos, *h, end))) {
            if (!ref) {
                ref = h;
                count.sample_rate = h->sample_rate;
                if (IsInfoFrame(w, pos, *h)) {
                    pos += h->length;
                    synced = true;
                    continue;
                }
            }
            ++count.frames;
            count.samples += h->samples;
            count.bytes += h->length;
            pos += h->length;
            synced = true;
            continue;
        }
        synced = false;
        if (const int64_t tag = Id3v2SizeAt(w, pos); tag > 0) {
            pos += tag;
            continue;
        }
        ++pos;
    }
    return count;
}

bool MpegBitrateVaries(const ReadAt& read, int64_t begin, int64_t end, const MpegFrameHeader& first) {
    constexpr int kPlaces = 16;
    constexpr int64_t kSearch = 4096;  // bytes looked through at each place; frames are shorter
    Window w(read, 2 * kSearch);
    for (int k = 1; k < kPlaces; ++k) {
        const int64_t start = begin + (end - begin) * k / kPlaces;
        for (int64_t pos = start; pos < std::min(start + kSearch, end); ++pos) {
            auto h = FrameAt(w, pos, end, &first);
            if (!h || !Confirmed(w, pos, *h, end)) continue;
            if (h->bitrate_kbps != first.bitrate_kbps) return true;
            break;
        }
    }
    return false;
}

}  // namespace velmora
