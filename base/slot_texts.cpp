#include "base/slot_texts.h"

#include <limits>

namespace velmora {

void SlotTexts::Set(int slot, std::string_view text) {
    // A stored text has at most a record's length of characters, each at
    // most three bytes long here; the length field holds far more.
    text = text.substr(0, std::numeric_limits<uint16_t>::max());
    uint16_t& length = m_length[static_cast<size_t>(slot)];
    m_data.replace(Start(slot), length, text);
    length = static_cast<uint16_t>(text.size());
}

void SlotTexts::Fill(std::string_view text) {
    text = text.substr(0, std::numeric_limits<uint16_t>::max());
    m_data.clear();
    for (int s = 0; s < kSlotCount; ++s) m_data.append(text);
    m_length.fill(static_cast<uint16_t>(text.size()));
}

void SlotTexts::Assign(const std::array<std::string, kSlotCount>& texts) {
    m_data.clear();
    for (size_t s = 0; s < texts.size(); ++s) {
        const std::string_view text = std::string_view(texts[s]).substr(0, std::numeric_limits<uint16_t>::max());
        m_data.append(text);
        m_length[s] = static_cast<uint16_t>(text.size());
    }
}

}  // namespace velmora
