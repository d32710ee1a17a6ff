#pragma once
// A temporary folder of media files made with ffmpeg for the run, removed
// with the object. The first command that fails is kept in error, and the
// commands after it are not run.
//
//   static const MediaFolder files([](MediaFolder& f) { f.Ffmpeg(...); });

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "support/test_app.h"

namespace velmora::testing {

class MediaFolder {
public:
    explicit MediaFolder(const std::function<void(MediaFolder&)>& make) { make(*this); }

    std::string Path(const std::string& name) const { return (dir / name).string(); }
    // A copy to change, so that the file stays as made.
    std::string Copy(const std::string& name, const std::string& as) const {
        std::filesystem::copy_file(dir / name, dir / as, std::filesystem::copy_options::overwrite_existing);
        return Path(as);
    }
    // The path quoted for the shell, with a space after it.
    std::string Q(const std::string& name) const { return "'" + Path(name) + "' "; }
    void Ffmpeg(const std::string& arguments) { Run("ffmpeg -v error -y " + arguments); }
    void Run(const std::string& command) {
        if (error.empty() && std::system(command.c_str()) != 0) error = "failed: " + command;
    }

    TempFolder temp;
    const std::filesystem::path& dir = temp.Path();
    std::string error;
};

}  // namespace velmora::testing
