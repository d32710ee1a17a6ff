#pragma once
// A run of whole records of a RecordFile (RecordFile::WholeRecords), read as
// RecordFile's Get calls read them, without a system call or a check of the
// file per field: a Track of the files side file is 45 records, read at once.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "base/codepage1253.h"
#include "base/currency.h"

namespace velmora {

class RecordSpan {
public:
    // `bytes` holds whole records of `record_length` bytes; record 1 is the first.
    RecordSpan(const char* bytes, int record_length) : m_bytes(bytes), m_length(record_length) {}

    int16_t Integer(int64_t record) const { return Raw<int16_t>(record); }
    bool Boolean(int64_t record) const { return Raw<int16_t>(record) != 0; }
    int32_t Long(int64_t record) const { return Raw<int32_t>(record); }
    Currency CurrencyAt(int64_t record) const { return Currency::FromRaw(Raw<int64_t>(record)); }

    // Whether the text's length stays inside its record, as GetString asks.
    bool TextFits(int64_t record) const { return Raw<uint16_t>(record) <= m_length - 2; }
    // The text of a record whose length fits, straight into `utf8`.
    void Text(int64_t record, std::string& utf8) const {
        const uint16_t n = Raw<uint16_t>(record);
        Cp1253ToUtf8Into(std::string_view(At(record) + 2, n), utf8);
    }

    // The length of that text in UTF-8: room for it, taken before it is read.
    size_t TextLength(int64_t record) const {
        return Cp1253ToUtf8Length(std::string_view(At(record) + 2, Raw<uint16_t>(record)));
    }

private:
    const char* At(int64_t record) const { return m_bytes + (record - 1) * m_length; }
    template <class T>
    T Raw(int64_t record) const {
        T value;
        std::memcpy(&value, At(record), sizeof(T));  // little-endian, as RecordFile stores it
        return value;
    }

    const char* m_bytes;
    int m_length;
};

}  // namespace velmora
