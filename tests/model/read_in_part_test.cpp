// A damaged Collection loads what can be read and says what it met, writing
// nothing; if it could be read only in part, it is never saved over the
// whole: its files are moved aside, byte for byte, before the first save.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <random>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Bytes;
using testing::Golden;
using testing::Golden_Bytes;
using testing::TestApp;

// The virtual clock starts at 2024-03-15 12:00.
const std::string kAside = ".unreadable-20240315-1200";

using testing::Load_In;

std::string Noise(size_t n, unsigned seed) {
    std::mt19937 random(seed);
    std::string s(n, '\0');
    for (char& c : s) c = static_cast<char>(random());
    return s;
}

const std::string kFilesError = "-> Λάθη στην ανάγνωση αρχείων συλλογής... - Error Reading Collection Files...";
constexpr const char* kLoadError = "LOAD ERROR";  // the line that names the main file

struct Damage {
    const char* name;
    std::function<void(Golden&)> damage;
    int rows;                // the list rows loaded; -1: any, up to 2
    std::string log = "";    // a line the log holds `times` times
    int times = 1;
    MsgIcon box = MsgIcon::None;
    std::string box_text = "";
    bool in_part = true;     // false: read whole, nothing is moved aside
    bool files_side_kept = true;  // false: the files side file is removed
};

const Damage kDamages[] = {
    // Cut inside the count of Tracks: it and the 13 header fields behind it
    // each get their line.
    {"a main file cut inside the header", [](Golden& g) { g.main.resize(5 * 300 + 2); }, 0, kLoadError, 14},
    {"a damaged header text", [](Golden& g) { g.main.replace(300, 2, "\xFF\xFF"); }, -1},
    {"a main file of random bytes", [](Golden& g) { g.main = Noise(8400, 7); }, -1},
    {"Track_Count 2^31-1", [](Golden& g) { g.main.replace(5 * 300, 4, "\xFF\xFF\xFF\x7F"); }, 0, "", 1,
     MsgIcon::Critical, "Η παρούσα συλλογή ξεπερνά το όριο κομματιών 32766 New Collection exceeds this limit"},
    {"a main file of version 4.0", [](Golden& g) { g.main.replace(2, 3, "4.0"); }, 0, "", 1, MsgIcon::Exclamation,
     "Συλλογή δημιουργημένη με διαφορετική έκδοση - Collection Created with different version"},
    {"no files side file", [](Golden&) {}, 0, "", 1, MsgIcon::None, "", true, false},
    {"an empty files side file", [](Golden& g) { g.files.clear(); }, 0},
    {"a files side file cut in Track 2", [](Golden& g) { g.files.resize(45 * 400 + 100); }, 1, kFilesError},
    {"random side files", [](Golden& g) { g.files = Noise(36000, 3), g.filters = Noise(3000, 5); }, -1},
    {"a text length of 0xFFFF in Track 2's Artist", [](Golden& g) { g.files.replace(51 * 400, 2, "\xFF\xFF"); }, 1,
     kFilesError},
    {"a slot text's length past its record on Track 1", [](Golden& g) { g.files.replace(14 * 400, 2, "\xFF\x7F"); },
     0},
    {"Rating_Class 6 on Track 1", [](Golden& g) { g.files[2 * 400] = 6; }, 0, kFilesError},
    {"Rating_Class 9 on Track 2", [](Golden& g) { g.files[47 * 400] = 9; }, 1, kFilesError},
    {"filter rows past the end of their file", [](Golden& g) { g.filters.replace(8 * 600, 2, "\x64\x00"); }, 2},
    {"no paths", [](Golden& g) { g.files[11 * 400] = g.files[56 * 400] = 0; }, 0, " -> Τέλος φορτώματος - End loading",
     1, MsgIcon::None, "", false},
};

// Load as a start does, then save as leaving does: the user's three files
// stand beside the new Collection under the name that says why, unchanged.
TEST(ReadInPart, TheLoadTellsTheDamageAndTheFirstSaveMovesTheFilesAsideWhole) {
    for (const Damage& d : kDamages) {
        SCOPED_TRACE(d.name);
        TestApp app;
        Golden g = Golden_Bytes();
        d.damage(g);
        const testing::GoldenFiles p = testing::Golden_Files_In(app.folder.Str());
        testing::Write_Golden(p, g);
        if (!d.files_side_kept) fs::remove(p.files);
        const auto before = testing::File_Tree(app.folder.Path());
        if (d.box != MsgIcon::None) app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        Load_In(app, app.folder.Str());

        const Form1& f = app.ctx.form1;
        if (d.rows >= 0) { EXPECT_EQ(f.List2.ListCount(), d.rows); }
        if (d.rows > 0) { EXPECT_EQ(f.List2.List(0), "/home/μουσική/α.mp3"); }
        EXPECT_LE(f.List2.ListCount(), std::min(2, app.ctx.table.Bound())) << "every list row has its columns";
        EXPECT_GE(app.ctx.table.Current_Track, 0);
        const std::string& log = f.Text2[0].Text();
        const std::string line = d.log != kLoadError ? d.log + "\n"
                                 : " --->Λάθος κατά τη φόρτωση της συλλογής \"" + p.main.string() +
                                       "\" -> Error while loading Collection\n";
        if (!d.log.empty()) { EXPECT_EQ(testing::Count(log, line), static_cast<size_t>(d.times)) << log; }
        if (d.log == kFilesError) {
            EXPECT_TRUE(Holds(log, " ---> Αιτία - Cause: " + p.files.string()))
                << "a line of its own says which file and why";
        }
        const auto& shown = app.dialogs.Messages();
        if (d.box != MsgIcon::None) {
            ASSERT_EQ(shown.size(), 1u);
            EXPECT_EQ(shown[0].icon, d.box);
            EXPECT_EQ(shown[0].text, d.box_text);
        }
        EXPECT_EQ(testing::File_Tree(app.folder.Path()), before) << "the load wrote nothing";

        Save_Collection(app.ctx, false, false);
        const auto after = testing::File_Tree(app.folder.Path());
        for (const auto& [name, bytes] : before) {
            if (fs::is_directory(app.folder.Path() / name)) continue;
            const auto moved = after.find(name + kAside);
            EXPECT_EQ(moved != after.end() && moved->second == bytes, d.in_part) << name << " moved aside whole";
        }
        if (!d.in_part) continue;
        EXPECT_TRUE(Holds(app.Log(), "were kept as: \"" + p.main.string() + kAside + "\""));

        // What was read is the new Collection, whole; a second save moves nothing.
        TestApp next;
        EXPECT_TRUE(Load_In(next, app.folder.Str())) << next.Log();
        EXPECT_EQ(next.ctx.form1.List2.ListCount(), f.List2.ListCount());
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
    TestApp again(app.folder.Str());
    again.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Form_Load(again.ctx);
    Form_QueryUnload(again.ctx);
    EXPECT_TRUE(Bytes(p.main.string() + kAside + "-2") == g.main);
    EXPECT_TRUE(Bytes(p.main.string() + kAside) == g.main) << "the first stays as it was";
}

}  // namespace
}  // namespace velmora
