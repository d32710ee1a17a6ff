#include "platform/rating_tags.h"

#include <taglib/aifffile.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggfile.h>
#include <taglib/popularimeterframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/trueaudiofile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>

namespace velmora {

namespace {

std::string Trimmed(const TagLib::String& text) {
    std::string s = text.to8Bit(true);
    const auto first = s.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return s.substr(first, s.find_last_not_of(" \t") - first + 1);
}

bool ParseInt(const TagLib::String& text, long long& out) {
    const std::string s = Trimmed(text);
    if (s.empty()) return false;
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), out);
    return ec == std::errc() && end == s.data() + s.size();
}

// from_chars reads the point whatever the locale, as FMPS values are written.
bool ParseReal(const TagLib::String& text, double& out) {
    const std::string s = Trimmed(text);
    if (s.empty()) return false;
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), out);
    return ec == std::errc() && end == s.data() + s.size() && std::isfinite(out);
}

// FMPS values carry a point whatever the locale: 0.75 for 75.
TagLib::String FmpsText(int user_rating) {
    char text[24];
    std::snprintf(text, sizeof text, "%d.%02d", user_rating / 100, user_rating % 100);
    return TagLib::String(text);
}

int FromId3v2(TagLib::ID3v2::Tag* tag) {
    if (tag == nullptr) return 0;
    // Every player writes its own frame, told apart by its e-mail; the first
    // that holds a rating is taken.
    for (TagLib::ID3v2::Frame* frame : tag->frameList("POPM")) {
        auto* popm = dynamic_cast<TagLib::ID3v2::PopularimeterFrame*>(frame);
        if (popm == nullptr) continue;
        if (const int rating = UserRatingFromPopularimeter(popm->rating()); rating > 0) return rating;
    }
    if (auto* txxx = TagLib::ID3v2::UserTextIdentificationFrame::find(tag, "FMPS_Rating")) {
        const TagLib::StringList values = txxx->fieldList();  // the description, then the values
        double value = 0;
        if (values.size() > 1 && ParseReal(values[1], value)) return UserRatingFromFmps(value);
    }
    return 0;
}

int FromXiph(TagLib::Ogg::XiphComment* comment) {
    if (comment == nullptr) return 0;
    const TagLib::Ogg::FieldListMap& fields = comment->fieldListMap();
    if (auto it = fields.find("RATING"); it != fields.end() && !it->second.isEmpty()) {
        long long value = 0;
        if (ParseInt(it->second.front(), value)) return UserRatingFromPercent(value);
    }
    if (auto it = fields.find("FMPS_RATING"); it != fields.end() && !it->second.isEmpty()) {
        double value = 0;
        if (ParseReal(it->second.front(), value)) return UserRatingFromFmps(value);
    }
    return 0;
}

int FromMp4(TagLib::MP4::Tag* tag) {
    if (tag == nullptr || !tag->contains("rate")) return 0;
    const TagLib::MP4::Item item = tag->item("rate");
    long long value = 0;
    const TagLib::StringList texts = item.toStringList();
    if (!texts.isEmpty()) {
        if (!ParseInt(texts.front(), value)) return 0;
    } else {
        value = item.toInt();
    }
    return UserRatingFromPercent(value);
}

int FromAsf(TagLib::ASF::Tag* tag) {
    if (tag == nullptr || !tag->contains("WM/SharedUserRating")) return 0;
    const TagLib::ASF::AttributeList values = tag->attribute("WM/SharedUserRating");
    if (values.isEmpty()) return 0;
    const TagLib::ASF::Attribute& value = values.front();
    switch (value.type()) {
    case TagLib::ASF::Attribute::DWordType:
        return UserRatingFromWindowsMedia(value.toUInt());
    case TagLib::ASF::Attribute::QWordType:
        return UserRatingFromWindowsMedia(static_cast<long long>(std::min<unsigned long long>(value.toULongLong(), 99)));
    case TagLib::ASF::Attribute::WordType:
        return UserRatingFromWindowsMedia(value.toUShort());
    case TagLib::ASF::Attribute::UnicodeType: {
        long long number = 0;
        return ParseInt(value.toString(), number) ? UserRatingFromWindowsMedia(number) : 0;
    }
    default:
        return 0;
    }
}

constexpr const char* kOwnEmail = "Velmora II";

