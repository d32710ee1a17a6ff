#pragma once
// A Collection as the commands that only look at it see it: read through the
// load's own readers, with no program started and nothing created, moved or
// written. Every failure is told on the given stream, naming the file.

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "base/record_file.h"
#include "collection/collection_paths.h"
#include "collection/stored_collection.h"

namespace velmora::cli {

struct StoredFilters {
    std::array<std::vector<std::string>, filter_record::kValueBoxes> Boxes;  // Combo4_0 index 1 to 8
    std::vector<std::string> List5;
};

class ReadOnlyCollection {
public:
    // The files a load of this main file would read. There is no filters
    // side file when the main file lies in no collections folder, as there
    // is then no filter folder to look in.
    explicit ReadOnlyCollection(const std::string& main_path);

    // The header of this program's version. A file created and never saved
    // gives its empty version text alone.
    bool Read_Header(StoredHeader& header, std::ostream& err);
    // What keeps the program's load from reading it whole, beyond what
    // cannot be read at all, told in the load's own words.
    bool Check_Header(const StoredHeader& header, std::ostream& err) const;
    // The Tracks, one at a time, so a command never holds the whole table.
    bool Open_Tracks(std::ostream& err);
    bool Read_Track(int32_t i, StoredTrack& track, std::ostream& err);
    bool Check_Track(int32_t i, const StoredTrack& track, std::ostream& err) const;
    // Empty when there is no filters side file.
    std::string Filters_Path() const;
    // What can be read; false when anything could not.
    bool Read_Filters(StoredFilters& filters, std::ostream& err);

private:
    FilesToRead m_files;
    RecordFile m_tracks;
};

}  // namespace velmora::cli
