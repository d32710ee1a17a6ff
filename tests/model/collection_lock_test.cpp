// One program at a time writes a Collection: a second window is offered it
// read-only, or nothing; a lock never outlives the program that held it.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "app/startup.h"
#include "base/file_lock.h"
#include "collection/collection_file.h"
#include "support/golden_collection.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Bytes;
using testing::TestApp;

TEST(CollectionLock, ASecondWindowIsOfferedTheCollectionReadOnlyOrNothing) {
    TestApp first;
    const std::string folder = first.folder.Str();
    const testing::GoldenFiles p = testing::Golden_Files_In(folder);
    testing::Write_Golden(p);
    Form_Load(first.ctx);
    const std::string holder = "velmora_tests (pid " + std::to_string(getpid()) + ")";
    const std::string main_then = Bytes(p.main), files_then = Bytes(p.files);

    // Read-only: the window works on, and leaving writes nothing of it.
    TestApp second(folder);
    second.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Form_Load(second.ctx);
    ASSERT_EQ(second.dialogs.Messages().size(), 1u);
    EXPECT_TRUE(Holds(second.dialogs.Messages()[0].text, "is open for writing in " + holder));
    EXPECT_EQ(second.ctx.form1.List2.ListCount(), 2);
    second.ctx.table.Played_Number[0] = 9, second.ctx.table.Saved[0] = false;
    Save_Collection(second.ctx, false, true);
    Form_QueryUnload(second.ctx);
    EXPECT_TRUE(Bytes(p.main) == main_then && Bytes(p.files) == files_then) << "nothing written";
    EXPECT_TRUE(Holds(second.Log(), "opened read-only"));

    // Cancel: the program ends as it came, without a save of anything.
    const auto pointer_time = fs::last_write_time(fs::path(folder) / "velmora_sylloges" / "default.qr");
    TestApp third(folder);
    third.dialogs.ExpectMsgBox(MsgAnswer::Cancel);
    Form_Load(third.ctx);
    EXPECT_TRUE(third.ctx.core.Ended);
    EXPECT_EQ(third.ctx.form1.List2.ListCount(), 0) << "not loaded";
    Form_QueryUnload(third.ctx);
    EXPECT_EQ(fs::last_write_time(fs::path(folder) / "velmora_sylloges" / "default.qr"), pointer_time);

    // The first lets go on leaving; the next start asks nothing.
    first.ctx.table.Played_Number[0] = 5, first.ctx.table.Saved[0] = false;
    Form_QueryUnload(first.ctx);
    EXPECT_EQ(Bytes(p.files)[0], 5);
    EXPECT_FALSE(fs::exists(p.main.string() + ".lock"));
    TestApp fourth(folder);
    Form_Load(fourth.ctx);
    EXPECT_EQ(fourth.ctx.form1.List2.ListCount(), 2);
    Form_QueryUnload(fourth.ctx);
}

// A holder killed outright leaves its lock file behind, with its name in it,
// but not its lock.
TEST(CollectionLock, AKilledHolderLeavesNoLock) {
    testing::TempFolder folder;
    const std::string path = (folder.Path() / "c.qel.lock").string();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        FileLock lock;
        if (lock.Acquire(path) == FileLock::Outcome::Held) raise(SIGKILL);
        _exit(1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child held the lock when it was killed";
    EXPECT_EQ(Bytes(path), std::to_string(child) + " velmora_tests\n");

    FileLock mine, other;
    EXPECT_EQ(mine.Acquire(path), FileLock::Outcome::Held);
    EXPECT_EQ(other.Acquire(path), FileLock::Outcome::Busy);
    EXPECT_EQ(other.Holder(), "velmora_tests (pid " + std::to_string(getpid()) + ")");
    mine.Release();
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(other.Acquire(path), FileLock::Outcome::Held);
}

}  // namespace
}  // namespace velmora
