// A folder, a pipe, a device or a broken link where a file of the program
// should be: never waited on, never replaced. A link to a real file is
// followed, and the file is written where it lies.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>

#include "app/startup.h"
#include "collection/collection_file.h"
#include "core/running_report.h"
#include "core/settings_store.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Bytes;
using testing::TestApp;

volatile std::sig_atomic_t g_alarm_rang = 0;

// Runs fn with an alarm that, after two seconds, interrupts a system call
// stuck on a pipe (no SA_RESTART); false when it had to.
bool Never_Waits(const std::function<void()>& fn) {
    struct sigaction ring {}, old {};
    ring.sa_handler = [](int) { g_alarm_rang = 1; };
    sigemptyset(&ring.sa_mask);
    sigaction(SIGALRM, &ring, &old);
    g_alarm_rang = 0;
    alarm(2);
    fn();
    alarm(0);
    sigaction(SIGALRM, &old, nullptr);
    return g_alarm_rang == 0;
}

void Make_Fifo(const fs::path& path) {
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0) << path;
}

using testing::Load_In;

TEST(NotARegularFile, ACollectionFileThatIsNoFileIsNeitherWaitedOnNorReplaced) {
    using Files = testing::GoldenFiles;
    struct Case {
        const char* name;
        std::function<void(const Files&)> make;
    };
    const Case cases[] = {
        {"a folder named like the main file",
         [](const Files& p) { fs::remove(p.main), fs::create_directory(p.main); }},
        {"a link to nothing", [](const Files& p) { fs::remove(p.main), fs::create_symlink("/no/such.qel", p.main); }},
        {"a loop of links", [](const Files& p) { fs::remove(p.main), fs::create_symlink(p.main.filename(), p.main); }},
        {"a link to /dev/zero", [](const Files& p) { fs::remove(p.main), fs::create_symlink("/dev/zero", p.main); }},
        {"a pipe as the main file", [](const Files& p) { Make_Fifo(p.main); }},
        {"a folder as the files side file",
         [](const Files& p) { fs::remove(p.files), fs::create_directory(p.files); }},
        {"a pipe as the files side file", [](const Files& p) { Make_Fifo(p.files); }},
        {"a pipe as the filters side file", [](const Files& p) { Make_Fifo(p.filters); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestApp app;
        const Files p = testing::Golden_Files_In(app.folder.Str());
        testing::Write_Golden(p);
        c.make(p);
        const auto before = testing::File_Tree(app.folder.Path());

        app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        EXPECT_TRUE(Never_Waits([&] {
            Load_In(app, app.folder.Str());
            Save_Collection(app.ctx, false, false);
            Save_Collection(app.ctx, false, true);
        }));
        EXPECT_TRUE(testing::File_Tree(app.folder.Path()) == before) << "something was touched";
        const auto& shown = app.dialogs.Messages();
        EXPECT_TRUE(!shown.empty() && shown[0].text.find("not a regular file") != std::string::npos)
            << (shown.empty() ? "no box" : shown[0].text);
        EXPECT_TRUE(Holds(app.Log(), "The Collection will not be saved"));
    }
}

// The Collection's files are links into another folder: saves, in place and
// whole, land in the files the links lead to, and the links stay links.
TEST(NotARegularFile, ALinkedCollectionIsWrittenWhereTheLinkLeads) {
    TestApp app;
    const testing::GoldenFiles real = testing::Golden_Files_In(app.folder.Str() + "elsewhere/", "real");
    testing::Write_Golden(real);
    const testing::GoldenFiles p = testing::Golden_Files_In(app.folder.Str());
    fs::create_directories(p.main.parent_path());
    fs::create_symlink(real.main, p.main);
    fs::create_symlink(real.files, p.files);
    Load_In(app, app.folder.Str());
    ASSERT_EQ(app.ctx.form1.List2.ListCount(), 2);

    auto links_hold = [&] {
        EXPECT_TRUE(fs::is_symlink(p.main) && fs::read_symlink(p.main) == real.main);
        EXPECT_TRUE(fs::is_symlink(p.files) && fs::read_symlink(p.files) == real.files);
        for (const auto& e : fs::recursive_directory_iterator(app.folder.Path())) {
            const std::string name = e.path().filename().string();
            EXPECT_FALSE(name.ends_with(".new") || name.ends_with(".commit")) << e.path();
        }
    };
    app.ctx.table.Played_Number[0] = 7, app.ctx.table.Saved[0] = false;
    Save_Collection(app.ctx, false, false);
    links_hold();
    EXPECT_EQ(Bytes(real.files)[0], 7) << "the row rewritten in the real file";

    app.ctx.form1.List2.AddItem("/home/c.mp3");
    app.ctx.table.Track_Count = 3;
    app.ctx.table.Grow_Columns();
    Save_Collection(app.ctx, false, true);
    links_hold();
    TestApp next;
    EXPECT_TRUE(Load_In(next, app.folder.Str()));
    EXPECT_EQ(next.ctx.form1.List2.ListCount(), 3) << "read through the links";
}

// The pointer, the preferences and the report as pipes: a start, a report
// block and leaving go through without waiting, and say what they met.
TEST(NotARegularFile, NoProgramFileIsWaitedOn) {
    struct Case {
        const char* name;
        std::string file;  // below the program folder
        std::string told;  // in the log
        bool stays = true;
    };
    const Case cases[] = {
        {"the pointer file", "velmora_sylloges/default.qr", "default.qr: a named pipe, not a regular file"},
        {"the preferences", "velmora_preferences/default_pref.qr", "Error while loading preferences", false},
        {"the report", "velmora_reports/velmora_report.txt", "velmora_report.txt: a named pipe, not a regular file"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestApp app;
        const fs::path fifo = app.folder.Path() / c.file;
        fs::create_directories(fifo.parent_path());
        Make_Fifo(fifo);
        EXPECT_TRUE(Never_Waits([&] {
            Form_Load(app.ctx);
            Report_Block(app.ctx, -1);
            Report_Block(app.ctx, 0);
            Form_QueryUnload(app.ctx);
        }));
        const std::string& log = app.Log();
        EXPECT_TRUE(Holds(log, c.told));
        if (c.stays) { EXPECT_TRUE(fs::is_fifo(fifo)) << "left as it was"; }
    }
}

}  // namespace
}  // namespace velmora
