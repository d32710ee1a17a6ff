#pragma once
// .wpl (SMIL) and .wvx (ASX) play lists read by Qt's XML reader.

#include "core/playlist_reader.h"

namespace velmora {

class QtPlaylistReader : public PlaylistXmlReader {
public:
    bool Read(std::string_view bytes, PlaylistContents& out) override;
};

// SMIL's and ASX's clock values in seconds: "205s", "205", "3:25",
// "00:03:25.5", "3.5min", "1h"; 0 for what is none of them.
double Clock_Seconds(std::string_view value);

}  // namespace velmora
