#include "metadata/album_art.h"

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <unistd.h>

#include <memory>

#include "core/app_context.h"

namespace velmora {

namespace {

bool Opens_For_Input(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    ::close(fd);
    return true;
}

// The picture of that name in the folder, found as it is spelled first,
// then in any case; empty when there is none that opens.
std::string Picture_In(const std::string& folder, const char* name) {
    const std::string exact = folder + name;
    if (Opens_For_Input(exact)) return exact;
    std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(folder.empty() ? "." : folder.c_str()), ::closedir);
    if (!dir) return {};
    while (const dirent* entry = ::readdir(dir.get())) {
        if (::strcasecmp(entry->d_name, name) != 0) continue;
        const std::string found = folder + entry->d_name;
        if (Opens_For_Input(found)) return found;
    }
    return {};
}

}  // namespace

std::string Album_Art_Of(AppContext& ctx, const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    if (path.empty()) return {};
    for (const char* name : {"AlbumArtSmall.jpg", "Folder.jpg"})
        if (std::string found = Picture_In(folder, name); !found.empty()) return found;
    // Where the folder holds no picture, the file's own, as players show it now.
    auto item = ctx.ports.reader.newMedia(path);
    const std::string bytes = item ? item->getItemInfo("WM/Picture") : std::string();
    return bytes.empty() ? std::string() : kEmbeddedPicture + bytes;
}

void Show_Album_Art(AppContext& ctx) {
    ctx.form1.Picture1.SetPicture("");
    ctx.form4.Picture1.SetPicture("");
    const std::string key = Album_Art_Of(ctx, ctx.playback.Current_File);
    ctx.form1.Picture1.SetPicture(key);
    ctx.form4.Picture1.SetPicture(key);
}

}  // namespace velmora
