#pragma once
// The sixteen slot texts of one Track, packed into one string. Nearly every
// slot holds "0" or nothing, and sixteen string objects a row would cost half
// a kilobyte a Track: 17 MB of a full Collection's memory for texts of a
// byte or none.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

constexpr int kSlotCount = 16;

class SlotTexts {
public:
    // Sixteen empty texts.
    SlotTexts() = default;

    std::string_view operator[](int slot) const {
        return std::string_view(m_data).substr(Start(slot), m_length[static_cast<size_t>(slot)]);
    }
    void Set(int slot, std::string_view text);
    // The same text in every slot.
    void Fill(std::string_view text);
    // Every slot at once, in slot order: a row read whole, built in one piece.
    void Assign(const std::array<std::string, kSlotCount>& texts);

    bool operator==(const SlotTexts&) const = default;

private:
    size_t Start(int slot) const {
        size_t start = 0;
        for (int s = 0; s < slot; ++s) start += m_length[static_cast<size_t>(s)];
        return start;
    }

    std::string m_data;                           // the texts one after the other
    std::array<uint16_t, kSlotCount> m_length{};  // and their lengths in bytes
};

}  // namespace velmora
