#pragma once
// A sequence of texts kept one after another in one buffer, each found by
// its start and length. A list of 32,766 paths as string objects costs a
// 32-byte object and a heap block per row besides the text; here a row
// costs its bytes and eight more. Texts may hold any byte, NUL included.
//
// Rows are inserted and removed by moving their spans, not their bytes: a
// removed or replaced text leaves its bytes unused until they are as many
// as those in use, and the buffer is then packed again in one pass.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class PackedTexts {
public:
    class const_iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = std::string_view;

        const_iterator() = default;
        std::string_view operator*() const { return (*m_texts)[m_row]; }
        std::string_view operator[](difference_type n) const { return (*m_texts)[m_row + static_cast<size_t>(n)]; }
        const_iterator& operator++() { return ++m_row, *this; }
        const_iterator operator++(int) { const_iterator was = *this; return ++m_row, was; }
        const_iterator& operator--() { return --m_row, *this; }
        const_iterator operator--(int) { const_iterator was = *this; return --m_row, was; }
        const_iterator& operator+=(difference_type n) { return m_row += static_cast<size_t>(n), *this; }
        const_iterator& operator-=(difference_type n) { return m_row -= static_cast<size_t>(n), *this; }
        friend const_iterator operator+(const_iterator it, difference_type n) { return it += n; }
        friend const_iterator operator+(difference_type n, const_iterator it) { return it += n; }
        friend const_iterator operator-(const_iterator it, difference_type n) { return it -= n; }
        friend difference_type operator-(const const_iterator& a, const const_iterator& b) {
            return static_cast<difference_type>(a.m_row) - static_cast<difference_type>(b.m_row);
        }
        friend bool operator==(const const_iterator& a, const const_iterator& b) { return a.m_row == b.m_row; }
        friend auto operator<=>(const const_iterator& a, const const_iterator& b) { return a.m_row <=> b.m_row; }

    private:
        friend class PackedTexts;
        const_iterator(const PackedTexts* texts, size_t row) : m_texts(texts), m_row(row) {}
        const PackedTexts* m_texts = nullptr;
        size_t m_row = 0;
    };
    using iterator = const_iterator;
    using value_type = std::string_view;
    using size_type = size_t;

    PackedTexts() = default;
    explicit PackedTexts(const std::vector<std::string>& texts);

    size_t size() const { return m_spans.size(); }
    bool empty() const { return m_spans.empty(); }
    std::string_view operator[](size_t row) const {
        const Span span = m_spans[row];
        return std::string_view(m_bytes.data() + span.start, span.length);
    }
    const_iterator begin() const { return {this, 0}; }
    const_iterator end() const { return {this, size()}; }

    void push_back(std::string_view text);
    // Before row `row`; at size() it appends.
    void insert(size_t row, std::string_view text);
    void erase(size_t row);
    void set(size_t row, std::string_view text);
    void append(const PackedTexts& more);
    void clear();
    // Room for `rows` rows of `bytes` bytes in all, beyond those held.
    void reserve(size_t rows, size_t bytes);
    // Drops the unused bytes and the room kept for growth.
    void shrink_to_fit();
    // The buffer's length: the texts' bytes and those no row uses any more.
    size_t buffer_bytes() const { return m_bytes.size(); }

    friend bool operator==(const PackedTexts& a, const PackedTexts& b);
    friend bool operator==(const PackedTexts& a, const std::vector<std::string>& b);

private:
    struct Span {
        uint32_t start;
        uint32_t length;
    };
    Span Store(std::string_view text);
    void Drop(size_t bytes);  // bytes no row uses any more
    void Pack();

    std::string m_bytes;
    std::vector<Span> m_spans;
    size_t m_unused = 0;  // bytes of m_bytes that no row refers to
};

}  // namespace velmora
