#include "support/golden_collection.h"

#include <algorithm>

#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora::testing {

namespace fs = std::filesystem;

std::string RecordBytes::Le(uint64_t v, int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
    return s;
}

RecordBytes& RecordBytes::Field(int64_t rec, const std::string& field) {
    const size_t at = static_cast<size_t>(rec - 1) * m_length;
    bytes.resize(std::max(bytes.size(), at + m_length), '\0');
    std::fill_n(bytes.begin() + static_cast<long>(at), m_length, '\0');
    bytes.replace(at, field.size(), field);
    return *this;
}

Golden Golden_Bytes() {
    const std::string dir = "/home/\xEC\xEF\xF5\xF3\xE9\xEA\xDE";  // /home/μουσική
    const std::string path0 = dir + "/\xE1.mp3";                   // .../α.mp3

    // Resumes at Track 1, 82 s in; classes B and A play; both Tracks played.
    RecordBytes m(300);
    m.Text(1, "5.0").Text(2, "/").Text(3, dir).Long(4, 1).Long(5, 82).Long(6, 2).Integer(7, 0);
    m.Money(8, 5015000).Money(9, 2000000).Money(10, 2820000);
    m.Text(11, "/alarm/\xEE\xFD\xF0\xED\xE1.mp3");  // ξύπνα
    const int16_t class_play[6] = {0, 0, 0, -1, -1, 0};
    for (int k = 0; k < 6; ++k) m.Integer(12 + k, class_play[k]);
    m.Long(18, 2).Long(19, 2).Money(20, 10000).Money(21, 20000).Money(22, 30000);
    const int64_t class_duration[6] = {0, 0, 0, 2000000, 3015000, 0};
    for (int k = 0; k < 6; ++k) m.Money(23 + k, class_duration[k]);

    // Track 0: class B, 200 s, 4.5678 Mb, stopped at 12 s, Μάνος / Έντεχνο /
    // Album A / Τίτλος / 1960, identified, slot 2 holds 7 and slot 15 σχόλιο.
    // Track 1: class A, 301.5 s, 1024 Mb, stopped at 82 s, Artist B / Title B,
    // slot 15 holds -1 and slot 0 "x".
    RecordBytes f(400);
    f.Long(1, 1).Money(2, 2000000).Integer(3, 3).Money(4, 45678).Money(5, 120000).Integer(6, 128);
    f.Text(7, "\xCC\xDC\xED\xEF\xF2").Text(8, "\xB8\xED\xF4\xE5\xF7\xED\xEF").Text(9, "Album A");
    f.Text(10, "\xD4\xDF\xF4\xEB\xEF\xF2").Text(11, "1960").Text(12, path0).Integer(13, -1);
    for (int j = 0; j < 16; ++j)
        f.Integer(14 + 2 * j, j == 2 ? 7 : 0).Text(15 + 2 * j, j == 15 ? "\xF3\xF7\xFC\xEB\xE9\xEF" : "");
    f.Long(46, 2).Money(47, 3015000).Integer(48, 4).Money(49, 10240000).Money(50, 820000).Integer(51, 320);
    f.Text(52, "Artist B").Text(53, "").Text(54, "").Text(55, "Title B").Text(56, "").Text(57, "/home/b.mp3");
    f.Integer(58, 0);
    for (int j = 0; j < 16; ++j) f.Integer(59 + 2 * j, j == 15 ? -1 : 0).Text(60 + 2 * j, j == 0 ? "x" : "");

    return {m.bytes, f.bytes, Golden_Filters()};
}

std::string Golden_Filters(const std::vector<std::vector<std::string>>& boxes) {
    // Four filter rows, stored with their upper index, 3.
    const std::string rows[4] = {"head", "", "000001|000001|\xCC\xDC\xED\xEF\xF2|B", "000002|000002|A"};
    RecordBytes r(600);
    int64_t record = 10;
    for (size_t k = 0; k < 8; ++k) {
        const size_t n = k < boxes.size() ? boxes[k].size() : 0;
        r.Integer(static_cast<int64_t>(k) + 1, static_cast<int16_t>(n));
        for (size_t j = 0; j < n; ++j) r.Text(record++, boxes[k][j]);
    }
    r.Integer(9, 3);
    for (const std::string& row : rows) r.Text(record++, row);
    return r.bytes;
}

GoldenFiles Golden_Files_In(const std::string& folder, const std::string& name) {
    return {folder + "velmora_sylloges/" + name + ".qel", folder + "velmora_sylloges/" + name + "_files.qqel",
            folder + "velmora_filtra/" + name + "_filters.qqel"};
}

void Write_Golden(const GoldenFiles& at, const Golden& g) {
    fs::create_directories(at.main.parent_path());
    fs::create_directories(at.filters.parent_path());
    Put(at.main, g.main), Put(at.files, g.files), Put(at.filters, g.filters);
}

std::string Wav_Bytes(uint32_t samples, int64_t declared) {
    const auto le32 = [](uint32_t v) { return RecordBytes::Le(v, 4); };
    const uint32_t data = samples * 2;
    const auto riff = declared >= 0 ? static_cast<uint32_t>(declared) : 36 + data;
    const auto chunk = declared >= 0 ? static_cast<uint32_t>(declared) : data;
    std::string wav = "RIFF" + le32(riff) + "WAVEfmt " + le32(16);
    wav += std::string("\x01\x00\x01\x00", 4) + le32(8000) + le32(16000) + std::string("\x02\x00\x10\x00", 4);
    wav += "data" + le32(chunk);
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
