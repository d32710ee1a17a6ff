#include "core/folded_text_index.h"

#include <algorithm>
#include <functional>

#include "base/codepage1253.h"

namespace velmora {

uint64_t FoldedTextIndex::Hash(std::string_view folded) { return std::hash<std::string_view>{}(folded); }

void FoldedTextIndex::Clear() {
    m_slots.clear();
    m_slots.shrink_to_fit();
    m_rows = 0;
}

void FoldedTextIndex::Insert(uint64_t hash, int row) {
    const size_t mask = m_slots.size() - 1;
    size_t at = hash & mask;
    while (m_slots[at].row >= 0) at = (at + 1) & mask;
    m_slots[at] = Slot{static_cast<uint32_t>(hash >> 32), row};
    ++m_rows;
}

// Every row of texts filed anew, with room for `room` rows, at most half full.
void FoldedTextIndex::Rebuild(const PackedTexts& texts, size_t room) {
    size_t slots = 16;
    while (slots < 2 * std::max(room, texts.size())) slots *= 2;
    m_slots.assign(slots, Slot{0, -1});
    m_rows = 0;
    for (size_t row = 0; row < texts.size(); ++row)
        Insert(Hash(FoldCaseInto(texts[row], m_folded)), static_cast<int>(row));
}

void FoldedTextIndex::Build(const PackedTexts& texts) { Rebuild(texts, texts.size()); }

void FoldedTextIndex::Add(const PackedTexts& texts, int row) {
    // Doubling keeps adds with a find before each one linear in all; the
    // rebuild files the new row with the others.
    if (2 * (m_rows + 1) > m_slots.size()) {
        Rebuild(texts, 2 * (m_rows + 1));
        return;
    }
    Insert(Hash(FoldCaseInto(texts[static_cast<size_t>(row)], m_folded)), row);
}

int FoldedTextIndex::Find(const PackedTexts& texts, std::string_view text, int start) const {
    if (m_slots.empty()) return -1;
    const std::string& folded = FoldCaseInto(text, m_folded);
    const uint64_t hash = Hash(folded);
    const auto tag = static_cast<uint32_t>(hash >> 32);
    const bool from_top = start < 0 || static_cast<size_t>(start) >= texts.size();
    int first = -1;
    const size_t mask = m_slots.size() - 1;
    // Rows of one text lie in one run of taken slots, in the order they
    // were filed, which is theirs: the first that matches is the top one.
    for (size_t at = hash & mask; m_slots[at].row >= 0; at = (at + 1) & mask) {
        const Slot slot = m_slots[at];
        if (slot.tag != tag) continue;
        const std::string_view item = texts[static_cast<size_t>(slot.row)];
        // Folding keeps the length, so a text of another length never matches.
        if (item.size() != folded.size() || FoldCaseInto(item, m_candidate) != folded) continue;
        if (first < 0) first = slot.row;
        if (from_top || slot.row > start) return slot.row;
    }
    return first;
}

}  // namespace velmora
