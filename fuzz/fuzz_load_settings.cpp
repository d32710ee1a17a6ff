// Load_Settings over any bytes: it must never crash or read out of bounds,
// and what it makes of them must survive a save and a second load unchanged,
// menu marks included.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/app_context.h"
#include "core/settings_store.h"
#include "support/recording_shell.h"
#include "support/scripted_dialogs.h"
#include "support/stub_engine.h"
#include "support/test_app.h"
#include "support/virtual_event_loop.h"

namespace {

using namespace velmora;

struct Doubles {
    testing::TempFolder folder;
    VirtualEventLoop loop;
    testing::ScriptedDialogs dialogs;
    testing::RecordingShell shell;
    StubEngine player{loop}, reader{loop}, video{loop}, second{loop};

    Ports MakePorts() { return Ports{loop, dialogs, shell, player, reader, video, second}; }
};

Doubles& Shared() {
    static Doubles doubles;
    return doubles;
}

void Prepare(AppContext& ctx, const std::string& folder) {
    ctx.core.App_Path = folder;
    // The media types, as start-up fills them before the preferences are read.
    ctx.form1.List3.SetMultiSelect(true);
    ctx.form1.List3.Assign({"*.mp3", "*.wav", "*.snd", "*.au", "*.aif", "*.aifc"});
}

void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "round trip lost: %s\n", what);
    std::abort();
}

void SameMarks(MenuSet& a, MenuSet& b) {
    const auto& x = a.All();
    const auto& y = b.All();
    Check(x.size() == y.size(), "menu count");
    for (size_t i = 0; i < x.size(); ++i) {
        Check(x[i]->Checked() == y[i]->Checked(), x[i]->Name().c_str());
        Check(x[i]->Enabled() == y[i]->Enabled(), x[i]->Name().c_str());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Doubles& d = Shared();
    const std::string folder = d.folder.Str();
    std::filesystem::create_directories(folder + "velmora_preferences");

    AppContext first(d.MakePorts());
    Prepare(first, folder);
    const std::string path = Settings_File(first);
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    bool error = false;
    Load_Settings(first, error);
    const bool first_error = error;

    // A text with a byte the code page leaves unassigned cannot be written
    // back: such a save fails, and the round trip is not expected of it.
    Save_Settings(first, error);
    if (error) return 0;

    AppContext second(d.MakePorts());
    Prepare(second, folder);
    Load_Settings(second, error);
    // A value out of its menu's range comes back, and faults, every time; a
    // clean first load must give a clean second one.
    Check(first_error || !error, "second load");
    Check(first.settings == second.settings, "settings");
    Check(first.form1.List1.Items() == second.form1.List1.Items(), "List1");
    for (int i = 0; i < first.form1.List3.ListCount(); ++i)
        Check(first.form1.List3.Selected(i) == second.form1.List3.Selected(i), "List3");
    Check(first.form1.Text3.Text() == second.form1.Text3.Text(), "Text3");
    Check(first.form1.HScroll1.Value() == second.form1.HScroll1.Value(), "HScroll1");
    SameMarks(first.form1.Menus, second.form1.Menus);
    SameMarks(first.form1.Tray, second.form1.Tray);
    return 0;
}
