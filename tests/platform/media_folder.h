#pragma once
// A temporary folder of media files made with ffmpeg for the run, removed
// with the object. The first command that fails is kept in error, and the
// commands after it are not run.
//
//   static const MediaFolder files("velmora-x", [](MediaFolder& f) { f.Ffmpeg(...); });

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace velmora::testing {

class MediaFolder {
public:
    MediaFolder(const std::string& prefix, const std::function<void(MediaFolder&)>& make) {
        std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "-XXXXXX")).string();
        if (mkdtemp(pattern.data()) == nullptr) {
            error = "cannot make a temporary folder";
            return;
        }
        dir = pattern;
        make(*this);
    }
    ~MediaFolder() {
        std::error_code ec;
        if (!dir.empty()) std::filesystem::remove_all(dir, ec);
    }
    MediaFolder(const MediaFolder&) = delete;
    MediaFolder& operator=(const MediaFolder&) = delete;

    std::string Path(const std::string& name) const { return (dir / name).string(); }
    // The path quoted for the shell, with a space after it.
    std::string Q(const std::string& name) const { return "'" + Path(name) + "' "; }
    // "ffmpeg -v error -y " and the rest.
    void Ffmpeg(const std::string& arguments) { Run("ffmpeg -v error -y " + arguments); }
    void Run(const std::string& command) {
        if (error.empty() && std::system(command.c_str()) != 0) error = "failed: " + command;
    }

    std::filesystem::path dir;
    std::string error;
};

}  // namespace velmora::testing
