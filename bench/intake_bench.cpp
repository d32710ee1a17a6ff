// Intake against the system's own tools, in one run over trees it generates:
//   search: 20,000 media files in 2,000 folders, Ypo_Fakeloi_Search against
//           `find` over the same tree, both from the page cache; target at
//           most twice the time of find.
//   add:    32,766 files from the folders of List1 into an empty Collection;
//           target under 2 s.
// A plain program: exits with 2 when a target is missed.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/constant_tables.h"
#include "intake/add_remove.h"
#include "intake/directory_search.h"
#include "support/test_app.h"

namespace fs = std::filesystem;
using namespace velmora;
using Clock = std::chrono::steady_clock;

namespace {

double Seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

// folders folders under root, spread two levels deep, files_each empty .mp3 files in each.
void Make_Tree(const std::string& root, int folders, int files_each, int extra_in_last = 0) {
    for (int d = 0; d < folders; ++d) {
        const std::string dir = root + "/g" + std::to_string(d % 50) + "/d" + std::to_string(d);
        fs::create_directories(dir);
        const int n = files_each + (d == folders - 1 ? extra_in_last : 0);
        for (int i = 0; i < n; ++i) std::ofstream(dir + "/track" + std::to_string(i) + ".mp3");
    }
}

void Choose_Mp3(AppContext& ctx, const std::string& root) {
    ctx.core.Media_Extensions = Media_Extension_Table();
    std::vector<std::string> types;
    for (const auto& e : ctx.core.Media_Extensions) types.push_back("*" + e);
    ctx.form1.List3.Assign(types);
    Command7_Click(ctx, 4);
    ctx.form1.Dir1.SetPath(root);
    Dir1_change(ctx);
}

}  // namespace

int main() {
    int status = 0;
    {
        testing::TestApp app;
        const std::string root = app.folder.Str() + "search";
        Make_Tree(root, 2000, 10);
        const std::string find = "find '" + root + "' -name '*.mp3' > /dev/null";
        if (std::system(find.c_str()) != 0) return 1;  // warms the page cache
        auto t0 = Clock::now();
        if (std::system(find.c_str()) != 0) return 1;
        const double find_s = Seconds(t0);

        Choose_Mp3(app.ctx, root);
        t0 = Clock::now();
        Ypo_Fakeloi_Search(app.ctx, root);
        const double search_s = Seconds(t0);
        std::printf("search: %d folders, %s; %.3f s, find %.3f s, ratio %.2f (target <= 2)\n",
                    app.ctx.form1.List1.ListCount(), app.ctx.form1.Frame8.Caption().c_str(), search_s, find_s,
                    search_s / find_s);
        if (app.ctx.form1.List1.ListCount() != 2000 || search_s > 2 * find_s) status = 2;
    }
    {
        testing::TestApp app;
        const std::string root = app.folder.Str() + "add";
        Make_Tree(root, 327, 100, kMaxTracks - 32700);
        Choose_Mp3(app.ctx, root);
        Ypo_Fakeloi_Search(app.ctx, root);
        app.ctx.intake.Use_Subdirectories = true;
        const auto t0 = Clock::now();
        Add_Files_Under_Path(app.ctx);
        const double add_s = Seconds(t0);
        std::printf("add: %d Tracks in %.3f s (target < 2)\n", app.ctx.form1.List2.ListCount(), add_s);
        if (app.ctx.form1.List2.ListCount() != kMaxTracks || add_s >= 2) status = 2;
    }
    return status;
}
