// A Collection that a load could read only in part is never saved over the
// whole: its files are moved aside, byte for byte, before the first save.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <random>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;
using testing::Golden;
using testing::Golden_Bytes;
using testing::TestApp;

// The virtual clock starts at 2024-03-15 12:00.
const std::string kAside = ".unreadable-20240315-1200";

// A start's load of the Collection in `folder`; true when read whole.
bool Load(TestApp& app, const std::string& folder) {
    app.ctx.program_folder = app.ctx.core.App_Path = folder;
    Load_Pointer(app.ctx);
    return Load_Collection(app.ctx);
}

struct Trigger {
    const char* name;
    std::function<void(Golden&)> damage;
    bool files_side_kept = true;  // false: the damage removes the files side file
    MsgIcon box = MsgIcon::None;
    int rows = -1;  // the rows the new Collection holds, when known
};

std::mt19937 g_random(3);
std::string Noise(size_t n) {
    std::string s(n, '\0');
    for (char& c : s) c = static_cast<char>(g_random());
    return s;
}

const Trigger kTriggers[] = {
    {"a text length of 0xFFFF in Track 2's Artist", [](Golden& g) { g.files.replace(51 * 400, 2, "\xFF\xFF"); },
     true, MsgIcon::None, 1},
    {"Rating_Class 9 on Track 2", [](Golden& g) { g.files[47 * 400] = 9; }, true, MsgIcon::None, 1},
    {"a slot text's length past its record on Track 1", [](Golden& g) { g.files.replace(14 * 400, 2, "\xFF\x7F"); },
     true, MsgIcon::None, 0},
    {"no files side file", [](Golden&) {}, false, MsgIcon::None, 0},
    {"an empty files side file", [](Golden& g) { g.files.clear(); }, true, MsgIcon::None, 0},
    {"a random files side file", [](Golden& g) { g.files = Noise(36000); }},
    {"Track_Count 2^31-1", [](Golden& g) { g.main.replace(5 * 300, 4, "\xFF\xFF\xFF\x7F"); }, true,
     MsgIcon::Critical, 0},
    {"a main file of version 4.0", [](Golden& g) { g.main.replace(2, 3, "4.0"); }, true, MsgIcon::Exclamation, 0},
    {"a damaged header text", [](Golden& g) { g.main.replace(300, 2, "\xFF\xFF"); }},
    {"filter rows past the end of their file", [](Golden& g) { g.filters.replace(8 * 600, 2, "\x64\x00"); }, true,
     MsgIcon::None, 2},
};

// Load as a start does, then save as leaving does: the user's three files
// stand beside the new Collection under the name that says why, unchanged.
TEST(ReadInPart, TheFirstSaveMovesTheFilesAsideWhole) {
    for (const Trigger& trigger : kTriggers) {
        SCOPED_TRACE(trigger.name);
        TestApp app;
        Golden g = Golden_Bytes();
        trigger.damage(g);
        const testing::GoldenFiles p = testing::Golden_Files_In(app.folder.Str());
        testing::Write_Golden(p, g);
        if (!trigger.files_side_kept) fs::remove(p.files);
        const auto before = testing::File_Tree(app.folder.Path());
        if (trigger.box != MsgIcon::None) app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        Load(app, app.folder.Str());

        Save_Collection(app.ctx, false, false);
        const auto after = testing::File_Tree(app.folder.Path());
        for (const auto& [name, bytes] : before) {
            if (fs::is_directory(app.folder.Path() / name)) continue;
            const auto moved = after.find(name + kAside);
            EXPECT_TRUE(moved != after.end() && moved->second == bytes) << name << " was not kept as it was";
        }
        const std::string& log = app.ctx.form1.Text2[0].Text();
        EXPECT_NE(log.find("were kept as: \"" + p.main.string() + kAside + "\""), std::string::npos) << log;

        // What was read is the new Collection, whole; a second save moves nothing.
        TestApp next;
        EXPECT_TRUE(Load(next, app.folder.Str())) << next.ctx.form1.Text2[0].Text();
        if (trigger.rows >= 0) { EXPECT_EQ(next.ctx.form1.List2.ListCount(), trigger.rows); }
        Save_Collection(app.ctx, false, false);
        EXPECT_EQ(testing::File_Tree(app.folder.Path()).size(), after.size());
    }
}

// Leaving the window (and a SIGTERM, which leaves the same way) saves too;
// a second damaged load in the same minute takes a name of its own, and the
// backups of the whole Collection outlive the run.
TEST(ReadInPart, LeavingTheWindowKeepsTheFilesAndTheBackups) {
    TestApp app;
    const testing::GoldenFiles p = testing::Golden_Files_In(app.folder.Str());
    Golden g = Golden_Bytes();
    testing::Write_Golden(p, g);
    for (const fs::path& file : {p.main, p.files, p.filters}) fs::copy_file(file, file.string() + ".backup");
    g.main.replace(2, 3, "4.0");
    testing::Put(p.main, g.main);

    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Form_Load(app.ctx);
    // Every fifth save would renew the backups.
    for (int k = 0; k < 5; ++k) Save_Collection(app.ctx, false, false);
    Form_QueryUnload(app.ctx);
    EXPECT_TRUE(Bytes(p.main.string() + kAside) == g.main);
    EXPECT_TRUE(Bytes(p.files.string() + kAside) == g.files);
    const Golden whole = Golden_Bytes();
    EXPECT_TRUE(Bytes(p.main.string() + ".backup") == whole.main) << "the backups held";
    EXPECT_TRUE(Bytes(p.files.string() + ".backup") == whole.files) << "the backups held";

    testing::Put(p.main, g.main);
    TestApp again;
    again.ctx.program_folder = app.folder.Str();
    again.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Form_Load(again.ctx);
    Form_QueryUnload(again.ctx);
    EXPECT_TRUE(Bytes(p.main.string() + kAside + "-2") == g.main);
    EXPECT_TRUE(Bytes(p.main.string() + kAside) == g.main) << "the first stays as it was";
}

}  // namespace
}  // namespace velmora
