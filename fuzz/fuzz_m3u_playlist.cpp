// Parse_M3u over any bytes: it must never crash, every text it gives must
// be UTF-8 whatever the encoding it guessed, and what it read must come back
// entry for entry from the list written of it.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "collection/m3u_playlist.h"
#include "collection/playlist_sources.h"

namespace {

using namespace velmora;

void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const PlaylistContents list = Parse_M3u(bytes);
    for (const PlaylistEntry& e : list.entries) {
        Check(Is_Utf8(e.source), "a source that is no UTF-8");
        Check(!e.source.empty() && e.source.front() != '#', "an empty or comment source");
        for (const auto& [name, value] : e.info) Check(Is_Utf8(name) && Is_Utf8(value), "an attribute not UTF-8");
        const std::string resolved = Resolve_Source(e.source, "/list/");
        Check(Is_Utf8(resolved), "a resolved path that is no UTF-8");
        // A local path comes out whole; a URL or another system's drive is kept as written.
        if (!resolved.empty() && resolved.front() == '/')
            Check(resolved.find("/../") == std::string::npos && resolved.find("/./") == std::string::npos &&
                      resolved.find("//") == std::string::npos,
                  "dots or double slashes left in a resolved path");
    }
    const PlaylistContents again = Parse_M3u(Write_M3u8(list.entries));
    Check(again.entries.size() == list.entries.size(), "entries lost in the written list");
    for (size_t i = 0; i < list.entries.size(); ++i) {
        Check(again.entries[i].source.size() == list.entries[i].source.size(), "a source changed in writing");
        Check(again.entries[i].getItemInfo("UserRating") == list.entries[i].getItemInfo("UserRating"),
              "a rating changed in writing");
    }
    return 0;
}
