#include "metadata/album_art.h"

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <unistd.h>

#include <memory>

#include "core/app_context.h"

namespace velmora {

namespace {

bool Opens_At(int dir, const char* name) {
    const int fd = ::openat(dir, name, O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    ::close(fd);
    return true;
}

// The picture of that name in the open folder, found as it is spelled first,
// then in any case; empty when there is none that opens.
std::string Picture_In(int dir, const std::string& folder, const char* name) {
    if (Opens_At(dir, name)) return folder + name;
    const int listing = ::openat(dir, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (listing < 0) return {};
    std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(listing), ::closedir);
    if (!entries) {
        ::close(listing);
        return {};
    }
    while (const dirent* entry = ::readdir(entries.get())) {
        if (::strcasecmp(entry->d_name, name) != 0) continue;
        if (Opens_At(dir, entry->d_name)) return folder + entry->d_name;
    }
    return {};
}

}  // namespace

std::string Album_Art_Of(AppContext& ctx, const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    if (path.empty()) return {};
    // The folder is opened once: on a drive that is gone, one failed open
    // ends the search instead of four per Track walked past.
    const int dir = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir < 0) return {};
    std::string found;
    for (const char* name : {"AlbumArtSmall.jpg", "Folder.jpg"})
        if (found = Picture_In(dir, folder, name); !found.empty()) break;
    ::close(dir);
    if (!found.empty()) return found;
    // Where the folder holds no picture, the file's own, as players show it now.
    auto item = ctx.ports.reader.newMedia(path);
    const std::string bytes = item ? item->getItemInfo("WM/Picture") : std::string();
    return bytes.empty() ? std::string() : kEmbeddedPicture + bytes;
}

void Show_Album_Art(AppContext& ctx) {
    // Without a window no picture is drawn, and looking for one costs a
    // folder search per Track.
    if (ctx.core.Windowless) return;
    ctx.form1.Picture1.SetPicture("");
    ctx.form4.Picture1.SetPicture("");
    const std::string key = Album_Art_Of(ctx, ctx.playback.Current_File);
    ctx.form1.Picture1.SetPicture(key);
    ctx.form4.Picture1.SetPicture(key);
}

}  // namespace velmora
