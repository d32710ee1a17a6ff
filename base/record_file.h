#pragma once
// Random-access files of fixed-length records, one field at the start of a
// record, records numbered from 1. Texts are stored in code page 1253 with a
// 2-byte length. A failing call returns false and leaves the file usable, so
// the caller can count the error and carry on with the next field; nothing
// ever reads outside the file or outside a record.
//
// Reads go through a window of whole records and writes through a buffer of
// consecutive records, so a long file costs a few system calls per megabyte.
// A put writes its whole record: the field, then zeros to the record's end.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/currency.h"

namespace velmora {

class RecordFile {
public:
    enum class Mode {
        ReadWrite,  // created when absent
        ReadOnly,
        // A new file built beside the path, under Replacement_Path(path):
        // Commit puts it in the path's place, whole, and anything else
        // throws it away, so a write cut short never touches the old file.
        Replace,
    };

    // Where Mode::Replace builds the new file.
    static std::string Replacement_Path(const std::string& path);

    RecordFile();
    ~RecordFile();
    RecordFile(const RecordFile&) = delete;
    RecordFile& operator=(const RecordFile&) = delete;

    bool Open(const std::string& path, int record_length, Mode mode = Mode::ReadWrite);
    // Writes what is buffered; false when that failed. A file opened with
    // Mode::Replace and not committed is thrown away.
    bool Close();
    // Mode::Replace: writes what is buffered, syncs the new file, renames it
    // over the path and syncs the folder; closed afterwards either way.
    // False when a write since the open, the sync or the rename failed: the
    // old file is then as it was and the new one gone. (A failed sync of the
    // folder, after the rename, is reported too, with the new file in place.)
    bool Commit();
    bool IsOpen() const;
    // Writes what is buffered and syncs it to the disk.
    bool Sync();
    // The same without the file's times, which nothing reads back.
    bool SyncData();
    // Writes what is buffered and waits until the disk has taken it, but
    // leaves the disk's cache alone: a sync of another file on the same disk
    // afterwards makes it durable too, so a save of several files flushes
    // the cache once. A file that grew since it was opened has a new length
    // to store and is synced in full here.
    bool WriteOut();
    int RecordLength() const;
    // Whole records in the file (a partial last record counts as one).
    int64_t RecordCount() const;
    const std::string& LastError() const;
    // Some buffered write failed to reach the file since it was opened.
    bool WriteFailed() const;

    bool PutInteger(int64_t record, int16_t value);
    bool PutBoolean(int64_t record, bool value);  // 0 or -1
    bool PutLong(int64_t record, int32_t value);
    bool PutCurrency(int64_t record, Currency value);
    bool PutByte(int64_t record, uint8_t value);
    // False when the text cannot be carried by the code page or does not fit
    // the record (more than record length - 2 bytes).
    bool PutString(int64_t record, std::string_view utf8);

    // A read past the end of the file, or a length that points past its
    // record, is a read error.
    bool GetInteger(int64_t record, int16_t& value);
    bool GetBoolean(int64_t record, bool& value);
    bool GetLong(int64_t record, int32_t& value);
    bool GetCurrency(int64_t record, Currency& value);
    bool GetByte(int64_t record, uint8_t& value);
    bool GetString(int64_t record, std::string& utf8);

    // The bytes of `count` consecutive records from `first`, when the file
    // holds each of them whole: one check for a run of fields read
    // together (base/record_span.h decodes them). Null otherwise, and the
    // caller reads field by field to learn which record fails; only a
    // failed read of the disk leaves its message here. Valid until the next
    // call on this file.
    const char* WholeRecords(int64_t first, int64_t count);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace velmora
