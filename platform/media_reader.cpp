#include "platform/media_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "platform/av_probe.h"
#include "platform/embedded_art.h"
#include "platform/tag_reading.h"
#include "platform/tag_writing.h"

namespace velmora {

namespace {

std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
    return s;
}

// Everything the item answers, found once.
struct Answers {
    double duration = 0;
    std::string title, artist, album, year, comment, genre;
    std::string media_type;
    std::string user_rating;
    std::string file_size;
    std::string bit_rate;
    bool tag_writable = false;
};

class ReaderMediaItem : public MediaItem {
public:
    ReaderMediaItem(std::string path, Answers answers) : m_path(std::move(path)), m_answers(std::move(answers)) {}

    double duration() const override { return m_answers.duration; }
    std::string sourceURL() const override { return m_path; }

    std::string getItemInfo(const std::string& attribute) const override {
        // The picture is read only when asked for: most asks never want it.
        if (Lower(attribute) == "wm/picture") return m_answers.media_type == "audio" || m_answers.media_type == "video"
                                                          ? Embedded_Picture(m_path)
                                                          : std::string();
        const std::string* field = Field(m_answers, Lower(attribute));
        return field != nullptr ? *field : std::string();
    }

    Status setItemInfo(const std::string& attribute, const std::string& value) override {
        std::string key = Lower(attribute);
        if (!Writable(key)) return Error{m_path + ": attribute is read-only: " + attribute};
        if (key == "wm/year") key = "year";
        if (Status written = Write_Tags(m_path, {{key, value}}); !written) return written;
        // The item keeps answering what the file now holds: a year as the
        // number TagLib stored, no rating for 0.
        std::string stored = value;
        if (key == "year" && !value.empty()) stored = std::to_string(std::stoul(value));
        if (value.empty() || stored == "0") stored.clear();
        *Field(m_answers, key) = stored;
        return {};
    }

    bool isReadOnlyItem(const std::string& attribute) const override { return !Writable(Lower(attribute)); }

private:
    // The answer named by key (lower case), or null; const or not as the answers are.
    template <class A>
    static auto Field(A& a, const std::string& key) -> decltype(&a.title) {
        if (key == "title") return &a.title;
        if (key == "artist") return &a.artist;
        if (key == "album") return &a.album;
        if (key == "wm/year" || key == "year") return &a.year;
        if (key == "comment") return &a.comment;
        if (key == "genre") return &a.genre;
        if (key == "mediatype") return &a.media_type;
        if (key == "userrating") return &a.user_rating;
        if (key == "filesize") return &a.file_size;
        if (key == "bitrate") return &a.bit_rate;
        return nullptr;
    }

    bool Writable(const std::string& key) const {
        static constexpr std::array<std::string_view, 8> kTagFields = {
            "title", "artist", "album", "year", "wm/year", "genre", "comment", "userrating"};
        return m_answers.tag_writable && std::find(kTagFields.begin(), kTagFields.end(), key) != kTagFields.end();
    }

    std::string m_path;
    Answers m_answers;
};

// Pictures are known by their first bytes, whatever their names say.
bool IsPicture(const std::string& path) {
    uint8_t head[16] = {};
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const ssize_t n = ::read(fd, head, sizeof head);
    ::close(fd);
    if (n < 12) return false;
    auto starts = [&](const char* magic, size_t at = 0) {
        return std::memcmp(head + at, magic, std::strlen(magic)) == 0;
    };
    if (head[0] == 0xFF && head[1] == 0xD8 && head[2] == 0xFF) return true;  // JPEG
    if (starts("\x89PNG\r\n\x1a\n") || starts("GIF87a") || starts("GIF89a")) return true;
    if (starts("II*") && head[3] == 0) return true;  // TIFF, little-endian
    if (starts("MM") && head[2] == 0 && head[3] == '*') return true;
    if (starts("RIFF") && starts("WEBP", 8)) return true;
    if (starts("ftyp", 4)) {
        for (const char* brand : {"heic", "heix", "mif1", "avif"})
            if (starts(brand, 8)) return true;
    }
    if (starts("BM")) {
        // The bitmap header's size field is 12, 40, 52, 56, 108 or 124.
        const uint32_t dib = head[14] | (head[15] << 8);
        return n >= 16 && (dib == 12 || dib == 40 || dib == 52 || dib == 56 || dib == 108 || dib == 124);
    }
    return false;
}

// libavformat's demuxers for pictures and for text shown as pictures open
// almost any bytes by the file's name alone; they never make a film.
bool IsStillOrTextFormat(const std::string& name) {
    if (name.size() > 5 && name.compare(name.size() - 5, 5, "_pipe") == 0) return true;
    for (const char* still : {"image2", "tty", "bin", "idf", "adf", "xbin"})
        if (name == still) return true;
    return false;
}

std::string BitRateText(int64_t bits_per_second) {
    return bits_per_second > 0 ? std::to_string(bits_per_second) : std::string();
}

Answers Read(const std::string& path) {
    Answers a;
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return a;
    const std::string size = std::to_string(static_cast<int64_t>(st.st_size));

    const TagFacts tags = ReadWithTagLib(path, static_cast<int64_t>(st.st_size));
    if (tags.opened) {
        a.duration = tags.duration;
        a.title = tags.title;
        a.artist = tags.artist;
        a.album = tags.album;
        a.year = tags.year;
        a.comment = tags.comment;
        a.genre = tags.genre;
        a.media_type = "audio";
        if (tags.user_rating > 0) a.user_rating = std::to_string(tags.user_rating);
        a.file_size = size;
        a.bit_rate = BitRateText(tags.bit_rate);
        a.tag_writable = tags.has_tag && Why_Not_Writable(path).empty();
        if (tags.may_hold_video) {
            // A film's length and bit rate are the container's, not its sound's.
            if (auto probe = ProbeContainer(path); probe && probe.value().has_video) {
                const AvProbe& p = probe.value();
                a.media_type = "video";
                if (p.duration > 0) a.duration = p.duration;
                if (p.bit_rate > 0) a.bit_rate = BitRateText(p.bit_rate);
            }
        }
        return a;
    }

    if (IsPicture(path)) {
        a.media_type = "photo";
        a.file_size = size;
        return a;
    }

    auto probe = ProbeContainer(path);
    if (!probe || IsStillOrTextFormat(probe.value().format_name)) return a;
    const AvProbe& p = probe.value();
    // Noise can pass for a stream of some codec; a stream that has no length
    // was not found in the file.
    if (p.playable && p.duration <= 0) return a;
    a.duration = p.playable ? p.duration : 0.0;
    a.title = p.Attribute("Title");
    a.artist = p.Attribute("Artist");
    a.album = p.Attribute("Album");
    a.year = p.Attribute("WM/Year");
    a.comment = p.Attribute("Comment");
    a.genre = p.Attribute("Genre");
    a.media_type = !p.playable ? "other" : p.has_video ? "video" : "audio";
    a.file_size = size;
    a.bit_rate = BitRateText(p.bit_rate);
    return a;
}

}  // namespace

std::unique_ptr<MediaItem> ReadMediaItem(const std::string& path) {
    return std::make_unique<ReaderMediaItem>(path, Read(path));
}

}  // namespace velmora
