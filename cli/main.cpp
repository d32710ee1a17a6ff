// velmora-cli: the Collection tools of the terminal, over the same files as
// the desktop program.

#include <cstring>
#include <iostream>
#include <string>

#include "cli/add_command.h"
#include "cli/catalogue_command.h"
#include "cli/dump_command.h"
#include "cli/file_command.h"
#include "cli/folder_command.h"
#include "cli/identify_command.h"
#include "cli/info_command.h"
#include "cli/play_command.h"
#include "cli/playlist_command.h"
#include "cli/ratings_command.h"
#include "cli/tag_command.h"

namespace {

int Usage() {
    std::cerr << "usage: velmora-cli --version\n"
                 "       velmora-cli folder   the program folder and the Collection a start opens\n"
                 "       velmora-cli dump FILE.qel   the Collection as JSON\n"
                 "       velmora-cli info FILE.qel   a short summary\n"
                 "       velmora-cli play FILE.qel [--ao NAME] [--sleep DURATION]   play it in the terminal\n"
                 "       velmora-cli identify FILE.qel [--continue]   read durations, sizes and tags\n"
                 "       velmora-cli add FILE.qel DIR... [--subdirs]   add the media files of folders\n"
                 "       velmora-cli filter FILE.qel [--class S|A|B|C|X|-] [--artist T] ...   the catalogue's rows\n"
                 "       velmora-cli search FILE.qel TEXT   the Tracks whose row holds TEXT\n"
                 "       velmora-cli copy|move FILE.qel DEST (--class C | --all) [--point]   a class's files\n"
                 "       velmora-cli delete FILE.qel (--class C | --all) [--trash]   a class's files off the disk\n"
                 "       velmora-cli export FILE.qel OUT.m3u8|OUT.wpl   the Tracks as a play list\n"
                 "       velmora-cli import FILE.qel PLAYLIST [--merge]   a play list as a Collection, or added to one\n"
                 "       velmora-cli tag FILE.qel TRACK [--title T] [--artist T] ...   a Track's tags into its file\n"
                 "       velmora-cli ratings FILE.qel --to-files|--from-files   the classes into or from the files\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::cout << "velmora-cli " VELMORA_VERSION "\n";
        return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], "folder") == 0) return velmora::cli::Folder_Command(argc, argv);
    if (argc >= 3 && std::strcmp(argv[1], "play") == 0) return velmora::cli::Play_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "identify") == 0)
        return velmora::cli::Identify_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "add") == 0) return velmora::cli::Add_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "filter") == 0) return velmora::cli::Filter_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "search") == 0) return velmora::cli::Search_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "export") == 0) return velmora::cli::Export_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "import") == 0) return velmora::cli::Import_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "tag") == 0) return velmora::cli::Tag_Command(argc - 2, argv + 2);
    if (argc >= 3 && std::strcmp(argv[1], "ratings") == 0) return velmora::cli::Ratings_Command(argc - 2, argv + 2);
    static constexpr const char* kFileCommands[] = {"copy", "move", "delete"};
    for (int mode = 0; mode < 3; ++mode)
        if (argc >= 3 && std::strcmp(argv[1], kFileCommands[mode]) == 0)
            return velmora::cli::File_Command(mode, argc - 2, argv + 2);
    if (argc != 3) return Usage();
    const std::string command = argv[1];
    if (command == "dump") return velmora::cli::Dump_Command(argv[2], std::cout, std::cerr);
    if (command == "info") return velmora::cli::Info_Command(argv[2], std::cout, std::cerr);
    return Usage();
}
