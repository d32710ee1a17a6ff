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
// Saves these rows whole as the Collection `name` (".qel" added) of the
// program folder `folder`, by the program's own save; `played` gives the
// first rows' Played_Number. Returns the main file's path.
std::string Write_Collection(const std::string& folder, const std::string& name, const std::vector<TrackRow>& rows,
                             const std::vector<int32_t>& played = {});

}  // namespace velmora::testing
