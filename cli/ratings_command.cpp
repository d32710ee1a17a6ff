#include "cli/ratings_command.h"

#include <filesystem>
#include <iostream>
#include <string>

#include "cli/headless_program.h"
#include "cli/held_collection.h"
#include "cli/terminal_dialogs.h"
#include "core/app_context.h"
#include "ratings/rating_calculation.h"
#include "ratings/ratings_in_files.h"

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli ratings FILE.qel --to-files | --from-files\n";
    return 2;
}

}  // namespace

int Ratings_Command(int argc, char** argv) {
    if (argc != 2) return Usage();
    std::string file = argv[0];
    const std::string direction = argv[1];
    if (direction != "--to-files" && direction != "--from-files") return Usage();
    std::error_code ec;
    file = std::filesystem::absolute(file, ec).lexically_normal().string();
    if (ec) return Usage();

    TerminalDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    if (!Open_Held_Collection(ctx, file, std::cerr)) return 1;

    const bool to_files = direction == "--to-files";
    const ExchangeOutcome out = Exchange_Ratings(ctx, 0, to_files ? kExchangeWriteAll : kExchangeReadAll);
    // Reading changes the classes: the totals are counted again and the
    // Collection keeps them. Writing leaves the Collection as it was.
    if (!to_files) {
        Calculate_Ratings(ctx);
        if (!Save_Held_Collection(ctx, std::cerr)) return 1;
    }
    std::cout << ctx.form1.Text2[0].Text() << "\n";
    if (out.left_alone > 0) {
        std::cerr << "velmora-cli: " << out.left_alone << " files could not be written; the log names them\n";
        return 1;
    }
    return out.canceled ? 1 : 0;
}

}  // namespace velmora::cli
