#include "core/program_folders.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "base/collection_records.h"
#include "core/app_context.h"
#include "core/running_report.h"

namespace fs = std::filesystem;

namespace velmora {

namespace {

const std::string kFolders[4] = {"velmora_reports/", std::string(kCollectionsFolder) + "/", "velmora_preferences/",
                                 std::string(kFiltersFolder) + "/"};

bool Writable(const std::string& folder) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) return false;
    // Made anew, so that whatever stood by the name (a pipe would hold the
    // start until something read it) is never opened.
    const fs::path probe = fs::path(folder) / ".velmora-write-test";
    fs::remove(probe, ec);
    const int fd = ::open(probe.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) return false;
    ::close(fd);
    fs::remove(probe, ec);
    return true;
}

}  // namespace

std::string WithSlash(std::string path) {
    if (path.empty() || path.back() != '/') path += '/';
    return path;
}


std::string Resolve_App_Path(const std::string& executable_folder, const std::string& data_home) {
    if (!executable_folder.empty() && Writable(executable_folder)) return WithSlash(executable_folder);
    std::string folder = WithSlash(data_home) + "velmora";
    std::error_code ec;
    fs::create_directories(folder, ec);
    return WithSlash(folder);
}

std::string Folder_Path(const AppContext& ctx, int index) {
    if (index < 0 || index > 3) return ctx.core.App_Path;
    return ctx.core.App_Path + kFolders[index];
}

void Make_Folder(AppContext& ctx, int index) {
    std::string name = Folder_Path(ctx, index);
    name.pop_back();  // looked up without its last character, the slash
    std::error_code ec;
    if (!fs::exists(name, ec) && !fs::create_directory(name, ec))
        Log_Line(ctx, "-> Ο φάκελος δε δημιουργήθηκε - The folder could not be made: " + name + ": " + ec.message());
}

}  // namespace velmora
