#include "core/filter_rows.h"

#include <algorithm>
#include <cstring>

namespace velmora {

namespace {

// A run of blanks is kCount and the run's length in one byte; kCount
// itself, which no text of the program should hold, is kCount and 0.
constexpr char kCount = '\x01';
constexpr size_t kShortestRun = 3;
constexpr size_t kLongestRun = 255;

// The packed form of `row` into `packed`, whose room serves the next row
// too. Words are copied whole between the blanks, which the library finds.
void Pack(std::string_view row, std::string& packed) {
    // At its longest a packed row is the row with every kCount doubled.
    packed.resize(row.size() * 2);
    char* out = packed.data();
    auto copy_words = [&out](std::string_view words) {
        if (words.find(kCount) == words.npos) {
            std::memcpy(out, words.data(), words.size());
            out += words.size();
            return;
        }
        for (char c : words) {
            *out++ = c;
            if (c == kCount) *out++ = '\0';
        }
    };
    size_t i = 0;
    while (i < row.size()) {
        const size_t blank = std::min(row.find(' ', i), row.size());
        copy_words(row.substr(i, blank - i));
        i = blank;
        size_t run = 0;
        while (i + run < row.size() && row[i + run] == ' ' && run < kLongestRun) ++run;
        if (run >= kShortestRun) {
            *out++ = kCount;
            *out++ = static_cast<char>(run);
        } else {
            std::memset(out, ' ', run);
            out += run;
        }
        i += run;
    }
    packed.resize(static_cast<size_t>(out - packed.data()));
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

void FilterRows::Set(size_t i, std::string_view row) {
    // A load sets tens of thousands of rows: one buffer packs them all.
    static thread_local std::string packed;
    Pack(row, packed);
    m_rows.set(i, packed);
}

bool operator==(const FilterRows& rows, const std::vector<std::string>& texts) {
    if (rows.size() != texts.size()) return false;
    for (size_t i = 0; i < texts.size(); ++i)
        if (rows[i] != texts[i]) return false;
    return true;
}

}  // namespace velmora
