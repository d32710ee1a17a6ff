#include "cli/collection_reader.h"

#include <ostream>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "collection/collection_paths.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

// The main file's name less its extension (".qel": its last 4 characters).
std::string Less_Extension(const std::string& name) { return name.size() >= 4 ? name.substr(0, name.size() - 4) : ""; }

std::string Record_Error(const std::string& path, const RecordFile& file) { return path + ": " + file.LastError(); }

}  // namespace

CollectionFiles Files_Of(const std::string& main_path) {
    CollectionPaths paths;
    paths.main = main_path;
    const std::string stem = Less_Extension(main_path);
    paths.files = stem + "_files.qqel";
    paths.files_other = stem + "_Files.qqel";
    const size_t at = main_path.find("velmora_sylloges/");
    if (at != std::string::npos) {
        const std::string base = main_path.substr(0, at) + "velmora_filtra/" +
                                 Less_Extension(fs::path(main_path).filename().string());
        paths.filters = base + "_filters.qqel";
        paths.filters_other = base + "_Filters.qqel";
    }
    const FilesToRead read = Files_To_Read(paths);
    return {read.main, read.files, at == std::string::npos ? std::string() : read.filters};
}

bool Read_Header(const std::string& main_path, Header& h, std::string& error) {
    RecordFile file;
    if (!file.Open(main_path, kMainRecordLength, RecordFile::Mode::ReadOnly)) {
        error = file.LastError();
        return false;
    }
    // A file created and never written holds nothing, like one whose version
    // text is empty; one of another version is not read further.
    if (file.RecordCount() == 0) return true;
    if (!file.GetString(1, h.Version_String)) {
        error = Record_Error(main_path, file);
        return false;
    }
    if (h.Version_String != "5.0") return true;
    bool ok = file.GetString(2, h.Drive) && file.GetString(3, h.Dir) &&
              file.GetLong(4, h.Current_Track) && file.GetLong(5, h.Current_Position) &&
              file.GetLong(6, h.Track_Count) && file.GetInteger(7, h.Video_Mode) && file.GetString(11, h.Alarm_File);
    for (int c = 0; ok && c < 6; ++c) ok = file.GetInteger(12 + c, h.Class_Play[c]);
    ok = ok && file.GetLong(18, h.Played_Count) && file.GetLong(19, h.Played_High);
    if (!ok) error = Record_Error(main_path, file);
    return ok;
}

bool TrackStream::Open(const std::string& path, std::string& error) {
    m_path = path;
    if (m_file.Open(path, kFilesRecordLength, RecordFile::Mode::ReadOnly)) return true;
    error = m_file.LastError();
    return false;
}

bool TrackStream::Read(int32_t index, TrackRecord& t, std::string& error) {
    const int64_t base = int64_t{kRecordsPerTrack} * index;
    RecordFile& f = m_file;
    bool ok = f.GetLong(base + 1, t.Played_Number) && f.GetCurrency(base + 2, t.Duration) &&
              f.GetInteger(base + 3, t.Rating_Class) && f.GetCurrency(base + 4, t.File_Size) &&
              f.GetCurrency(base + 5, t.Stop_Position) && f.GetInteger(base + 6, t.Bitrate) &&
              f.GetString(base + 7, t.Artist) && f.GetString(base + 8, t.Genre) && f.GetString(base + 9, t.Album) &&
              f.GetString(base + 10, t.Title) && f.GetString(base + 11, t.Year) &&
              f.GetString(base + 12, t.Track_Path) && f.GetBoolean(base + 13, t.Identified);
    for (int j = 0; ok && j < 16; ++j)
        ok = f.GetInteger(base + 14 + 2 * j, t.Slot_Value[j]) && f.GetString(base + 15 + 2 * j, t.Slot_Text[j]);
    if (!ok) error = Record_Error(m_path, f) + " (Track " + std::to_string(index) + ")";
    return ok;
}

bool Read_Filters(const std::string& path, FilterLists& lists, std::string& error) {
    RecordFile file;
    if (!file.Open(path, kFiltersRecordLength, RecordFile::Mode::ReadOnly)) {
        error = file.LastError();
        return false;
    }
    std::array<int16_t, kFilterBoxes + 1> counts{};
    int64_t record = 1;
    for (int16_t& n : counts) {
        if (!file.GetInteger(record++, n)) {
            error = Record_Error(path, file);
            return false;
        }
    }
    auto read_list = [&](std::vector<std::string>& list, int count) {
        for (int i = 0; i < count; ++i) {
            std::string item;
            if (!file.GetString(record++, item)) {
                error = Record_Error(path, file);
                return false;
            }
            list.push_back(std::move(item));
        }
        return true;
    };
    for (int b = 0; b < kFilterBoxes; ++b)
        if (!read_list(lists.Boxes[b], std::max<int>(0, counts[b]))) return false;
    // Record 9 holds List5's count less one.
    return read_list(lists.List5, std::max<int>(0, counts[kFilterBoxes] + 1));
}

bool Read_Current_Header(const std::string& main_path, Header& header, std::ostream& err) {
    std::string error;
    if (!Read_Header(main_path, header, error)) {
        err << "velmora-cli: " << error << '\n';
        return false;
    }
    if (!header.Version_String.empty() && header.Version_String != "5.0") {
        err << "velmora-cli: " << main_path << ": a Collection of another version (" << header.Version_String
            << ")\n";
        return false;
    }
    return true;
}

}  // namespace velmora::cli
