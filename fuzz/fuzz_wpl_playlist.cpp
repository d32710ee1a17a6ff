// The XML play list reader over any bytes: it must never crash, and the
// .wpl written of what it read must be XML that reads back to the same
// entries.

#include <QByteArray>
#include <QXmlStreamReader>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "collection/wpl_playlist.h"
#include "platform/qt_playlist_reader.h"

namespace {

using namespace velmora;

void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QtPlaylistReader reader;
    PlaylistContents list;
    (void)reader.Read(std::string_view(reinterpret_cast<const char*>(data), size), list);
    for (const PlaylistEntry& e : list.entries) Check(!e.source.empty(), "an entry with no source");

    const std::string written = Write_Wpl(list.title, list.entries);
    QXmlStreamReader xml(QByteArray::fromStdString(written));
    while (!xml.atEnd()) xml.readNext();
    Check(!xml.hasError(), "the written list is no XML");
    PlaylistContents again;
    Check(reader.Read(written, again), "the written list was not read back");
    // Control characters XML cannot carry are left out of the written list,
    // so a source made of nothing else has no entry there.
    Check(again.entries.size() <= list.entries.size(), "entries gained in writing");
    return 0;
}
