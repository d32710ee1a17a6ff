#pragma once
// The catalogue's cached rows, one per Track. A row is some five hundred
// characters of fixed-width fields, most of them blanks; runs of blanks are
// kept as a count, so that a typical Track's row takes a quarter of its
// width. A full Collection's rows then cost a few megabytes, not eighteen.

#include <string>
#include <string_view>
#include <vector>

#include "base/packed_texts.h"

namespace velmora {

class FilterRows {
public:
    size_t size() const { return m_rows.size(); }
    bool empty() const { return m_rows.empty(); }
    // n rows, each empty.
    void assign(size_t n);
    // Room for `bytes` bytes of packed rows, beyond those held.
    void reserve(size_t bytes) { m_rows.reserve(0, bytes); }
    // The row as it reads, blanks and all.
    std::string operator[](size_t i) const;
    void Set(size_t i, std::string_view row);

    friend bool operator==(const FilterRows& rows, const std::vector<std::string>& texts);

private:
    PackedTexts m_rows;
};

}  // namespace velmora
