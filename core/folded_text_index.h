#pragma once
// The rows of a list by their text without regard to case, for the exact
// find of a list box. It keeps no text: a row is filed under a 64-bit hash
// of its folded text, and a row found under the hash asked for is compared
// with the text itself, so two texts that share a hash are never confused.
// Eight bytes a slot, at least two slots a row: half a megabyte for a full
// Collection's paths, where a map of folded copies took nearly eight.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/packed_texts.h"

namespace velmora {

class FoldedTextIndex {
public:
    // Every row of `texts`, anew.
    void Build(const PackedTexts& texts);
    // Row `row` of `texts`, the last one, just appended.
    void Add(const PackedTexts& texts, int row);
    void Clear();

    // The first row behind `start` whose text is `text` without regard to
    // case, or failing that the first such row from the top; with start
    // outside the rows, the first from the top. -1 when there is none.
    int Find(const PackedTexts& texts, std::string_view text, int start) const;

private:
    struct Slot {
        uint32_t tag;  // the hash's upper half
        int32_t row;   // -1 when free
    };
    static uint64_t Hash(std::string_view folded);
    void Insert(uint64_t hash, int row);
    void Rebuild(const PackedTexts& texts, size_t room);

    std::vector<Slot> m_slots;  // open addressing, a power of two of them
    size_t m_rows = 0;
    mutable std::string m_folded, m_candidate;  // room reused by the folds
};

}  // namespace velmora
