#include "core/controls.h"

#include <algorithm>

#include "base/codepage1253.h"

namespace velmora {

std::string_view ListBox::List(int index) const {
    if (index < 0 || index >= ListCount()) return {};
    return m_items[static_cast<size_t>(index)];
}

void ListBox::SetList(int index, std::string_view text) {
    // The same text again changes nothing: no redraw, and the revision stays,
    // so whoever stored the items still knows them current.
    if (index < 0 || index >= ListCount() || m_items[static_cast<size_t>(index)] == text) return;
    m_items.set(static_cast<size_t>(index), text);
    m_index_valid = false;
    Touch(index);
}

int ListBox::SortedPosition(std::string_view text) const {
    const std::string key = FoldCase(text);
    auto it = std::upper_bound(m_items.begin(), m_items.end(), key,
                               [](const std::string& k, std::string_view item) { return k < FoldCase(item); });
    return static_cast<int>(it - m_items.begin());
}

int ListBox::AddItem(std::string_view text, int index) {
    int row = ListCount();
    if (m_sorted) {
        row = SortedPosition(text);
    } else if (index >= 0 && index < ListCount()) {
        row = index;
    }
    if (row == ListCount()) {
        m_items.push_back(text);
        m_selected.push_back(0);
        if (m_index_valid) m_index.Add(m_items, row);
    } else {
        m_items.insert(static_cast<size_t>(row), text);
        m_selected.insert(m_selected.begin() + row, 0);
        m_index_valid = false;
        if (m_list_index >= row) ++m_list_index;
    }
    Touch();
    return row;
}

void ListBox::RemoveItem(int index) {
    if (index < 0 || index >= ListCount()) return;
    m_items.erase(static_cast<size_t>(index));
    m_selected.erase(m_selected.begin() + index);
    m_index_valid = false;
    if (m_list_index == index) m_list_index = -1;
    else if (m_list_index > index) --m_list_index;
    Touch();
}

void ListBox::Clear() {
    m_items.clear();
    m_items.shrink_to_fit();
    m_selected.clear();
    m_index.Clear();
    m_index_valid = true;
    m_list_index = -1;
    m_top_index = 0;
    Touch();
}

void ListBox::Assign(PackedTexts items) {
    if (m_sorted) {
        std::vector<std::string> sorted(items.begin(), items.end());
        std::stable_sort(sorted.begin(), sorted.end(), [](const std::string& a, const std::string& b) {
            return FoldCase(a) < FoldCase(b);
        });
        items = PackedTexts(sorted);
    }
    // Whoever built the items may have left room for growth; a box keeps none.
    items.shrink_to_fit();
    m_items = std::move(items);
    m_selected.assign(m_items.size(), 0);
    m_index.Clear();
    m_index_valid = false;
    m_list_index = -1;
    m_top_index = 0;
    Touch();
}

void ListBox::SetListIndex(int index) {
    if (index < -1 || index >= ListCount()) index = -1;
    if (index != m_list_index) {
        m_list_index = index;
        if (!m_multi_select) {
            std::fill(m_selected.begin(), m_selected.end(), 0);
            if (index >= 0) m_selected[index] = 1;
        }
        Changed.emit(Change::Index);
    }
    Index_Chosen(index);
    Click.emit();
}

bool ListBox::Selected(int index) const {
    if (index < 0 || index >= ListCount()) return false;
    return m_selected[index] != 0;
}

void ListBox::SetSelected(int index, bool on) {
    // A change of selection made by the program raises Click as a user's
    // would: the handlers fence themselves with Suppress_Events where the
    // program selects rows in bulk.
    if (Store_Selected(index, on)) Click.emit();
}

bool ListBox::Store_Selected(int index, bool on) {
    if (index < 0 || index >= ListCount()) return false;
    if ((m_selected[index] != 0) == on) return false;
    if (!m_multi_select && on) std::fill(m_selected.begin(), m_selected.end(), 0);
    m_selected[index] = on ? 1 : 0;
    Changed.emit(Change::Selection);
    return true;
}

int ListBox::SelCount() const {
    return static_cast<int>(std::count(m_selected.begin(), m_selected.end(), 1));
}

int ListBox::FindExact(std::string_view text, int start) const {
    if (m_items.empty()) return -1;
    if (!m_index_valid) {
        m_index.Build(m_items);
        m_index_valid = true;
    }
    return m_index.Find(m_items, text, start);
}

int ListBox::FindPrefix(std::string_view text, int start) const {
    const int n = ListCount();
    if (n == 0) return -1;
    const std::string prefix = FoldCase(text);
    std::string head;
    if (start < 0 || start >= n) start = n - 1;
    for (int k = 1; k <= n; ++k) {
        const int row = (start + k) % n;
        const std::string_view item = m_items[static_cast<size_t>(row)];
        // Folding keeps the byte length, so the item's head folds to the same
        // length as the prefix.
        if (item.size() >= prefix.size() && FoldCaseInto(item.substr(0, prefix.size()), head) == prefix)
            return row;
    }
    return -1;
}

void TextBox::Cut_To_Keep(std::string& text) const {
    if (m_keep_bytes == 0 || text.size() <= m_keep_bytes) return;
    size_t end = text.rfind('\n', m_keep_bytes);
    if (end == std::string::npos) {
        // One long line: cut it between characters.
        end = m_keep_bytes;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    }
    text.resize(end);
}

void TextBox::SetText(std::string text) {
    m_heads.clear();
    m_head_ends.clear();
    Cut_To_Keep(text);
    Set(m_text, std::move(text), Change::Contents);
}

void TextBox::Prepend(std::string_view head) {
    if (head.empty()) return;
    m_heads.append(head);
    m_head_ends.push_back(m_heads.size());
    // Waiting heads never hold more than the box keeps.
    if (m_keep_bytes != 0 && m_heads.size() > m_keep_bytes) Join_Heads();
    Changed.emit(Change::Contents);
}

void TextBox::Join_Heads() const {
    std::string joined;
    joined.reserve(m_heads.size() + std::min(m_text.size(), m_keep_bytes == 0 ? m_text.size() : m_keep_bytes));
    size_t end = m_heads.size();
    for (auto it = m_head_ends.rbegin(); it != m_head_ends.rend(); ++it) {
        const size_t begin = std::next(it) == m_head_ends.rend() ? 0 : *std::next(it);
        joined.append(m_heads, begin, end - begin);
        end = begin;
    }
    // Only what can be kept of the old text is copied. Cutting once after
    // the join keeps the same whole lines as cutting after every head did.
    const size_t room = m_keep_bytes == 0 ? m_text.size() : std::min(m_text.size(), m_keep_bytes + 1);
    joined.append(m_text, 0, room);
    Cut_To_Keep(joined);
    m_text = std::move(joined);
    m_heads.clear();
    m_head_ends.clear();
}

std::string_view TextBox::First_Line() const {
    std::string_view text = m_head_ends.empty()
                                ? std::string_view(m_text)
                                : std::string_view(m_heads).substr(m_head_ends.size() == 1 ? 0 : m_head_ends.end()[-2]);
    if (m_head_ends.size() > 0 && text.find('\n') == std::string_view::npos) {
        // A head without a line break runs on into the one before it; join
        // then, which is rare.
        Join_Heads();
        text = m_text;
    }
    return text.substr(0, text.find('\n'));
}

void ListBox::Touch(int item) {
    static uint64_t last_revision = 0;
    m_last_item = item;
    m_revision = ++last_revision;
    Changed.emit(Change::Contents);
}

}  // namespace velmora
