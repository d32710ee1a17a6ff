#include "cli/read_only_collection.h"

#include <ostream>

#include "core/track_table.h"

namespace velmora::cli {

namespace {

bool Fail(std::ostream& err, const std::string& message) {
    err << "velmora-cli: " << message << '\n';
    return false;
}

}  // namespace

ReadOnlyCollection::ReadOnlyCollection(const std::string& main_path)
    : m_files(Files_To_Read(Resolve_Collection(Collection_Paths_Of(main_path, "")).paths)) {}

bool ReadOnlyCollection::Read_Header(StoredHeader& h, std::ostream& err) {
    RecordFile main;
    const std::string& path = m_files.main;
    if (!main.Open(path, kMainRecordLength, RecordFile::Mode::ReadOnly)) return Fail(err, main.LastError());
    if (!Read_Version(main, h)) return Fail(err, path + ": " + main.LastError());
    if (h.Version_String.empty()) return true;
    if (h.Version_String != kCollectionVersion)
        return Fail(err, path + ": a Collection of another version (" + h.Version_String + ")");
    const ReadFaults faults = velmora::Read_Header(main, h);
    return !faults.Any() || Fail(err, path + ": " + faults.first);
}

bool ReadOnlyCollection::Check_Header(const StoredHeader& h, std::ostream& err) const {
    if (h.Track_Count > kMaxTracks)
        return Fail(err, m_files.main + ": " + std::to_string(h.Track_Count) +
                             " Tracks are more than a Collection can hold");
    const std::string fault = Header_Fault(h);
    return fault.empty() || Fail(err, m_files.main + ": " + fault);
}

bool ReadOnlyCollection::Check_Track(int32_t i, const StoredTrack& track, std::ostream& err) const {
    const std::string fault = Track_Fault(i, track);
    return fault.empty() || Fail(err, m_files.files + ": " + fault);
}

bool ReadOnlyCollection::Open_Tracks(std::ostream& err) {
    return m_tracks.Open(m_files.files, kFilesRecordLength, RecordFile::Mode::ReadOnly) ||
           Fail(err, m_tracks.LastError());
}

bool ReadOnlyCollection::Read_Track(int32_t i, StoredTrack& track, std::ostream& err) {
    return velmora::Read_Track(m_tracks, i, track) ||
           Fail(err, m_files.files + ": " + Track_Message(i, m_tracks.LastError()));
}

std::string ReadOnlyCollection::Filters_Path() const { return m_files.filters; }

bool ReadOnlyCollection::Read_Filters(StoredFilters& filters, std::ostream& err) {
    RecordFile file;
    const std::string& path = m_files.filters;
    if (!file.Open(path, kFiltersRecordLength, RecordFile::Mode::ReadOnly)) return Fail(err, file.LastError());
    FilterCounts counts{};
    const ReadFaults head = Read_Filter_Counts(file, counts);
    if (head.Any()) return Fail(err, path + ": " + head.first);
    const ReadFaults items = Read_Filter_Items(file, counts, [&](int list, int, const std::string* text) {
        if (!text) return;
        (list < filter_record::kValueBoxes ? filters.Boxes[list] : filters.List5).push_back(*text);
    });
    return !items.Any() || Fail(err, path + ": " + items.first);
}

}  // namespace velmora::cli
