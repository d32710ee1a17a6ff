#include "platform/embedded_art.h"

#include <taglib/aifffile.h>
#include <taglib/asffile.h>
#include <taglib/asfpicture.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <exception>

namespace velmora {

namespace {

std::string Bytes(const TagLib::ByteVector& data) { return std::string(data.data(), data.size()); }

std::string From_Id3v2(TagLib::ID3v2::Tag* tag) {
    if (tag == nullptr) return {};
    std::string first;
    for (TagLib::ID3v2::Frame* frame : tag->frameList("APIC")) {
        auto* picture = dynamic_cast<TagLib::ID3v2::AttachedPictureFrame*>(frame);
        if (picture == nullptr) continue;
        if (picture->type() == TagLib::ID3v2::AttachedPictureFrame::FrontCover) return Bytes(picture->picture());
        if (first.empty()) first = Bytes(picture->picture());
    }
    return first;
}

std::string From_Flac_List(const TagLib::List<TagLib::FLAC::Picture*>& pictures) {
    std::string first;
    for (const TagLib::FLAC::Picture* picture : pictures) {
        if (picture->type() == TagLib::FLAC::Picture::FrontCover) return Bytes(picture->data());
        if (first.empty()) first = Bytes(picture->data());
    }
    return first;
}

std::string Read(const std::string& path) {
    TagLib::FileRef ref(path.c_str(), false);
    if (ref.isNull()) return {};
    TagLib::File* file = ref.file();
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) return From_Id3v2(mpeg->ID3v2Tag());
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
        std::string found = From_Flac_List(flac->pictureList());
        if (found.empty() && flac->hasXiphComment()) found = From_Flac_List(flac->xiphComment()->pictureList());
        return found.empty() ? From_Id3v2(flac->ID3v2Tag()) : found;
    }
    if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(file)) {
        auto* comment = dynamic_cast<TagLib::Ogg::XiphComment*>(ogg->tag());
        return comment != nullptr ? From_Flac_List(comment->pictureList()) : std::string();
    }
    if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
        if (mp4->tag() == nullptr || !mp4->tag()->contains("covr")) return {};
        const TagLib::MP4::CoverArtList covers = mp4->tag()->item("covr").toCoverArtList();
        return covers.isEmpty() ? std::string() : Bytes(covers.front().data());
    }
    if (auto* asf = dynamic_cast<TagLib::ASF::File*>(file)) {
        if (asf->tag() == nullptr || !asf->tag()->contains("WM/Picture")) return {};
        std::string first;
        for (const TagLib::ASF::Attribute& attribute : asf->tag()->attribute("WM/Picture")) {
            const TagLib::ASF::Picture picture = attribute.toPicture();
            if (!picture.isValid()) continue;
            if (picture.type() == TagLib::ASF::Picture::FrontCover) return Bytes(picture.picture());
            if (first.empty()) first = Bytes(picture.picture());
        }
        return first;
    }
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file))
        return wav->hasID3v2Tag() ? From_Id3v2(wav->ID3v2Tag()) : std::string();
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file))
        return aiff->hasID3v2Tag() ? From_Id3v2(aiff->tag()) : std::string();
    return {};
}

}  // namespace

std::string Embedded_Picture(const std::string& path) {
    try {
        return Read(path);
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace velmora
