#include "platform/av_probe.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <system_error>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
}

namespace velmora {

namespace {

std::string AvErrorText(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return text;
}

std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
    return s;
}

void TakeTags(const AVDictionary* dict, std::map<std::string, std::string>& into) {
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(dict, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr)
        into.emplace(Lower(entry->key), entry->value);  // the first source to name a tag wins
}

struct InputCloser {
    void operator()(AVFormatContext* ctx) const { avformat_close_input(&ctx); }
};

}  // namespace

std::string AvProbe::Attribute(const std::string& name) const {
    auto tag = [this](const char* key) {
        auto it = tags.find(key);
        return it == tags.end() ? std::string() : it->second;
    };
    if (name == "Title") return tag("title");
    if (name == "Artist") return tag("artist");
    if (name == "Album") return tag("album");
    if (name == "Genre") return tag("genre");
    if (name == "Comment") return tag("comment");
    if (name == "WM/Year" || name == "Year") {
        // Containers give a date; the program wants the year in front of it.
        const std::string date = tag("date");
        return date.size() > 4 && std::isdigit(static_cast<unsigned char>(date[0])) ? date.substr(0, 4) : date;
    }
    if (name == "MediaType") return has_video ? "video" : "audio";
    if (name == "Bitrate") return bit_rate > 0 ? std::to_string(bit_rate) : std::string();
    if (name == "Filesize") return std::to_string(file_size);
    return {};
}

Result<AvProbe> ProbeContainer(const std::string& path) {
    std::error_code ec;
    const auto size = std::filesystem::file_size(path, ec);
    if (ec) return Error{path + ": " + ec.message()};

    // A broken file is reported to the caller; the library need not also
    // write to the terminal about it.
    av_log_set_level(AV_LOG_FATAL);
    AVFormatContext* raw = nullptr;
    if (int rc = avformat_open_input(&raw, path.c_str(), nullptr, nullptr); rc < 0)
        return Error{path + ": " + AvErrorText(rc)};
    std::unique_ptr<AVFormatContext, InputCloser> ctx(raw);
    if (int rc = avformat_find_stream_info(ctx.get(), nullptr); rc < 0)
        return Error{path + ": " + AvErrorText(rc)};

    AvProbe probe;
    probe.file_size = static_cast<int64_t>(size);
    if (ctx->duration != AV_NOPTS_VALUE && ctx->duration > 0)
        probe.duration = static_cast<double>(ctx->duration) / AV_TIME_BASE;
    probe.bit_rate = ctx->bit_rate;
    if (ctx->iformat != nullptr && ctx->iformat->name != nullptr) probe.format_name = ctx->iformat->name;
    TakeTags(ctx->metadata, probe.tags);
    for (unsigned i = 0; i < ctx->nb_streams; ++i) {
        const AVStream* stream = ctx->streams[i];
        const auto type = stream->codecpar->codec_type;
        const bool cover = (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
        if (type == AVMEDIA_TYPE_VIDEO && !cover) probe.has_video = true;
        if ((type == AVMEDIA_TYPE_VIDEO && !cover) || type == AVMEDIA_TYPE_AUDIO) probe.playable = true;
        TakeTags(stream->metadata, probe.tags);
    }
    return probe;
}

Result<AvProbe> ProbeMediaFile(const std::string& path) {
    auto probe = ProbeContainer(path);
    if (probe && !probe.value().playable) return Error{path + ": no audio or video stream"};
    return probe;
}

}  // namespace velmora
