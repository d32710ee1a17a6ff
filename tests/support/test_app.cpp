#include "support/test_app.h"

#include <fstream>
#include <iterator>
#include <random>

#include "app/startup.h"
#include "collection/collection_file.h"

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

TestApp::TestApp(const std::string& program_folder) : ctx(Ports{loop, dialogs, shell, player, reader, video, second}) {
    ctx.program_folder = program_folder.empty() ? folder.Str() : program_folder;
}

Running::Running(const std::string& program_folder) : TestApp(program_folder) { Form_Load(ctx); }

void Start_In(TestApp& app, const std::string& folder) {
    app.ctx.program_folder = app.ctx.core.App_Path = folder;
    Load_Pointer(app.ctx);
}

bool Load_In(TestApp& app, const std::string& folder) {
    Start_In(app, folder);
    return Load_Collection(app.ctx);
}

}  // namespace velmora::testing
