#pragma once
// Media files and a Collection that plays them, made by the tests at run
// time: no media file is kept in the sources.

#include <cstdint>
#include <string>

#include "support/golden_collection.h"

namespace velmora::testing {

// A 16-bit mono WAV of 8,000 samples a second holding `samples` samples of
// silence. Its RIFF and data sizes are the true ones unless `declared` is
// given, which both then state instead.
std::string Wav_Bytes(uint32_t samples, int64_t declared = -1);

// The golden Collection with its two Tracks on these paths (each Track's own
// class, B and A, both of them played), nothing yet played in this cycle,
// resuming at the start of the first Track.
Golden Golden_With_Paths(const std::string& first, const std::string& second);

}  // namespace velmora::testing
