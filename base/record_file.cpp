#include "base/record_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

#include "base/codepage1253.h"
#include "base/file_kind.h"

namespace velmora {

namespace {

// Reads go through a window of whole records, so a load of a long side file
// costs one system call per window rather than one per field; writes gather
// consecutive records into a buffer of the same size. A megabyte keeps the
// window in the processor's cache and the syscall count low.
constexpr int64_t kWindowBytes = 1 << 20;

std::string SysError(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

// Makes a rename in the folder of `path` durable.
bool Sync_Folder(const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

}  // namespace

struct RecordFile::Impl {
    int fd = -1;
    int length = 0;
    bool writable = false;
    bool write_failed = false;  // some buffered write never reached the file
    std::string path;
    std::string target;  // Mode::Replace until committed: the file that path is to replace
    std::string error;
    int64_t size = 0;  // the file's length, counting what is still buffered
    int64_t opened_size = 0;

    std::vector<char> window;  // read window: bytes [window_start, window_start + window_len)
    int64_t window_start = 0;
    int64_t window_len = 0;

    std::vector<char> pending;  // buffered whole records: [pending_start, pending_start + pending_len)
    int64_t pending_start = 0;
    int64_t pending_len = 0;

    int64_t Capacity() const {
        const int64_t records = std::max<int64_t>(1, kWindowBytes / length);
        return records * length;
    }

    bool Fail(std::string text) {
        error = std::move(text);
        return false;
    }

    // Writes what is buffered, then hands the file to one of the kernel's
    // sync calls; a failure there means the writes may not be on the disk.
    template <class SyncCall>
    bool FlushThen(const char* what, SyncCall call) {
        if (fd < 0) return Fail("the file is not open");
        if (!Flush()) return false;
        if (call(fd) != 0) {
            write_failed = true;
            return Fail(SysError(what));
        }
        return !write_failed;
    }

    // Byte offset of a record, or -1 when the number is out of range.
    int64_t Offset(int64_t record) const {
        if (record < 1) return -1;
        if (record - 1 > (std::numeric_limits<int64_t>::max() - length) / length) return -1;
        return (record - 1) * length;
    }

    bool Flush() {
        int64_t done = 0;
        while (done < pending_len) {
            const ssize_t n = ::pwrite(fd, pending.data() + done, static_cast<size_t>(pending_len - done),
                                       static_cast<off_t>(pending_start + done));
            if (n < 0) {
                if (errno == EINTR) continue;
                write_failed = true;
                error = SysError("write");
                pending_len = 0;
                return false;
            }
            done += n;
        }
        pending_len = 0;
        return true;
    }

    bool Overlaps(int64_t start, int64_t len, int64_t off, int64_t n) const {
        return len > 0 && off < start + len && start < off + n;
    }

    // The zeroed bytes of one whole record in the write buffer, or null.
    char* Slot(int64_t record) {
        if (fd < 0) {
            Fail("the file is not open");
            return nullptr;
        }
        if (!writable) {
            Fail("the file is open for reading only");
            return nullptr;
        }
        const int64_t off = Offset(record);
        if (off < 0) {
            Fail("record " + std::to_string(record) + " is out of range");
            return nullptr;
        }
        if (pending.empty()) pending.resize(static_cast<size_t>(Capacity()));

        char* slot = nullptr;
        if (pending_len > 0 && off >= pending_start && off + length <= pending_start + pending_len &&
            (off - pending_start) % length == 0) {
            slot = pending.data() + (off - pending_start);
        } else {
            const bool appends = pending_len > 0 && off == pending_start + pending_len &&
                                 pending_len + length <= static_cast<int64_t>(pending.size());
            if (!appends) {
                if (!Flush()) return nullptr;
                pending_start = off;
            }
            slot = pending.data() + pending_len;
            pending_len += length;
        }
        std::memset(slot, 0, static_cast<size_t>(length));
        if (Overlaps(window_start, window_len, off, length)) window_len = 0;
        size = std::max(size, off + length);
        return slot;
    }

    // The bytes of a record that the file holds (at most the record length),
    // or null with the error set. `avail` gets their count.
    const char* Fetch(int64_t record, int64_t& avail) {
        if (fd < 0) {
            Fail("the file is not open");
            return nullptr;
        }
        const int64_t off = Offset(record);
        if (off < 0) {
            Fail("record " + std::to_string(record) + " is out of range");
            return nullptr;
        }
        if (Overlaps(pending_start, pending_len, off, length) && !Flush()) return nullptr;
        if (off >= size) {
            Fail("record " + std::to_string(record) + ": read past the end of the file");
            return nullptr;
        }
        avail = std::min<int64_t>(length, size - off);
        if (window_len > 0 && off >= window_start && off + avail <= window_start + window_len)
            return window.data() + (off - window_start);

        // The disk must hold what is buffered before the window is refilled
        // from it: a record being read may lie behind a buffered one.
        if (pending_len > 0 && !Flush()) return nullptr;
        // No bigger than the file: a short file costs a short buffer.
        if (window.empty()) {
            const int64_t records = (size + length - 1) / length;
            window.resize(static_cast<size_t>(std::min(Capacity(), std::max<int64_t>(records, 1) * length)));
        }
        window_start = off;
        window_len = 0;
        const int64_t want = std::min<int64_t>(static_cast<int64_t>(window.size()), size - off);
        while (window_len < want) {
            const ssize_t n = ::pread(fd, window.data() + window_len, static_cast<size_t>(want - window_len),
                                      static_cast<off_t>(off + window_len));
            if (n < 0) {
                if (errno == EINTR) continue;
                window_len = 0;
                Fail(SysError("read"));
                return nullptr;
            }
            if (n == 0) break;  // the file got shorter behind our back
            window_len += n;
        }
        avail = std::min(avail, window_len);
        if (avail <= 0) {
            size = off;
            Fail("record " + std::to_string(record) + ": read past the end of the file");
            return nullptr;
        }
        return window.data();
    }

    // Bytes [off, off + n) when the file holds them all and the window can,
    // else null with nothing reported: the window is refilled from `off`.
    const char* Span(int64_t off, int64_t n) {
        if (fd < 0 || off < 0 || n <= 0 || n > Capacity() || off > size - n) return nullptr;
        if (Overlaps(pending_start, pending_len, off, n) && !Flush()) return nullptr;
        if (window_len > 0 && off >= window_start && off + n <= window_start + window_len)
            return window.data() + (off - window_start);
        // Fetch fills the window from the record at `off`, which must not
        // count as held already; a file that got shorter behind our back is
        // then its to report.
        window_len = 0;
        int64_t avail = 0;
        if (!Fetch(off / length + 1, avail)) return nullptr;
        if (off + n > window_start + window_len) return nullptr;
        return window.data() + (off - window_start);
    }

    template <class T>
    bool PutRaw(int64_t record, T value) {
        if (static_cast<int64_t>(sizeof(T)) > length) return Fail("the record is too short for the field");
        char* slot = Slot(record);
        if (!slot) return false;
        // Fields are little-endian, as is every machine this runs on.
        std::memcpy(slot, &value, sizeof(T));
        return true;
    }

    template <class T>
    bool GetRaw(int64_t record, T& value) {
        int64_t avail = 0;
        const char* bytes = Fetch(record, avail);
        if (!bytes) return false;
        if (avail < static_cast<int64_t>(sizeof(T)))
            return Fail("record " + std::to_string(record) + ": read past the end of the file");
        std::memcpy(&value, bytes, sizeof(T));
        return true;
    }
};

static_assert(std::endian::native == std::endian::little, "the record fields are stored little-endian");

RecordFile::RecordFile() : m_impl(std::make_unique<Impl>()) {}

RecordFile::~RecordFile() { Close(); }

std::string RecordFile::Replacement_Path(const std::string& path) { return path + ".new"; }

bool RecordFile::Open(const std::string& path, int record_length, Mode mode) {
    Close();
    Impl& m = *m_impl;
    m.path = mode == Mode::Replace ? Replacement_Path(path) : path;
    m.error.clear();
    m.write_failed = false;
    if (record_length < 2) return m.Fail("record length " + std::to_string(record_length) + " is too short");
    // A named pipe or a device in a file's place is an error, never a wait.
    // What an earlier run left under the new name is no part of this file.
    int flags = O_RDONLY;
    if (mode == Mode::ReadWrite) flags = O_RDWR | O_CREAT;
    if (mode == Mode::Replace) flags = O_RDWR | O_CREAT | O_TRUNC;
    std::string error;
    const int fd = Open_Regular(m.path, flags, error);
    if (fd < 0) return m.Fail(error);
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        ::close(fd);
        return m.Fail(SysError(m.path.c_str()));
    }
    m.fd = fd;
    m.target = mode == Mode::Replace ? path : std::string();
    m.length = record_length;
    m.writable = mode != Mode::ReadOnly;
    m.size = st.st_size;
    m.opened_size = st.st_size;
    m.window_len = 0;
    m.pending_len = 0;
    // A new length needs new buffers of whole records.
    m.window.clear();
    m.pending.clear();
    return true;
}

bool RecordFile::Close() {
    Impl& m = *m_impl;
    if (m.fd < 0) return true;
    if (!m.target.empty()) {
        // A new file that was never committed is no file at all.
        ::close(m.fd);
        ::unlink(m.path.c_str());
        m.fd = -1;
        m.window_len = 0;
        m.pending_len = 0;
        m.target.clear();
        return m.Fail("the new file was thrown away uncommitted");
    }
    bool ok = m.Flush() && !m.write_failed;
    if (::close(m.fd) != 0 && m.writable) {
        m.error = SysError("close");
        ok = false;
    }
    m.fd = -1;
    m.window_len = 0;
    return ok;
}

bool RecordFile::Commit() {
    Impl& m = *m_impl;
    if (m.fd < 0 || m.target.empty()) return m.Fail("no new file to put in place");
    const std::string target = std::move(m.target);
    m.target.clear();
    bool ok = Sync();
    if (::close(m.fd) != 0 && ok) ok = m.Fail(SysError("close"));
    m.fd = -1;
    m.window_len = 0;
    if (ok && std::rename(m.path.c_str(), target.c_str()) != 0) ok = m.Fail(SysError("rename"));
    if (!ok) {
        ::unlink(m.path.c_str());
        return false;
    }
    // Renamed: only the folder's sync stands between it and a crash.
    return Sync_Folder(target) || m.Fail(SysError("fsync of the folder"));
}

bool RecordFile::IsOpen() const { return m_impl->fd >= 0; }

bool RecordFile::Sync() {
    return m_impl->FlushThen("fsync", [](int fd) { return ::fsync(fd); });
}

bool RecordFile::SyncData() {
    return m_impl->FlushThen("fdatasync", [](int fd) { return ::fdatasync(fd); });
}

bool RecordFile::WriteOut() {
    if (m_impl->fd >= 0 && m_impl->size != m_impl->opened_size) return Sync();
    return m_impl->FlushThen("sync_file_range", [](int fd) {
        return ::sync_file_range(fd, 0, 0,
                                 SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
    });
}

int RecordFile::RecordLength() const { return m_impl->length; }

int64_t RecordFile::RecordCount() const {
    const Impl& m = *m_impl;
    if (m.length <= 0) return 0;
    return (m.size + m.length - 1) / m.length;
}

const std::string& RecordFile::LastError() const { return m_impl->error; }

bool RecordFile::WriteFailed() const { return m_impl->write_failed; }

bool RecordFile::PutInteger(int64_t record, int16_t value) { return m_impl->PutRaw(record, value); }
bool RecordFile::PutBoolean(int64_t record, bool value) {
    return m_impl->PutRaw(record, static_cast<int16_t>(value ? -1 : 0));
}
bool RecordFile::PutLong(int64_t record, int32_t value) { return m_impl->PutRaw(record, value); }
bool RecordFile::PutCurrency(int64_t record, Currency value) { return m_impl->PutRaw(record, value.Raw()); }
bool RecordFile::PutByte(int64_t record, uint8_t value) { return m_impl->PutRaw(record, value); }

bool RecordFile::PutString(int64_t record, std::string_view utf8) {
    Impl& m = *m_impl;
    std::optional<std::string> bytes = Utf8ToCp1253(utf8);
    if (!bytes) return m.Fail("record " + std::to_string(record) + ": the text cannot be written in code page 1253");
    if (static_cast<int64_t>(bytes->size()) > m.length - 2)
        return m.Fail("record " + std::to_string(record) + ": a text of " + std::to_string(bytes->size()) +
                      " bytes does not fit a record of " + std::to_string(m.length));
    char* slot = m.Slot(record);
    if (!slot) return false;
    const auto n = static_cast<uint16_t>(bytes->size());
    std::memcpy(slot, &n, 2);
    std::memcpy(slot + 2, bytes->data(), bytes->size());
    return true;
}

const char* RecordFile::WholeRecords(int64_t first, int64_t count) {
    Impl& m = *m_impl;
    const int64_t off = m.Offset(first);
    if (off < 0 || count < 1 || count > m.Capacity() / m.length) return nullptr;
    return m.Span(off, count * m.length);
}

bool RecordFile::GetInteger(int64_t record, int16_t& value) { return m_impl->GetRaw(record, value); }

bool RecordFile::GetBoolean(int64_t record, bool& value) {
    int16_t raw = 0;
    if (!m_impl->GetRaw(record, raw)) return false;
    value = raw != 0;
    return true;
}

bool RecordFile::GetLong(int64_t record, int32_t& value) { return m_impl->GetRaw(record, value); }

bool RecordFile::GetCurrency(int64_t record, Currency& value) {
    int64_t raw = 0;
    if (!m_impl->GetRaw(record, raw)) return false;
    value = Currency::FromRaw(raw);
    return true;
}

bool RecordFile::GetByte(int64_t record, uint8_t& value) { return m_impl->GetRaw(record, value); }

bool RecordFile::GetString(int64_t record, std::string& utf8) {
    Impl& m = *m_impl;
    int64_t avail = 0;
    const char* bytes = m.Fetch(record, avail);
    if (!bytes) return false;
    if (avail < 2) return m.Fail("record " + std::to_string(record) + ": read past the end of the file");
    uint16_t n = 0;
    std::memcpy(&n, bytes, 2);
    if (n > m.length - 2)
        return m.Fail("record " + std::to_string(record) + ": a text length of " + std::to_string(n) +
                      " points past its record");
    if (n > avail - 2) return m.Fail("record " + std::to_string(record) + ": read past the end of the file");
    Cp1253ToUtf8Into(std::string_view(bytes + 2, n), utf8);
    return true;
}

}  // namespace velmora
