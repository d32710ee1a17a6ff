#include "base/packed_texts.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace velmora {

namespace {
// Below this many unused bytes a buffer is not worth packing again.
constexpr size_t kFewUnusedBytes = 256;
}  // namespace

PackedTexts::PackedTexts(const std::vector<std::string>& texts) {
    size_t bytes = 0;
    for (const std::string& text : texts) bytes += text.size();
    reserve(texts.size(), bytes);
    for (const std::string& text : texts) push_back(text);
}

PackedTexts::Span PackedTexts::Store(std::string_view text) {
    // Spans hold 32-bit starts: a buffer that would outgrow them is packed
    // first, and refused when its texts alone are too many bytes.
    constexpr size_t kMost = std::numeric_limits<uint32_t>::max();
    if (m_bytes.size() + text.size() > kMost && m_unused > 0) Pack();
    if (m_bytes.size() + text.size() > kMost) throw std::length_error("PackedTexts: more than 4 GB of text");
    const Span span{static_cast<uint32_t>(m_bytes.size()), static_cast<uint32_t>(text.size())};
    m_bytes.append(text);
    return span;
}

void PackedTexts::Drop(size_t bytes) {
    m_unused += bytes;
    if (m_unused > kFewUnusedBytes && m_unused > m_bytes.size() - m_unused) Pack();
}

void PackedTexts::Pack() {
    std::string packed;
    packed.reserve(m_bytes.size() - m_unused);
    for (Span& span : m_spans) {
        const uint32_t start = static_cast<uint32_t>(packed.size());
        packed.append(m_bytes, span.start, span.length);
        span.start = start;
    }
    m_bytes = std::move(packed);
    m_unused = 0;
}

void PackedTexts::push_back(std::string_view text) { m_spans.push_back(Store(text)); }

void PackedTexts::insert(size_t row, std::string_view text) {
    const Span span = Store(text);
    m_spans.insert(m_spans.begin() + static_cast<std::ptrdiff_t>(std::min(row, size())), span);
}

void PackedTexts::erase(size_t row) {
    const Span span = m_spans[row];
    m_spans.erase(m_spans.begin() + static_cast<std::ptrdiff_t>(row));
    Drop(span.length);
}

void PackedTexts::set(size_t row, std::string_view text) {
    Span& span = m_spans[row];
    const uint32_t old_length = span.length;
    if (text.size() <= old_length) {
        // Written over the old text; its tail is left unused.
        std::copy(text.begin(), text.end(), m_bytes.begin() + span.start);
        span.length = static_cast<uint32_t>(text.size());
        Drop(old_length - text.size());
        return;
    }
    const Span stored = Store(text);  // may pack, which moves every span
    m_spans[row] = stored;
    Drop(old_length);
}

void PackedTexts::append(const PackedTexts& more) {
    reserve(more.size(), more.m_bytes.size() - more.m_unused);
    for (std::string_view text : more) push_back(text);
}

void PackedTexts::clear() {
    m_bytes.clear();
    m_spans.clear();
    m_unused = 0;
}

void PackedTexts::reserve(size_t rows, size_t bytes) {
    m_spans.reserve(m_spans.size() + rows);
    m_bytes.reserve(m_bytes.size() + bytes);
}

void PackedTexts::shrink_to_fit() {
    if (m_unused > 0) Pack();
    m_bytes.shrink_to_fit();
    m_spans.shrink_to_fit();
}

bool operator==(const PackedTexts& a, const PackedTexts& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
}

bool operator==(const PackedTexts& a, const std::vector<std::string>& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
}

}  // namespace velmora
