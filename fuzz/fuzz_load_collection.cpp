// Load_Collection over any bytes. The input is the main file, then, after a
// marker, the files side file, and after a second marker the filters side
// file; a part that is missing leaves its file absent. The load must never
// crash or read out of bounds, must leave the lists in step with the table,
// and must not write a byte of what it reads.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "core/app_context.h"
#include "support/recording_shell.h"
#include "support/stub_engine.h"
#include "support/test_app.h"
#include "support/virtual_event_loop.h"

namespace {

using namespace velmora;

constexpr std::string_view kMarker = "|~side~|";

// Every box is answered with OK: the version warning and the capacity box
// are expected answers to damaged files here.
class QuietDialogs : public Dialogs {
public:
    MsgAnswer MsgBox(const std::string&, MsgButtons, MsgIcon, const std::string&) override { return MsgAnswer::OK; }
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> OpenFile(const FileDialogOptions&) override { return std::nullopt; }
    std::optional<std::string> SaveFile(const FileDialogOptions&) override { return std::nullopt; }
    std::optional<std::string> PickFolder(const std::string&, const std::string&) override { return std::nullopt; }
};

struct Doubles {
    testing::TempFolder folder;
    VirtualEventLoop loop;
    QuietDialogs dialogs;
    testing::RecordingShell shell;
    StubEngine player{loop}, reader{loop}, video{loop}, second{loop};

    Doubles() {
        std::filesystem::create_directories(folder.Path() / "velmora_sylloges");
        std::filesystem::create_directories(folder.Path() / "velmora_filtra");
    }
    Ports MakePorts() { return Ports{loop, dialogs, shell, player, reader, video, second}; }
};

Doubles& Shared() {
    static Doubles doubles;
    return doubles;
}

void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "broken after the load: %s\n", what);
    std::abort();
}

std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Place(const std::string& path, const std::string* bytes) {
    std::error_code ec;
    std::filesystem::remove(path, ec);
    if (bytes) std::ofstream(path, std::ios::binary) << *bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Doubles& d = Shared();
    std::vector<std::string> parts;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    while (parts.size() < 2) {
        const size_t at = input.find(kMarker);
        if (at == std::string_view::npos) break;
        parts.emplace_back(input.substr(0, at));
        input.remove_prefix(at + kMarker.size());
    }
    parts.emplace_back(input);

    AppContext ctx(d.MakePorts());
    ctx.core.App_Path = d.folder.Str();
    ctx.program_folder = d.folder.Str();
    ctx.collection.Collection_Path = d.folder.Str() + "velmora_sylloges/velmora.qel";
    const CollectionPaths paths = Collection_Paths_Of(ctx, ctx.collection.Collection_Path);
    Place(paths.main, &parts[0]);
    Place(paths.files, parts.size() > 1 ? &parts[1] : nullptr);
    Place(paths.filters, parts.size() > 2 ? &parts[2] : nullptr);

    Load_Collection(ctx);

    const TrackTable& t = ctx.table;
    const Form1& f = ctx.form1;
    const int rows = f.List2.ListCount();
    for (const ListBox& mirror : f.List3_0) Check(mirror.ListCount() == rows, "mirror lists in step");
    Check(t.Track_Count >= 0 && t.Track_Count <= kMaxTracks, "Track_Count in range");
    Check(rows <= t.Bound(), "a column row behind every list row");
    Check(t.Current_Track >= 0, "Current_Track not negative");
    Check(t.Played_High >= t.Played_Count, "Played_High not below Played_Count");
    Check(!ctx.catalogue.Filter_Text.empty(), "Filter_Text keeps index 0");
    Check(f.List2.Enabled(), "the lists shown again");
    Check(Bytes(paths.main) == parts[0], "main file untouched");
    if (parts.size() > 1) Check(Bytes(paths.files) == parts[1], "files side file untouched");
    if (parts.size() > 2) Check(Bytes(paths.filters) == parts[2], "filters side file untouched");
    Check(!File_Exists(Temp_Path(paths.main)) && !File_Exists(Commit_Marker_Path(paths)), "no file made");
    return 0;
}
