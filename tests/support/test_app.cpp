#include "support/test_app.h"

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

TestApp::TestApp() : ctx(Ports{loop, dialogs, shell, player, reader, video, second}) {
    ctx.program_folder = folder.Str();
}

}  // namespace velmora::testing
