#include "platform/tag_reading.h"

#include <taglib/asffile.h>
#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/mpegproperties.h>
#include <taglib/tag.h>
#include <taglib/xingheader.h>

#include <cstring>
#include <exception>

#include "platform/mpeg_frames.h"
#include "platform/rating_tags.h"

namespace velmora {

namespace {

std::string Utf8(const TagLib::String& text) { return text.isEmpty() ? std::string() : text.to8Bit(true); }

struct MpegStream {
    double duration = 0;
    int64_t bit_rate = 0;
    bool sound = false;
};

// TagLib takes an MP3's length from its Xing or VBRI header, or else divides
// the stream by the first frame's bit rate. Where neither can be trusted (no
// such header and the bit rate changes along the file, or a header that
// promises more bytes than the file has left) the frames are counted.
MpegStream MpegLength(TagLib::MPEG::File& file, int64_t file_size) {
    MpegStream out;
    const auto* props = file.audioProperties();
    if (props == nullptr || props->sampleRate() <= 0) return out;
    out.sound = true;
    out.duration = props->lengthInMilliseconds() / 1000.0;
    out.bit_rate = int64_t{props->bitrate()} * 1000;

    const int64_t end = file_size - (file.hasID3v1Tag() ? 128 : 0);
    const ReadAt read = [&file](int64_t offset, uint8_t* buffer, size_t size) -> size_t {
        file.seek(static_cast<long>(offset));
        const TagLib::ByteVector bytes = file.readBlock(static_cast<unsigned long>(size));
        std::memcpy(buffer, bytes.data(), bytes.size());
        return bytes.size();
    };

    bool count = false;
    long first = -1;
    const TagLib::MPEG::XingHeader* xing = props->xingHeader();
    if (xing != nullptr && xing->totalFrames() > 0) {
        // A file cut short keeps the header of the whole. The stream begins
        // after the ID3v2 tag, near enough for this test; looking for the
        // first frame itself would cost as much as the rest of the reading.
        const TagLib::ID3v2::Tag* id3 = file.ID3v2Tag();
        const int64_t begin = id3 != nullptr ? id3->header()->completeTagSize() : 0;
        count = xing->totalSize() > 0 && static_cast<double>(end - begin) < 0.95 * xing->totalSize();
    } else {
        first = file.firstFrameOffset();
        uint8_t head[4];
        if (first < 0 || read(first, head, 4) != 4) return out;
        const auto header = ParseMpegFrameHeader(head);
        count = !header || MpegBitrateVaries(read, first, end, *header);
    }
    if (!count) return out;

    if (first < 0) first = file.firstFrameOffset();
    if (first < 0) return out;
    const MpegStreamCount frames = CountMpegFrames(read, first, end);
    out.sound = frames.frames > 0;
    out.duration = frames.Seconds();
    out.bit_rate = frames.BitsPerSecond();
    return out;
}

TagFacts Read(const std::string& path, int64_t file_size) {
    TagFacts facts;
    TagLib::FileRef ref(path.c_str(), true, TagLib::AudioProperties::Average);
    if (ref.isNull() || ref.audioProperties() == nullptr) return facts;
    TagLib::File& file = *ref.file();

    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        const MpegStream stream = MpegLength(*mpeg, file_size);
        if (!stream.sound) return facts;
        facts.duration = stream.duration;
        facts.bit_rate = stream.bit_rate;
    } else {
        const TagLib::AudioProperties* props = ref.audioProperties();
        if (props->lengthInMilliseconds() <= 0 && props->sampleRate() <= 0) return facts;
        facts.duration = props->lengthInMilliseconds() / 1000.0;
        facts.bit_rate = int64_t{props->bitrate()} * 1000;
        facts.may_hold_video =
            dynamic_cast<TagLib::MP4::File*>(&file) != nullptr || dynamic_cast<TagLib::ASF::File*>(&file) != nullptr;
    }
    facts.opened = true;

    if (const TagLib::Tag* tag = ref.tag()) {
        facts.has_tag = true;
        facts.title = Utf8(tag->title());
        facts.artist = Utf8(tag->artist());
        facts.album = Utf8(tag->album());
        facts.comment = Utf8(tag->comment());
        facts.genre = Utf8(tag->genre());
        if (tag->year() > 0) facts.year = std::to_string(tag->year());
    }
    facts.user_rating = ReadUserRating(file);
    return facts;
}

}  // namespace

TagFacts ReadWithTagLib(const std::string& path, int64_t file_size) {
    // A damaged file can make a parser ask for absurd amounts of memory; it
    // is then a file that cannot be read, not the end of the program.
    try {
        return Read(path, file_size);
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace velmora
