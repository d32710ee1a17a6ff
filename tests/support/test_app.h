#pragma once
// A whole program on test doubles: virtual time, stub engines, scripted
// dialogs and a recording shell, over a fresh temporary program folder.

#include <filesystem>
#include <string>

#include "core/app_context.h"
#include "support/recording_shell.h"
#include "support/scripted_dialogs.h"
#include "support/stub_engine.h"
#include "support/virtual_event_loop.h"

namespace velmora::testing {

// A folder under the system's temporary folder, removed with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return m_path; }
    std::string Str() const { return m_path.string() + "/"; }

private:
    std::filesystem::path m_path;
};

// A file's bytes (none when it is missing); a file made to hold bytes; how
// often a part occurs in a text.
std::string Bytes(const std::filesystem::path& file);
void Put(const std::filesystem::path& file, const std::string& bytes);
size_t Count(const std::string& text, const std::string& part);

struct TestApp {
    // Over its own program folder, or over another's.
    explicit TestApp(const std::string& program_folder = "");

    TempFolder folder;
    VirtualEventLoop loop;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    StubEngine player{loop}, reader{loop}, video{loop}, second{loop};
    AppContext ctx;

    // The window's log, newest line first.
    const std::string& Log() const { return ctx.form1.Text2[0].Text(); }
};

// A program through its start, as a user opens it.
struct Running : TestApp {
    explicit Running(const std::string& program_folder = "");
};

// What a start finds on the disk of the program folder `folder`: the pointer
// to the last Collection read, then that Collection loaded; true when it was
// read whole.
void Start_In(TestApp& app, const std::string& folder);
bool Load_In(TestApp& app, const std::string& folder);

}  // namespace velmora::testing
