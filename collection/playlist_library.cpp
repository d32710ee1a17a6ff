#include "collection/playlist_library.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "base/file_kind.h"
#include "collection/collection_paths.h"
#include "collection/m3u_playlist.h"
#include "collection/wpl_playlist.h"
#include "core/app_context.h"

namespace velmora {

namespace fs = std::filesystem;

namespace {

// A play list larger than this is no list a person keeps.
constexpr size_t kLargestList = 256u << 20;

bool Read_Whole(const std::string& path, std::string& bytes, std::string& error) {
    const int fd = Open_Regular(path, O_RDONLY, error);
    if (fd < 0) return false;
    bytes.clear();
    char buffer[1 << 16];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) error = std::strerror(errno);
        if (n <= 0) break;
        bytes.append(buffer, static_cast<size_t>(n));
        if (bytes.size() > kLargestList) {
            error = "larger than a play list can be";
            break;
        }
    }
    ::close(fd);
    return error.empty();
}

bool Lower_Ending_Is(const std::string& path, const char* ending) {
    const size_t n = std::strlen(ending);
    if (path.size() < n) return false;
    for (size_t i = 0; i < n; ++i)
        if (std::tolower(static_cast<unsigned char>(path[path.size() - n + i])) != ending[i]) return false;
    return true;
}

}  // namespace

std::string Playlist_Folder(const AppContext& ctx) { return ctx.core.App_Path + kPlaylistsFolder + "/"; }

std::string Folder_Of(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string("./") : path.substr(0, slash + 1);
}

std::string Ending_Of(const std::string& path) { return path.size() >= 4 ? path.substr(path.size() - 4) : path; }

std::vector<std::string> Playlists_Named(AppContext& ctx, const std::string& name) {
    std::vector<std::string> found;
    std::error_code ec;
    for (fs::directory_iterator it(Playlist_Folder(ctx), ec), end; !ec && it != end; it.increment(ec)) {
        const std::string path = it->path().string();
        if (!Lower_Ending_Is(path, ".wpl")) continue;
        PlaylistContents list;
        std::string error;
        if (!Read_Playlist_File(ctx, path, list, error)) continue;
        const std::string title = list.title.empty() ? it->path().stem().string() : list.title;
        if (title == name) found.push_back(path);
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string New_Playlist_File(const AppContext& ctx, const std::string& name) {
    const std::string folder = Playlist_Folder(ctx);
    std::string path = folder + name + ".wpl";
    for (int n = 2; File_Exists(path); ++n) path = folder + name + " (" + std::to_string(n) + ").wpl";
    return path;
}

bool Read_Playlist_File(AppContext& ctx, const std::string& path, PlaylistContents& out, std::string& error) {
    out = PlaylistContents{};
    std::string bytes;
    if (!Read_Whole(path, bytes, error)) return false;
    if (!Lower_Ending_Is(path, ".wpl") && !Lower_Ending_Is(path, ".wvx") && !Lower_Ending_Is(path, ".asx")) {
        out = Parse_M3u(bytes);
        return true;
    }
    if (ctx.ports.playlists == nullptr) {
        error = "no reader of XML play lists";
        return false;
    }
    // A list damaged behind its last good entry still gives those entries,
    // as a hand-written one with a bare '&' near its end does.
    if (!ctx.ports.playlists->Read(bytes, out) && out.entries.empty()) {
        error = "not a play list this program can read";
        return false;
    }
    return true;
}

bool Write_Playlist_File(const std::string& path, const std::string& title, const std::vector<PlaylistEntry>& entries) {
    return Write_File_Safely(path, Lower_Ending_Is(path, ".wpl") ? Write_Wpl(title, entries) : Write_M3u8(entries));
}

}  // namespace velmora
