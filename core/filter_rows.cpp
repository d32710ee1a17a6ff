#include "core/filter_rows.h"

namespace velmora {

namespace {

// A run of blanks is kCount and the run's length in one byte; kCount
// itself, which no text of the program should hold, is kCount and 0.
constexpr char kCount = '\x01';
constexpr size_t kShortestRun = 3;
constexpr size_t kLongestRun = 255;

std::string Pack(std::string_view row) {
    std::string packed;
    packed.reserve(row.size() / 3);
    for (size_t i = 0; i < row.size();) {
        if (row[i] == kCount) {
            packed += kCount;
            packed += '\0';
            ++i;
            continue;
        }
        size_t run = 0;
        while (i + run < row.size() && row[i + run] == ' ' && run < kLongestRun) ++run;
        if (run >= kShortestRun) {
            packed += kCount;
            packed += static_cast<char>(run);
            i += run;
        } else {
            packed += row[i++];
        }
    }
    return packed;
}

}  // namespace

void FilterRows::assign(size_t n) {
    m_rows.clear();
    for (size_t i = 0; i < n; ++i) m_rows.push_back({});
}

std::string FilterRows::operator[](size_t i) const {
    const std::string_view packed = m_rows[i];
    std::string row;
    row.reserve(packed.size() * 4);
    for (size_t k = 0; k < packed.size(); ++k) {
        if (packed[k] != kCount || k + 1 == packed.size()) {
            row += packed[k];
            continue;
        }
        const auto run = static_cast<unsigned char>(packed[++k]);
        if (run == 0)
            row += kCount;
        else
            row.append(run, ' ');
    }
    return row;
}

void FilterRows::Set(size_t i, std::string_view row) { m_rows.set(i, Pack(row)); }

bool operator==(const FilterRows& rows, const std::vector<std::string>& texts) {
    if (rows.size() != texts.size()) return false;
    for (size_t i = 0; i < texts.size(); ++i)
        if (rows[i] != texts[i]) return false;
    return true;
}

}  // namespace velmora
