#include "collection/pointer_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "base/codepage1253.h"
#include "base/file_kind.h"
#include "base/text_format.h"

namespace velmora {

namespace {

// The pointer file is two short lines; anything longer is not ours to read whole.
constexpr size_t kPointerFileLimit = 1 << 16;

// Reads the pointer file the way a comma-separated text reader does: a text ends at
// a comma or at the end of its line (unless quoted), a number at a blank, a
// comma or the end of the line.
class InputFields {
public:
    explicit InputFields(std::string_view text) : m_text(text) {}

    bool Text(std::string& out) {
        SkipBlanks();
        if (AtEnd()) return false;
        if (m_text[m_at] == '"') {
            const size_t close = m_text.find('"', m_at + 1);
            const size_t end = close == std::string_view::npos ? m_text.size() : close;
            out = std::string(m_text.substr(m_at + 1, end - m_at - 1));
            m_at = std::min(end + 1, m_text.size());
            SkipTo(",\r\n");
        } else {
            const size_t start = m_at;
            SkipTo(",\r\n");
            out = RTrim(m_text.substr(start, m_at - start));
        }
        EndField();
        return true;
    }

    bool Number(double& out) {
        SkipBlanks();
        if (AtEnd()) return false;
        const size_t start = m_at;
        SkipTo(" \t,\r\n");
        out = Val(m_text.substr(start, m_at - start));
        EndField();
        return true;
    }

private:
    bool AtEnd() const { return m_at >= m_text.size(); }
    void SkipBlanks() {
        while (!AtEnd() && (m_text[m_at] == ' ' || m_text[m_at] == '\t')) ++m_at;
    }
    void SkipTo(std::string_view stops) {
        while (!AtEnd() && stops.find(m_text[m_at]) == std::string_view::npos) ++m_at;
    }
    // Past the blanks and the one comma or line end that closes a field.
    void EndField() {
        SkipBlanks();
        if (AtEnd()) return;
        if (m_text[m_at] == ',') {
            ++m_at;
        } else if (m_text[m_at] == '\r') {
            ++m_at;
            if (!AtEnd() && m_text[m_at] == '\n') ++m_at;
        } else if (m_text[m_at] == '\n') {
            ++m_at;
        }
    }

    std::string_view m_text;
    size_t m_at = 0;
};

}  // namespace

bool Read_Pointer_File(const std::string& file, std::string& collection_path,
                       const std::array<int32_t*, 7>& statistics) {
    // A named pipe in its place would hold the start forever.
    std::string error;
    const int fd = Open_Regular(file, O_RDONLY, error);
    if (fd < 0) return false;
    std::string bytes(static_cast<size_t>(kPointerFileLimit), '\0');
    size_t got = 0;
    while (got < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + got, bytes.size() - got);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        got += static_cast<size_t>(n);
    }
    ::close(fd);
    bytes.resize(got);
    const std::string text = Cp1253ToUtf8(bytes);
    InputFields fields(text);

    collection_path.clear();
    fields.Text(collection_path);
    for (int32_t* stat : statistics) {
        double value = 0;
        if (!fields.Number(value)) break;
        CLng(value, *stat);
    }
    return true;
}

}  // namespace velmora
