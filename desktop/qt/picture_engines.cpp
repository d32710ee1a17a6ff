#include "desktop/qt/picture_engines.h"

#include <filesystem>

#include "desktop/qt/preview_panes_view.h"

namespace velmora {

namespace {

// Hardware decoding only where there is a graphics device to do it. Without
// one, mpv's probe of each decoding interface only fills the terminal with
// the driver libraries' complaints ("Failed to open VDPAU backend", "Cannot
// load libcuda.so.1"), once per film and once per pane.
std::string Hardware_Decoding(const std::string& wanted) {
    static const bool device = [] {
        std::error_code ec;
        if (std::filesystem::exists("/dev/nvidiactl", ec)) return true;
        for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", ec))
            if (entry.path().filename().string().starts_with("renderD")) return true;
        return false;
    }();
    return device ? wanted : "no";
}

}  // namespace

MpvEngine::Options Video_Options(const std::string& ao) {
    return {.ao = ao,
            .vo = "libmpv",
            .wid = 0,
            .extra = {{"hwdec", Hardware_Decoding("auto-safe")},
                      {"gpu-hwdec-interop", Hardware_Decoding("auto")}}};
}

// No sound at all, the picture scaled down to the pane's width as it is
// decoded, the decoder's costly steps left out and one thread each, and a
// small read-ahead: twelve of them at once must leave the window free.
MpvEngine::Options Pane_Options() {
    const std::string scale = "scale=" + std::to_string(kPaneWidth) + ":-2:flags=fast_bilinear";
    return {.ao = "null",
            .vo = "libmpv",
            .wid = 0,
            .extra = {{"aid", "no"},
                      {"sid", "no"},
                      {"hwdec", Hardware_Decoding("auto-copy-safe")},
                      {"vd-lavc-skiploopfilter", "all"},
                      {"vd-lavc-fast", "yes"},
                      {"vd-lavc-skipframe", "nonref"},
                      {"vd-lavc-framedrop", "nonref"},
                      {"cache", "no"},
                      // A pane starts at the key frame nearest its point:
                      // an exact seek decodes up to seconds of film first,
                      // with the engine's core busy and every call to it waiting.
                      {"hr-seek", "no"},
                      {"vd-lavc-threads", "1"},
                      {"vf", "lavfi=[" + scale + "]"},
                      {"framedrop", "decoder+vo"},
                      {"demuxer-max-bytes", "4MiB"},
                      {"demuxer-max-back-bytes", "0"}}};
}

}  // namespace velmora
