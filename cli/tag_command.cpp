#include "cli/tag_command.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/headless_program.h"
#include "cli/held_collection.h"
#include "cli/terminal_dialogs.h"
#include "core/app_context.h"
#include "metadata/tag_saving.h"

namespace velmora::cli {

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli tag FILE.qel TRACK [--title T] [--artist T] [--album T] [--year N]"
                 " [--comment T] [--genre T]\n";
    return 2;
}

// The options in the order of the tag names.
constexpr std::array<const char*, 6> kOptions = {"--title", "--artist", "--album", "--year", "--comment", "--genre"};

}  // namespace

int Tag_Command(int argc, char** argv) {
    if (argc < 2) return Usage();
    std::string file = argv[0];
    int track = 0;
    const std::string number = argv[1];
    const auto [end, parsed] = std::from_chars(number.data(), number.data() + number.size(), track);
    if (parsed != std::errc() || end != number.data() + number.size() || track < 1) return Usage();
    std::array<std::optional<std::string>, 6> given;
    for (int i = 2; i < argc; ++i) {
        int k = 0;
        while (k < 6 && std::string(argv[i]) != kOptions[k]) ++k;
        if (k == 6 || i + 1 >= argc || given[k]) return Usage();
        given[k] = argv[++i];
    }
    std::error_code ec;
    file = std::filesystem::absolute(file, ec).lexically_normal().string();
    if (ec) return Usage();

    TerminalDialogs dialogs(std::cin, std::cerr, false);
    TerminalShell shell(std::cerr);
    HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    if (!Open_Held_Collection(ctx, file, std::cerr)) return 1;
    if (track > ctx.form1.List2.ListCount()) {
        std::cerr << "velmora-cli: " << file << ": no Track " << track << "\n";
        return 1;
    }
    const std::string path(ctx.form1.List2.List(track - 1));
    std::unique_ptr<MediaItem> item = ctx.ports.reader.newMedia(path);
    // A file that cannot be written leaves the Collection untouched too.
    if (item->isReadOnlyItem("Title")) {
        std::cerr << "velmora-cli: " << path << ": the file cannot be written; nothing was changed\n";
        return 1;
    }
    for (int k = 0; k < 6; ++k) ctx.metadata.Tag_Values[k] = given[k] ? *given[k] : item->getItemInfo(kTagNames[k]);
    std::string error;
    Write_Tag_Values(ctx, *item, path, error);
    if (!Save_Held_Collection(ctx, std::cerr)) return 1;
    std::cout << ctx.form1.Text2[0].Text() << "\n";
    if (!error.empty()) {
        std::cerr << "velmora-cli: " << path << ": the tags could not be written: " << error << "\n";
        return 1;
    }
    return 0;
}

}  // namespace velmora::cli
