#pragma once
// The picture a media file carries inside it: ID3v2 APIC (MP3, WAV, AIFF),
// FLAC and Xiph METADATA_BLOCK_PICTURE, MP4 covr, ASF WM/Picture.

#include <string>

namespace velmora {

// The bytes of the front cover, else of the first picture; empty when the
// file has none or cannot be read. Never throws.
std::string Embedded_Picture(const std::string& path);

}  // namespace velmora
