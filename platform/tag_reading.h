#pragma once
// The part of a media file that TagLib reads and writes: the common tag, the
// rating, and the length and bit rate of the audio formats it knows.

#include <cstdint>
#include <string>


namespace velmora {

struct TagFacts {
    bool opened = false;          // TagLib knows the format and found sound in it
    bool has_tag = false;         // the format carries a tag TagLib can write
    bool may_hold_video = false;  // MP4 and ASF: TagLib sees only their audio
    double duration = 0;          // seconds
    int64_t bit_rate = 0;         // bits per second, 0 when unknown
    std::string title, artist, album, year, comment, genre;  // UTF-8
    int user_rating = 0;          // 1 to 99, 0 for none
};

// Never throws; a file TagLib cannot read comes back with opened false. The
// caller has the file's size already; asking the stream again costs seeks.
TagFacts ReadWithTagLib(const std::string& path, int64_t file_size);

}  // namespace velmora
