#include "support/media_collection.h"

namespace velmora::testing {

namespace {

std::string Le32(uint32_t v) { return RecordBytes::Le(v, 4); }

}  // namespace

std::string Wav_Bytes(uint32_t samples, int64_t declared) {
    const uint32_t data = samples * 2;
    const auto riff = declared >= 0 ? static_cast<uint32_t>(declared) : 36 + data;
    const auto chunk = declared >= 0 ? static_cast<uint32_t>(declared) : data;
    std::string wav = "RIFF" + Le32(riff) + "WAVEfmt " + Le32(16);
    wav += std::string("\x01\x00\x01\x00", 4) + Le32(8000) + Le32(16000) + std::string("\x02\x00\x10\x00", 4);
    wav += "data" + Le32(chunk);
    wav.append(data, '\0');
    return wav;
}

Golden Golden_With_Paths(const std::string& first, const std::string& second) {
    Golden g = Golden_Bytes();
    RecordBytes main(300), files(400);
    main.bytes = g.main;
    files.bytes = g.files;
    // Current_Track, Current_Position, Played_Count, Played_High.
    main.Long(4, 0).Long(5, 0).Long(18, 0).Long(19, 0);
    for (int track = 0; track < 2; ++track) {
        const int64_t base = 45 * track;
        // Played_Number, Stop_Position, Track_Path.
        files.Long(base + 1, 0).Money(base + 5, 0).Text(base + 12, track == 0 ? first : second);
    }
    g.main = main.bytes;
    g.files = files.bytes;
    return g;
}

}  // namespace velmora::testing
