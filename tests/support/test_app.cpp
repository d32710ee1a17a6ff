#include "support/test_app.h"

#include <fstream>
#include <iterator>
#include <random>

namespace velmora::testing {

TempFolder::TempFolder() {
    std::random_device rd;
    m_path = std::filesystem::temp_directory_path() / ("velmora-test-" + std::to_string(rd()) + std::to_string(rd()));
    std::filesystem::create_directories(m_path);
}

TempFolder::~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(m_path, ec);
}

std::string Bytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Put(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

size_t Count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

TestApp::TestApp() : ctx(Ports{loop, dialogs, shell, player, reader, video, second}) {
    ctx.program_folder = folder.Str();
}

}  // namespace velmora::testing
