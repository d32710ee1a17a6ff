#pragma once
// What the reading benchmarks share: many copies of one MP3, each with its
// own name and title, read once so they come from the page cache, and the
// bare TagLib read the program's reader is measured against.

#include <taglib/fileref.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace velmora::bench {

// Copies of source under count names "<stem>-<i>.mp3" in dir.
inline std::vector<std::string> Copies(const std::filesystem::path& source, const std::filesystem::path& dir,
                                       const std::string& stem, int count) {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        const std::filesystem::path to = dir / (stem + "-" + std::to_string(i) + ".mp3");
        std::filesystem::copy_file(source, to, std::filesystem::copy_options::overwrite_existing);
        TagLib::MPEG::File file(to.c_str());
        file.ID3v2Tag(true)->setTitle(TagLib::String("Κομμάτι " + std::to_string(i), TagLib::String::UTF8));
        file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone);
        paths.push_back(to.string());
    }
    return paths;
}

// Reads every file once.
inline void Warm(const std::vector<std::string>& paths) {
    std::vector<char> buffer(1 << 16);
    for (const auto& path : paths) {
        std::ifstream in(path, std::ios::binary);
        while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()))) {
        }
    }
}

// Length and title of one file by TagLib alone; 0 when it cannot be read.
inline double Read_By_TagLib(const std::string& path) {
    TagLib::FileRef ref(path.c_str());
    if (ref.isNull() || ref.audioProperties() == nullptr || ref.tag() == nullptr) return 0;
    return ref.audioProperties()->lengthInMilliseconds() / 1000.0 + ref.tag()->title().size();
}

}  // namespace velmora::bench
