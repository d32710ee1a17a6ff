#include "cli/headless_program.h"

#include <QDir>

#include <clocale>
#include <filesystem>

#include "app/startup.h"
#include "base/collection_records.h"
#include "core/program_folders.h"
#include "core/settings_store.h"
#include "platform/media_reader.h"
#include "ratings/reset_views.h"

namespace fs = std::filesystem;

namespace velmora::cli {

namespace {

std::string DataHome() {
    const QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (!xdg.isEmpty() && QDir::isAbsolutePath(xdg)) return xdg.toStdString();
    return (QDir::homePath() + "/.local/share").toStdString();
}

}  // namespace

LazyEngine::Factory HeadlessProgram::Mpv(const std::string& ao) {
    return [this, ao]() -> std::unique_ptr<MediaEngine> {
        return std::make_unique<MpvEngine>(m_loop, MpvEngine::Options{.ao = ao, .vo = "null", .wid = 0});
    };
}

HeadlessProgram::NumericLocaleC::NumericLocaleC() { std::setlocale(LC_NUMERIC, "C"); }

HeadlessProgram::HeadlessProgram(Dialogs& dialogs, Shell& shell, const std::string& ao)
    : m_player(Mpv(ao), ReadMediaItem),
      m_reader(Mpv("null"), ReadMediaItem),
      m_video(Mpv(ao), ReadMediaItem),
      m_second(Mpv(ao), ReadMediaItem),
      m_ctx(Ports{m_loop, dialogs, shell, m_player, m_reader, m_video, m_second, &m_playlists}) {
    m_ctx.core.Windowless = true;
}

std::string Program_Folder_Of(const std::string& collection_file) {
    const fs::path folder = fs::path(collection_file).parent_path();
    if (folder.filename() != kCollectionsFolder) return {};
    std::string root = folder.parent_path().string();
    if (root.empty() || root.back() != '/') root += '/';
    return root;
}

std::string Default_Program_Folder() {
    return Resolve_App_Path(QCoreApplication::applicationDirPath().toStdString(), DataHome());
}

void Set_Program_Folder(AppContext& ctx, const std::string& collection_file) {
    ctx.program_folder = Program_Folder_Of(collection_file);
    if (ctx.program_folder.empty()) ctx.program_folder = Default_Program_Folder();
    ctx.core.App_Path = ctx.program_folder.back() == '/' ? ctx.program_folder : ctx.program_folder + "/";
}

void Start_Without_Window(AppContext& ctx) {
    for (int i = 0; i < 4; ++i) Make_Folder(ctx, i);
    Initialise(ctx);
    Reset_Views(ctx, 0);
    bool settings_error = false;
    Load_Settings(ctx, settings_error);
}

}  // namespace velmora::cli
