#pragma once
// The Track list of a started program, filled as a load leaves it: paths in
// List2, the mirror texts, the table's columns, the totals recounted from the
// class letters, and the first row standing as the first played, to resume.

#include <string>
#include <vector>

#include "core/app_context.h"

namespace velmora::testing {

struct TestApp;

struct TrackRow {
    std::string path;
    double seconds = 0;  // 0 leaves the time mirror empty, as before identification
    int rating = 0;
    double megabytes = 0;
    int bitrate = 0;
};

void Fill_Tracks(AppContext& ctx, const std::vector<TrackRow>& rows);
// Writes each row's path as a small file and gives the playing engines its length.
void Make_Files(TestApp& app, const std::vector<TrackRow>& rows);
// n rows "dir/track_000.mp3"... of `seconds` each.
std::vector<TrackRow> Numbered_Rows(const std::string& dir, int n, double seconds);

}  // namespace velmora::testing
