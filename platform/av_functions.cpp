// The libavformat and libavutil functions the media reader calls, found in
// those libraries when the first file is read instead of linked with the
// program: a window that reads no file never opens them and the codec
// libraries they need. Without them no file opens, and the reason says so.
extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
}

#include <cerrno>
#include <cstdio>
#include <string>

#include "platform/shared_library.h"

namespace {

using velmora::Find_Function;
using velmora::SharedLibrary;

// The sonames carry the major versions built against.
SharedLibrary& Format() {
    static SharedLibrary library("libavformat.so." + std::to_string(LIBAVFORMAT_VERSION_MAJOR));
    return library;
}

SharedLibrary& Util() {
    static SharedLibrary library("libavutil.so." + std::to_string(LIBAVUTIL_VERSION_MAJOR));
    return library;
}

template <auto& Function>
auto* Real(SharedLibrary& library, const char* name) {
    static auto* const found = Find_Function<std::remove_reference_t<decltype(Function)>>(library, name);
    return found;
}
#define VELMORA_REAL(library, name) Real<name>(library(), #name)

}  // namespace

extern "C" {

// A context is only ever made here; the calls on one need no check.
int avformat_open_input(AVFormatContext** ps, const char* url, const AVInputFormat* fmt, AVDictionary** options) {
    const bool whole = VELMORA_REAL(Format, avformat_find_stream_info) && VELMORA_REAL(Format, avformat_close_input) &&
                       VELMORA_REAL(Util, av_dict_get);
    auto* real = VELMORA_REAL(Format, avformat_open_input);
    return whole && real != nullptr ? real(ps, url, fmt, options) : AVERROR(ENOSYS);
}

int avformat_find_stream_info(AVFormatContext* ic, AVDictionary** options) {
    return VELMORA_REAL(Format, avformat_find_stream_info)(ic, options);
}

void avformat_close_input(AVFormatContext** s) { VELMORA_REAL(Format, avformat_close_input)(s); }

AVDictionaryEntry* av_dict_get(const AVDictionary* m, const char* key, const AVDictionaryEntry* prev, int flags) {
    return VELMORA_REAL(Util, av_dict_get)(m, key, prev, flags);
}

void av_log_set_level(int level) {
    if (auto* real = VELMORA_REAL(Util, av_log_set_level)) real(level);
}

int av_strerror(int errnum, char* errbuf, size_t errbuf_size) {
    if (auto* real = VELMORA_REAL(Util, av_strerror)) return real(errnum, errbuf, errbuf_size);
    const std::string& why = Format().OpenError().empty() ? Util().OpenError() : Format().OpenError();
    std::snprintf(errbuf, errbuf_size, "%s", why.empty() ? "libavformat cannot be used" : why.c_str());
    return 0;
}

}  // extern "C"