void WriteId3v2(TagLib::ID3v2::Tag* tag, int user_rating) {
    TagLib::ID3v2::FrameList popms = tag->frameList("POPM");
    if (user_rating <= 0) {
        tag->removeFrames("POPM");
    } else if (popms.isEmpty()) {
        auto* popm = new TagLib::ID3v2::PopularimeterFrame;
        popm->setEmail(kOwnEmail);
        popm->setRating(PopularimeterFromUserRating(user_rating));
        tag->addFrame(popm);
    } else {
        for (TagLib::ID3v2::Frame* frame : popms)
            if (auto* popm = dynamic_cast<TagLib::ID3v2::PopularimeterFrame*>(frame))
                popm->setRating(PopularimeterFromUserRating(user_rating));
    }
    // A rating another player keeps in a text frame would be read after a
    // removed POPM; it follows the new value too.
    if (auto* txxx = TagLib::ID3v2::UserTextIdentificationFrame::find(tag, "FMPS_Rating")) {
        if (user_rating <= 0) tag->removeFrame(txxx);
        else txxx->setText(FmpsText(user_rating));
    }
}

void WriteXiph(TagLib::Ogg::XiphComment* comment, int user_rating) {
    comment->removeFields("RATING");
    comment->removeFields("FMPS_RATING");
    if (user_rating <= 0) return;
    comment->addField("RATING", TagLib::String::number(user_rating));
    comment->addField("FMPS_RATING", FmpsText(user_rating));
}

}  // namespace

int PopularimeterFromUserRating(int user_rating) {
    if (user_rating <= 0) return 0;
    if (user_rating <= 12) return 1;
    if (user_rating <= 37) return 64;
    if (user_rating <= 62) return 128;
    if (user_rating <= 86) return 196;
    return 255;
}

bool WriteUserRating(TagLib::File& file, int user_rating) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        WriteId3v2(mpeg->ID3v2Tag(true), user_rating);
        return true;
    }
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(&file)) {
        WriteXiph(flac->xiphComment(true), user_rating);
        if (flac->hasID3v2Tag()) WriteId3v2(flac->ID3v2Tag(), user_rating);
        return true;
    }
    if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(&file)) {
        auto* comment = dynamic_cast<TagLib::Ogg::XiphComment*>(ogg->tag());
        if (comment == nullptr) return false;
        WriteXiph(comment, user_rating);
        return true;
    }
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        if (user_rating <= 0) mp4->tag()->removeItem("rate");
        else mp4->tag()->setItem("rate", TagLib::StringList(TagLib::String::number(user_rating)));
        return true;
    }
    if (auto* asf = dynamic_cast<TagLib::ASF::File*>(&file)) {
        if (user_rating <= 0) asf->tag()->removeItem("WM/SharedUserRating");
        else asf->tag()->setAttribute("WM/SharedUserRating", TagLib::ASF::Attribute(static_cast<unsigned>(user_rating)));
        return true;
    }
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file)) {
        WriteId3v2(wav->ID3v2Tag(), user_rating);
        return true;
    }
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&file)) {
        WriteId3v2(aiff->tag(), user_rating);
        return true;
    }
    return false;
}

int UserRatingFromPopularimeter(int value) {
    if (value <= 0) return 0;
    if (value < 32) return 1;
    if (value < 96) return 25;
    if (value < 160) return 50;
    if (value < 224) return 75;
    return 99;
}

int UserRatingFromPercent(long long value) {
    if (value <= 0) return 0;
    // Two stars of this program's own; by the star ranges it would fall to one.
    if (value == 25) return 25;
    if (value < 30) return 1;
    if (value < 50) return 25;
    if (value < 70) return 50;
    if (value < 90) return 75;
    return 99;
}

int UserRatingFromFmps(double value) {
    if (!(value > 0)) return 0;
    return UserRatingFromPercent(static_cast<int>(std::lround(std::min(value, 1.0) * 100)));
}

int UserRatingFromWindowsMedia(long long value) {
    return value <= 0 ? 0 : static_cast<int>(std::min(value, 99LL));
}

int ReadUserRating(TagLib::File& file) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) return FromId3v2(mpeg->ID3v2Tag());
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(&file)) {
        const int rating = FromXiph(flac->xiphComment());
        return rating > 0 ? rating : FromId3v2(flac->ID3v2Tag());
    }
    if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(&file))
        return FromXiph(dynamic_cast<TagLib::Ogg::XiphComment*>(ogg->tag()));
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) return FromMp4(mp4->tag());
    if (auto* asf = dynamic_cast<TagLib::ASF::File*>(&file)) return FromAsf(asf->tag());
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file)) return FromId3v2(wav->ID3v2Tag());
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&file)) return FromId3v2(aiff->tag());
    if (auto* tta = dynamic_cast<TagLib::TrueAudio::File*>(&file)) return FromId3v2(tta->ID3v2Tag());
    return 0;
}

}  // namespace velmora
