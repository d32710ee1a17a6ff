#pragma once
// One Collection of two Tracks, Greek texts included, as its three files hold
// it byte for byte: the model's writer must produce these bytes, its load and
// velmora-cli must read them. They are built here field by field, apart from
// the writer, so that the program is checked against the format and not
// against itself.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace velmora::testing {

// Builds a record file byte by byte: each field little-endian at the start of
// its record, the record's rest zeros.
class RecordBytes {
public:
    explicit RecordBytes(size_t length) : m_length(length) {}
    RecordBytes& Integer(int64_t rec, int16_t v) { return Field(rec, Le(static_cast<uint16_t>(v), 2)); }
    RecordBytes& Long(int64_t rec, int32_t v) { return Field(rec, Le(static_cast<uint32_t>(v), 4)); }
    RecordBytes& Money(int64_t rec, int64_t raw) { return Field(rec, Le(static_cast<uint64_t>(raw), 8)); }
    // cp1253: the text's bytes as the file holds them.
    RecordBytes& Text(int64_t rec, const std::string& cp1253) { return Field(rec, Le(cp1253.size(), 2) + cp1253); }
    std::string bytes;
    // v in n bytes, little-endian.
    static std::string Le(uint64_t v, int n);

private:
    RecordBytes& Field(int64_t rec, const std::string& field);
    size_t m_length;
};

struct Golden {
    std::string main, files, filters;
};

// The golden Collection: the main file, the files side file and the filters
// side file. What they hold is told beside the bytes, in the source.
Golden Golden_Bytes();
// The golden filters side file; with `boxes`, value boxes 1, 2, ... hold
// those items (in code page 1253) before the same filter rows.
std::string Golden_Filters(const std::vector<std::vector<std::string>>& boxes = {});

// Where the three files of the Collection `name` lie in a program folder,
// with the suffixes the writer spells.
struct GoldenFiles {
    std::filesystem::path main, files, filters;
};
GoldenFiles Golden_Files_In(const std::string& folder, const std::string& name = "velmora");

// Writes g to those places, making the folders.
void Write_Golden(const GoldenFiles& at, const Golden& g = Golden_Bytes());

}  // namespace velmora::testing
